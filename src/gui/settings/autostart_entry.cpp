#include "gui/settings/autostart_entry.h"

#include <filesystem>
#include <stdexcept>

#include "base/file_write.h"

namespace gui {
namespace {

// An argument of Exec is quoted, with some characters escaped inside; the line is then a string of a key file, in which
// a backslash is written twice. A percent sign would begin a field code.
std::string quoted_argument(const std::string& argument) {
  std::string quoted = "\"";
  for (const char c : argument)
    switch (c) {
      case '\\':
        quoted += "\\\\\\\\";
        break;
      case '"':
      case '`':
      case '$':
        quoted += "\\\\";
        quoted += c;
        break;
      case '%':
        quoted += "%%";
        break;
      default:
        quoted += c;
    }
  return quoted + "\"";
}

}  // namespace

std::string own_executable() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::string autostart_entry(const std::string& executable) {
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=Tarnwick\n"
         "Comment=Launcher for a station of software-defined radio receivers\n"
         "Exec=" +
         quoted_argument(executable) +
         "\n"
         "Icon=tarnwick\n"
         "Terminal=false\n"
         "X-GNOME-Autostart-enabled=true\n";
}

bool Autostart::present() const {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::symlink_status(path_, error));
}

void Autostart::set(bool wanted) const {
  if (wanted) return base::replace_file(path_, autostart_entry(executable_));
  std::error_code error;
  std::filesystem::remove(path_, error);
  if (error) throw std::runtime_error(error.message());
}

}  // namespace gui
