// Standard output, a line at a time, to a launcher that may be slow or gone.
#pragma once

#include <exception>
#include <string_view>

#include "sim/stop_signal.h"

namespace sim {

/// Thrown when nobody reads any more.
class ReaderGone : public std::exception {};

class Output {
 public:
  /// SIGPIPE is ignored from now on; `stop` must outlive this.
  explicit Output(StopSignal& stop);

  /// Writes the text and a line feed. Waits for a slow reader for as long as it takes; throws StopAsked when asked to
  /// end meanwhile, ReaderGone when the pipe is broken.
  void line(std::string_view text);
  /// The bytes as they are.
  void raw(std::string_view bytes);
  /// As raw(), but gives up on a reader that is not ready within a moment: for last words.
  void last_words(std::string_view bytes);

 private:
  void write_all(std::string_view bytes, double patience);

  StopSignal& stop_;
};

}  // namespace sim
