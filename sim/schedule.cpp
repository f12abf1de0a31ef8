#include "sim/schedule.h"

#include <array>
#include <cmath>

#include "results/mode_table.h"

namespace sim {

ModeTiming mode_timing(Mode mode) {
  // FT8, FT4, JS8, JS8-FAST, JS8-TURBO, JS8-SLOW, WSPR
  static constexpr std::array<double, launcher::digital_mode_count> decoding{1.4, 1.0, 1.6, 1.4, 1.2, 1.8, 3.5};
  const auto index = static_cast<std::size_t>(mode);
  return {results::decode_modes.at(index).cycle_seconds, decoding.at(index)};
}

std::int64_t first_cycle_from(double time, double cycle) {
  return static_cast<std::int64_t>(std::ceil(time / cycle));
}

std::int64_t last_complete_cycle(double time, double cycle) {
  return static_cast<std::int64_t>(std::floor(time / cycle)) - 1;
}

StationClock::StationClock(double start, double rewind, double scale) {
  if (rewind <= 0 || scale <= 1) return;
  start_ = start;
  rewind_ = rewind;
  scale_ = scale;
  caught_up_ = start + rewind / (scale - 1);
}

double StationClock::at(double real) const {
  return real >= caught_up_ ? real : start_ - rewind_ + (real - start_) * scale_;
}

double StationClock::when(double station) const {
  return station >= caught_up_ ? station : start_ + (station - start_ + rewind_) / scale_;
}

}  // namespace sim
