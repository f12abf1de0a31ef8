// gui.log: everything that the Logs tab shows, one write per line so that a crash loses nothing.
#pragma once

#include <string>
#include <string_view>

namespace results {

/// Appends to one file. Every failure (a place that cannot be written, a symbolic link, a full disk) only ends the
/// writing; it never throws and never blocks on anything but a regular file. Main thread only.
class GuiLog {
 public:
  GuiLog() = default;
  GuiLog(const GuiLog&) = delete;
  GuiLog& operator=(const GuiLog&) = delete;
  ~GuiLog() { close(); }

  /// Creates the file with mode 0600, or appends to the one that is there. The directory must exist.
  void open(const std::string& path);
  void close();
  /// Open, and no write has failed since.
  [[nodiscard]] bool healthy() const { return descriptor_ >= 0; }

  /// "{journal_time} [{label}] {line}\n" in one write; without the bracket for an empty label. The line's bytes go out
  /// as they are.
  void write(std::string_view journal_time, std::string_view label, std::string_view line);

 private:
  int descriptor_ = -1;
  std::string record_;
};

}  // namespace results
