// What is due when: the engine's whole main loop.
#pragma once

#include <deque>
#include <functional>
#include <limits>

#include "sim/stop_signal.h"

namespace sim {

inline constexpr double never = std::numeric_limits<double>::infinity();

class Timeline {
 public:
  /// Called when due with the true time; returns when it is due again, or `never`.
  using Action = std::function<double(double now)>;

  /// `due` is true time in seconds since the epoch. An action may call this.
  void add(double due, Action action) { entries_.push_back({due, std::move(action)}); }

  /// Runs what is due, the earliest first, until an action or the stop signal throws.
  [[noreturn]] void run(StopSignal& stop);

 private:
  struct Entry {
    double due;
    Action action;
  };
  std::deque<Entry> entries_;  ///< what is running stays where it is when another is added
};

}  // namespace sim
