// The delays around running engines in one place, with the shipped values.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>

namespace receiver {

struct Timing {
  /// From SIGTERM to SIGKILL.
  std::chrono::milliseconds stop_guard = std::chrono::seconds(10);
  /// Before the first, second, ... restart in a run of failures; the last value holds for all later ones.
  std::array<std::chrono::milliseconds, 5> back_off{std::chrono::seconds(5), std::chrono::seconds(15),
                                                    std::chrono::seconds(30), std::chrono::seconds(60),
                                                    std::chrono::seconds(120)};
  /// A process that ran longer than this, strictly, forgives the crashes before it.
  std::chrono::nanoseconds healthy_run = std::chrono::seconds(600);
  /// From the close of the window to its end, whatever still runs.
  std::chrono::milliseconds closing_limit = std::chrono::seconds(15);
  /// Start when opened: how often it looks, and how often at most.
  std::chrono::milliseconds start_period = std::chrono::seconds(3);
  int start_tries = 30;
  /// Between two polls of a receiver's levels while its meters are on the screen.
  std::chrono::milliseconds meter_period{50};
};

/// Time since an arbitrary point, never set back.
using MonotonicClock = std::function<std::chrono::nanoseconds()>;
MonotonicClock monotonic_clock();

}  // namespace receiver
