// The output of an engine, line by line, without ever holding up the main loop.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <gio/gio.h>

namespace receiver {

class LineQueue;
class LineChain;

/// Gives the lines of all readers their turn on the main loop. Lines are handed on in an idle source, below events and
/// redraws, and for no longer than `budget` per iteration of the loop all readers together: however much the engines
/// print, the window keeps drawing. Readers with much to say take turns. Main thread only.
class LinePump {
 public:
  explicit LinePump(std::chrono::microseconds budget = std::chrono::milliseconds(4));
  ~LinePump();
  LinePump(const LinePump&) = delete;
  LinePump& operator=(const LinePump&) = delete;

 private:
  friend class LineReader;
  std::shared_ptr<LineQueue> queue_;
};

/// Reads one stream to its end. Each read is asynchronous; the next one starts when every whole line of the last has
/// been handed on, so a reader that nobody has time for holds its engine back rather than filling the memory.
/// Destroying the reader stops it at once and closes the stream; every callback may do so. Main thread only.
class LineReader {
 public:
  /// A line longer than this is cut: its beginning is handed on, the rest up to the next line feed is dropped. (The
  /// rest is not a line: taken for one it could be mistaken for a result.)
  static constexpr size_t longest_line = 4UL << 20;

  struct Sink {
    /// One line as bytes, without its line feed and one carriage return before it. Valid during the call only.
    std::function<void(std::string_view)> line;
    /// The first time that a line was cut, after that line.
    std::function<void()> cut;
    /// Called once and last: the stream has ended, or cannot be read for this reason.
    std::function<void(const std::string& error)> ended;
  };

  LineReader() = default;
  /// Starts reading. Adds a reference to the stream.
  LineReader(LinePump& pump, GInputStream* stream, Sink sink);
  LineReader(LineReader&& other) noexcept = default;
  LineReader& operator=(LineReader&& other) noexcept;
  ~LineReader();

 private:
  void stop();
  std::shared_ptr<LineChain> chain_;
};

}  // namespace receiver
