#include "base/key_file.h"

#include <filesystem>
#include <stdexcept>

#include "base/file_write.h"
#include "base/gobject_ptr.h"

namespace base {
namespace {

GKeyFilePtr load(const std::string& path) {
  GKeyFilePtr file(g_key_file_new());
  g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr);
  return file;
}

// A file that is there but is no key file must not be replaced by one key: what the operator had would be gone.
GKeyFilePtr load_for_change(const std::string& path) {
  GKeyFilePtr file(g_key_file_new());
  ErrorSlot error;
  if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_KEEP_COMMENTS, error.out()) &&
      !error.matches(G_FILE_ERROR, G_FILE_ERROR_NOENT))
    throw std::runtime_error(error.message());
  return file;
}

void store(const std::string& path, GKeyFile* file) {
  make_private_directory(std::filesystem::path(path).parent_path());
  gsize size = 0;
  const GStringPtr text(g_key_file_to_data(file, &size, nullptr));
  ErrorSlot error;
  if (!g_file_set_contents_full(path.c_str(), text.get(), static_cast<gssize>(size), G_FILE_SET_CONTENTS_CONSISTENT,
                                0600, error.out()))
    throw std::runtime_error(error.message());
}

}  // namespace

bool KeyFile::get(const char* group, const char* key, bool fallback) const {
  ErrorSlot error;
  const bool value = g_key_file_get_boolean(load(path_).get(), group, key, error.out()) != FALSE;
  return error ? fallback : value;
}

int KeyFile::get(const char* group, const char* key, int fallback) const {
  ErrorSlot error;
  const int value = g_key_file_get_integer(load(path_).get(), group, key, error.out());
  return error ? fallback : value;
}

std::string KeyFile::get(const char* group, const char* key, const char* fallback) const {
  const GStringPtr value(g_key_file_get_string(load(path_).get(), group, key, nullptr));
  return value ? value.get() : fallback;
}

std::vector<std::string> KeyFile::get_list(const char* group, const char* key) const {
  gsize count = 0;
  const GStrvPtr values(g_key_file_get_string_list(load(path_).get(), group, key, &count, nullptr));
  return values ? std::vector<std::string>(values.get(), values.get() + count) : std::vector<std::string>();
}

void KeyFile::set(const char* group, const char* key, bool value) {
  const auto file = load_for_change(path_);
  g_key_file_set_boolean(file.get(), group, key, value);
  store(path_, file.get());
}

void KeyFile::set(const char* group, const char* key, int value) {
  const auto file = load_for_change(path_);
  g_key_file_set_integer(file.get(), group, key, value);
  store(path_, file.get());
}

void KeyFile::set(const char* group, const char* key, const std::string& value) {
  const auto file = load_for_change(path_);
  g_key_file_set_string(file.get(), group, key, value.c_str());
  store(path_, file.get());
}

void KeyFile::set_list(const char* group, const char* key, const std::vector<std::string>& values) {
  const auto file = load_for_change(path_);
  std::vector<const char*> items;
  for (const auto& value : values)
    items.push_back(value.c_str());
  g_key_file_set_string_list(file.get(), group, key, items.data(), items.size());
  store(path_, file.get());
}

}  // namespace base
