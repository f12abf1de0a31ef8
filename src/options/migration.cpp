#include "options/migration.h"

#include <array>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "base/file_write.h"

namespace options {
namespace {

namespace fs = std::filesystem;

constexpr const char* former_name = "fennel-tuner";
constexpr const char* present_name = "tarnwick";
// No settings file comes near this; a larger one is not ours and is left alone.
constexpr size_t largest_settings_file = 16UL << 20;

struct Place {
  const char* variable;
  const char* fallback;
};
constexpr Place config_place{"XDG_CONFIG_HOME", ".config"};
constexpr std::array places{config_place, Place{"XDG_DATA_HOME", ".local/share"},
                            Place{"XDG_STATE_HOME", ".local/state"}};

// The two directories of one place, without a trailing slash.
struct Pair {
  std::string former;
  std::string present;
};

std::optional<Pair> find_pair(const Place& place, const Environment& environment) {
  try {
    const std::string base = base_directory(place.variable, place.fallback, environment);
    return Pair{base + "/" + former_name, base + "/" + present_name};
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

// Links are never followed here: whoever made one has already decided where the files are.
fs::file_type type_of(const fs::path& path) {
  std::error_code error;
  return fs::symlink_status(path, error).type();
}

void move_directory(const Pair& pair) {
  std::error_code error;
  if (type_of(pair.former) != fs::file_type::directory) return;
  if (type_of(pair.present) == fs::file_type::directory) fs::remove(pair.present, error);  // only when empty
  if (type_of(pair.present) != fs::file_type::not_found) return;
  fs::rename(pair.former, pair.present, error);
  // An older installation beside this one goes on finding the same files.
  if (!error) fs::create_directory_symlink(present_name, pair.former, error);
}

void rename_main_file(const fs::path& directory) {
  std::error_code error;
  const fs::path former = directory / (std::string(former_name) + ".conf");
  const fs::path present = directory / (std::string(present_name) + ".conf");
  if (fs::exists(former, error) && type_of(present) == fs::file_type::not_found) fs::rename(former, present, error);
}

bool replace_all(std::string& text, const std::string& from, const std::string& to) {
  std::string result;
  size_t done = 0;
  for (size_t at = 0; (at = text.find(from, done)) != std::string::npos; done = at + from.size())
    result.append(text, done, at - done).append(to);
  if (done == 0) return false;
  text = result.append(text, done);
  return true;
}

void rewrite_paths(const fs::path& file, const std::vector<Pair>& pairs) {
  std::string text = base::read_file(file, largest_settings_file);
  if (text.size() == largest_settings_file) return;
  bool changed = false;
  for (const Pair& pair : pairs)
    changed |= replace_all(text, pair.former + "/", pair.present + "/");
  if (!changed) return;
  base::TemporaryPath rewritten(file.string() + ".rename");
  base::write_file(rewritten.path(), text, static_cast<mode_t>(fs::status(file).permissions()));
  fs::rename(rewritten.path(), file);
  (void)rewritten.keep();
}

std::vector<fs::path> settings_files(const fs::path& directory) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(directory)) {
    const auto extension = entry.path().extension();
    if ((extension == ".conf" || extension == ".ini") && type_of(entry.path()) == fs::file_type::regular)
      files.push_back(entry.path());
  }
  return files;
}

void rewrite_settings(const fs::path& directory, const std::vector<Pair>& pairs) {
  for (const auto& file : settings_files(directory)) {
    try {
      rewrite_paths(file, pairs);
    } catch (const std::exception&) {  // this file keeps its old text
    }
  }
}

void migrate(const Environment& environment) {
  std::vector<Pair> pairs;
  for (const Place& place : places)
    if (auto pair = find_pair(place, environment)) pairs.push_back(*pair);
  for (const Pair& pair : pairs)
    move_directory(pair);
  const auto config = find_pair(config_place, environment);
  if (!config || !home_directory(environment)) return;
  rename_main_file(config->present);
  rewrite_settings(config->present, pairs);
}

}  // namespace

void migrate_former_name(const Environment& environment, uid_t user) noexcept {
  if (user == 0) return;
  try {
    migrate(environment);
  } catch (const std::exception&) {  // the launcher starts all the same
  }
}

}  // namespace options
