// What is known of one receiver's levels now. A plain value.
#pragma once

#include <cstdint>
#include <string>

#include "receiver/control_replies.h"

namespace receiver {

/// Times are of one monotonic clock, in microseconds.
struct MeterSnapshot {
  std::int64_t taken = 0;          ///< when the last good reply arrived; 0 for never
  std::int64_t last_overload = 0;  ///< when an overload was last seen; 0 for never
  MeterReading reading;
  std::string error;  ///< why the last poll failed; empty when it did not
};

/// A reading that is older than this says nothing of now.
inline constexpr std::int64_t reading_lifetime = 5000000;

/// Telemetry as it is at `now`: a reading never outlives its source.
inline bool is_current(const MeterSnapshot& snapshot, std::int64_t now) {
  return snapshot.taken != 0 && snapshot.error.empty() && now - snapshot.taken <= reading_lifetime;
}

}  // namespace receiver
