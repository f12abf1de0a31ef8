// GLib key files shared by several owners: each changes its own key and leaves the rest, comments included.
#pragma once

#include <string>
#include <vector>

namespace base {

/// A key file on disk. Every read loads it afresh and takes the default when file, group or key is missing or of
/// another type; every write replaces it atomically with mode 0600. Main thread only.
class KeyFile {
 public:
  explicit KeyFile(std::string path) : path_(std::move(path)) {}

  [[nodiscard]] bool get(const char* group, const char* key, bool fallback) const;
  [[nodiscard]] int get(const char* group, const char* key, int fallback) const;
  [[nodiscard]] std::string get(const char* group, const char* key, const char* fallback) const;
  [[nodiscard]] std::vector<std::string> get_list(const char* group, const char* key) const;

  // The writers throw std::runtime_error with the reason; the file is then as it was.
  void set(const char* group, const char* key, bool value);
  void set(const char* group, const char* key, int value);
  void set(const char* group, const char* key, const std::string& value);
  void set(const char* group, const char* key, const char* value) { set(group, key, std::string(value)); }
  void set_list(const char* group, const char* key, const std::vector<std::string>& values);

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace base
