// How long one iteration of the main loop takes: the time between two polls of the main context, when nothing else can
// happen on the screen.
#pragma once

#include <algorithm>

#include <glib.h>

namespace own_station {

/// Main thread only; one for the process, as GLib's poll function has no data of its own.
class LoopWatch {
 public:
  static void begin() {
    reset();
    g_main_context_set_poll_func(nullptr, &LoopWatch::poll);
  }
  static void reset() { left_ = longest_ = 0; }
  [[nodiscard]] static double longest_ms() { return static_cast<double>(longest_) / 1000; }

 private:
  static gint poll(GPollFD* descriptors, guint count, gint timeout) {
    const gint64 now = g_get_monotonic_time();
    if (left_) longest_ = std::max(longest_, now - left_);
    const gint result = g_poll(descriptors, count, timeout);
    left_ = g_get_monotonic_time();
    return result;
  }

  static inline gint64 left_ = 0, longest_ = 0;
};

}  // namespace own_station
