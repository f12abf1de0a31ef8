#include "receiver/timing.h"

#include <glib.h>

namespace receiver {

MonotonicClock monotonic_clock() {
  return [] { return std::chrono::nanoseconds(std::chrono::microseconds(g_get_monotonic_time())); };
}

}  // namespace receiver
