#include "sim/output.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <limits.h>
#include <string>
#include <unistd.h>

namespace sim {

Output::Output(StopSignal& stop) : stop_(stop) {
  std::signal(SIGPIPE, SIG_IGN);
}

void Output::line(std::string_view text) {
  std::string bytes(text);
  bytes += '\n';
  raw(bytes);
}

void Output::raw(std::string_view bytes) {
  write_all(bytes, 3600);
}

void Output::last_words(std::string_view bytes) {
  try {
    write_all(bytes, 0.2);
  } catch (const StopAsked&) {
  } catch (const ReaderGone&) {
  }
}

void Output::write_all(std::string_view bytes, double patience) {
  while (!bytes.empty()) {
    if (!stop_.wait_writable(STDOUT_FILENO, patience)) {
      if (patience < 1) return;
      continue;
    }
    // A pipe that is ready takes PIPE_BUF bytes without blocking, and a block must never keep a stop from being heard.
    const ssize_t written = write(STDOUT_FILENO, bytes.data(), std::min<size_t>(bytes.size(), PIPE_BUF));
    if (written < 0 && errno != EINTR && errno != EAGAIN) throw ReaderGone();
    if (written > 0) bytes.remove_prefix(static_cast<size_t>(written));
  }
}

}  // namespace sim
