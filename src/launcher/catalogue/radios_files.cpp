// Where the dongle catalogue is found.
#include <filesystem>
#include <stdexcept>

#include <fmt/format.h>

#include "base/file_write.h"
#include "launcher/catalogue/radios.h"

namespace radios {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t largest_file = 1024UL * 1024UL;

/// False when there is no such file. One that cannot be read is a warning.
bool add_file(Catalogue& catalogue, const fs::path& path) {
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return false;
  try {
    add_to_catalogue(catalogue, base::read_file(path.string(), largest_file), path.string());
  } catch (const std::runtime_error& error) {
    catalogue.warnings.push_back(fmt::format("{}: {}, left out", path.string(), error.what()));
  }
  return true;
}

}  // namespace

Catalogue read_catalogue(const std::string& user_file, const std::string& executable_directory) {
  const fs::path directory(executable_directory);
  Catalogue catalogue;
  add_file(catalogue, user_file);
  if (!add_file(catalogue, directory / "radios.conf") &&
      !add_file(catalogue, directory.parent_path() / "share/tarnwick/radios.conf"))
    catalogue.warnings.emplace_back("radios.conf, Tarnwick's radio list, is not installed");
  return catalogue;
}

Catalogue read_catalogue(const std::string& user_file) {
  std::error_code ignored;
  return read_catalogue(user_file, fs::read_symlink("/proc/self/exe", ignored).parent_path().string());
}

const Catalogue& catalogue(const std::string& user_file) {
  static const Catalogue read = read_catalogue(user_file);
  return read;
}

}  // namespace radios
