#include "sim/decode_log.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace sim {

std::string DecodeLog::append(std::string_view lines) {
  if (path_.empty() || lines.empty()) return {};
  const int file = open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
  const bool written = file >= 0 && write(file, lines.data(), lines.size()) == static_cast<ssize_t>(lines.size());
  std::string reason = written ? "" : std::strerror(errno);
  if (file >= 0) close(file);
  if (written == !broken_) return {};
  broken_ = !written;
  return reason;
}

}  // namespace sim
