// A read-only text view of the newest lines of a log.
#pragma once

#include <deque>
#include <string>

#include <gtk/gtk.h>

#include "base/gobject_ptr.h"
#include "base/signal_connection.h"
#include "base/timer.h"

namespace kit {

/// A text buffer with the tags "normal", "good", "warning" and "error" that keeps the newest `capacity` lines.
/// Lines are gathered and inserted a few times a second, so a burst costs one insertion and no line is laid out that
/// would have scrolled out of the buffer anyway. Main thread only.
class LogBuffer {
 public:
  static constexpr std::size_t capacity = 1500;
  /// A longer line is shown by its beginning: laying out a line of a megabyte would hold up the window for seconds.
  static constexpr std::size_t longest_line = 4096;

  LogBuffer();

  /// `line` is valid UTF-8 without line feed; `tag` one of the four tags.
  void append(std::string line, const char* tag);
  void clear();
  /// Inserts what has been gathered.
  void flush();

  [[nodiscard]] GtkTextBuffer* buffer() const { return buffer_.get(); }

 private:
  struct Line {
    std::string text;
    const char* tag;
  };
  void insert(const Line& line);
  void trim();

  base::GObjectPtr<GtkTextBuffer> buffer_;
  std::deque<Line> gathered_;
  base::Timer flush_timer_;
};

/// A text view of a LogBuffer, in a scrolled area, that can stay at the newest line: after an insertion, a wrapped
/// line, a resize or a trim, whatever changes the height.
class LogView {
 public:
  explicit LogView(const char* accessible_name);

  void show(const LogBuffer& buffer);
  void follow(bool on);
  [[nodiscard]] GtkWidget* widget() const { return area_; }

 private:
  void scroll_to_end();

  GtkWidget* view_;
  GtkWidget* area_;
  bool follow_ = true;
  base::SignalConnection height_changed_;
};

}  // namespace kit
