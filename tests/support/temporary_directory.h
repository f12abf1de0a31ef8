// A directory of a test's own, gone with the test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace test {

class TemporaryDirectory {
 public:
  explicit TemporaryDirectory(const std::filesystem::path& place = std::filesystem::temp_directory_path()) {
    std::string name = place / "tarnwick-test-XXXXXX";
    if (!::mkdtemp(name.data())) throw std::runtime_error("mkdtemp failed");
    path_ = name;
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ / name; }

  /// Writes a file, with its directories.
  std::string write(const std::string& name, const std::string& text) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
    return file;
  }

 private:
  std::filesystem::path path_;
};

/// Where files live in memory, for tests that save thousands of times; a plain temporary directory without such a
/// place.
inline std::filesystem::path memory_place() {
  const std::filesystem::path memory = "/dev/shm";
  return ::access(memory.c_str(), W_OK) == 0 ? memory : std::filesystem::temp_directory_path();
}

/// A file's bytes, or "(none)" when it is not there.
inline std::string content(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return "(none)";
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Every file and link below a directory by its relative name: its bytes, or "-> target".
inline std::map<std::string, std::string> tree(const std::filesystem::path& directory) {
  std::map<std::string, std::string> found;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    const std::string name = entry.path().lexically_relative(directory);
    if (entry.is_symlink())
      found[name] = "-> " + std::filesystem::read_symlink(entry.path()).string();
    else if (entry.is_regular_file())
      found[name] = content(entry.path());
  }
  return found;
}

}  // namespace test
