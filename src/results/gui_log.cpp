#include "results/gui_log.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace results {

void GuiLog::open(const std::string& path) {
  close();
  // A pipe without a reader fails under O_NONBLOCK instead of holding up the window; regular files do not know it.
  descriptor_ = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
  struct stat status {};
  if (descriptor_ >= 0 && (fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))) close();
}

void GuiLog::close() {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

void GuiLog::write(std::string_view journal_time, std::string_view label, std::string_view line) {
  if (!healthy()) return;
  record_ = journal_time;
  record_ += ' ';
  if (!label.empty()) {
    record_ += '[';
    record_ += label;
    record_ += "] ";
  }
  record_ += line;
  record_ += '\n';
  for (std::string_view rest = record_; !rest.empty();) {
    const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
    if (written > 0)
      rest.remove_prefix(static_cast<std::size_t>(written));
    else if (written == 0 || errno != EINTR)
      return close();
  }
}

}  // namespace results
