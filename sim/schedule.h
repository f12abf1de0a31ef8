// When things happen: the cycles of each mode and the station's own clock. Pure arithmetic on seconds since the epoch.
#pragma once

#include <cstdint>

#include "launcher/catalogue/bands.h"

namespace sim {

/// A dial frequency with a digital mode, as the profile asks for it.
using Channel = launcher::DecoderChannel;
using Mode = launcher::DigitalMode;

/// The cycle of a mode, all in seconds. Cycles are aligned to midnight UTC.
struct ModeTiming {
  double cycle;
  double decoding;  ///< from the end of a cycle to its summary
};
ModeTiming mode_timing(Mode mode);

/// The number of the first cycle that begins at `time` or later; cycle n begins at n * cycle.
std::int64_t first_cycle_from(double time, double cycle);
/// The number of the last cycle that has ended by `time`.
std::int64_t last_complete_cycle(double time, double cycle);

/// The station's clock. It is the true one, except that a station may begin in the past and run fast until it has
/// caught up: so nothing is ever stamped later than now.
class StationClock {
 public:
  /// The true time.
  StationClock() = default;
  /// Begins `rewind` seconds before `start` and runs `scale` times as fast. A scale of 1 or less never catches up and
  /// is taken as no rewind.
  StationClock(double start, double rewind, double scale);

  /// The station's time at the true time `real`.
  [[nodiscard]] double at(double real) const;
  /// The true time at which the station's clock shows `station`.
  [[nodiscard]] double when(double station) const;

 private:
  double start_ = 0;
  double rewind_ = 0;
  double scale_ = 1;
  double caught_up_ = 0;
};

}  // namespace sim
