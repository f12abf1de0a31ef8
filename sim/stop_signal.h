// The request to end, as something that can be waited for beside a clock or a pipe.
#pragma once

#include <exception>

namespace sim {

/// Thrown out of a wait or a write when SIGTERM or SIGINT has come.
class StopAsked : public std::exception {};

/// Takes SIGTERM and SIGINT of the whole process for itself. One per process, made before any thread.
class StopSignal {
 public:
  StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;
  ~StopSignal();

  /// From now on SIGTERM passes unheard, as with an engine that hangs.
  void ignore_term() { ignores_term_ = true; }

  /// Sleeps until `when` (seconds since the epoch). Throws StopAsked as soon as it is asked to end.
  void sleep_until(double when);
  /// Waits until `descriptor` can be written, at most `seconds`; false when that time is over. Throws StopAsked.
  bool wait_writable(int descriptor, double seconds);

 private:
  void read_signal();

  int signals_ = -1;
  bool ignores_term_ = false;
};

}  // namespace sim
