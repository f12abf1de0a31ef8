// The desktop's autostart entry: a file that is there or not. No toolkit here.
#pragma once

#include <string>

namespace gui {

/// The running program's own file.
std::string own_executable();
/// The text of an entry that opens `executable`, an absolute path, at sign-in.
std::string autostart_entry(const std::string& executable);

class Autostart {
 public:
  /// `directory` is the "autostart" folder of the desktop's configuration.
  Autostart(const std::string& directory, std::string executable)
      : path_(directory + "/tarnwick.desktop"), executable_(std::move(executable)) {}

  [[nodiscard]] bool present() const;
  /// Writes or removes the entry. Throws std::runtime_error with the reason.
  void set(bool present) const;

 private:
  std::string path_;
  std::string executable_;
};

}  // namespace gui
