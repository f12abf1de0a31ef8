// Timers of the main loop that end with their owner.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace base {

/// A GLib timeout on the thread's default main context. Destroying or reassigning it cancels it; a callback may do
/// either to its own timer. Move-only; main thread only.
class Timer {
 public:
  using Callback = std::function<void()>;

  Timer() = default;
  /// Fires once after `delay`.
  static Timer once(std::chrono::milliseconds delay, Callback callback);
  /// Fires every `period` until cancelled.
  static Timer repeating(std::chrono::milliseconds period, Callback callback);
  /// Fires once as soon as the loop is idle.
  static Timer idle(Callback callback);

  /// True from arming until the last firing has begun or cancel().
  [[nodiscard]] bool armed() const;
  void cancel() { state_.reset(); }

 private:
  struct State;
  struct StateDeleter {
    void operator()(State* state) const;
  };
  std::unique_ptr<State, StateDeleter> state_;
};

}  // namespace base
