#include "sim/activity.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace sim {
namespace {

struct BandLife {
  double low, high;  ///< Hz
  double ft8, wspr;  ///< decodes a cycle at the best hour
  double peak_hour;  ///< local solar time
  double floor;      ///< of the peak, twelve hours away from it
};

constexpr std::array<BandLife, 13> bands{{
    {1.8e6, 2.0e6, 7, 4, 0, 0.02},
    {3.5e6, 4.0e6, 16, 8, 0, 0.08},
    {5.0e6, 5.5e6, 8, 0, 1, 0.10},
    {7.0e6, 7.3e6, 26, 14, 23, 0.30},
    {10.1e6, 10.15e6, 18, 15, 21, 0.40},
    {14.0e6, 14.35e6, 31, 26, 16, 0.45},
    {18.068e6, 18.168e6, 16, 12, 15, 0.15},
    {21.0e6, 21.45e6, 18, 12, 14, 0.08},
    {24.89e6, 24.99e6, 11, 7, 14, 0.04},
    {28.0e6, 29.7e6, 22, 5, 14, 0.03},
    {50.0e6, 54.0e6, 3, 0.4, 13, 0.10},
    {144.0e6, 148.0e6, 0.8, 0.2, 10, 0.40},
    {420.0e6, 450.0e6, 0.2, 0.1, 10, 0.40},
}};

/// How many of the stations on FT8 use another mode, as decodes of one cycle of that mode.
constexpr std::array<double, launcher::digital_mode_count> shares{1, 0.3, 0.07, 0.012, 0.004, 0.03, 0};

}  // namespace

double busy_decodes(const Channel& channel, double local_hour) {
  // A frequency of the operator's own outside all bands sounds like a quiet HF band.
  static constexpr BandLife elsewhere{0, 0, 4, 3, 12, 0.5};
  const auto inside = [&](const BandLife& row) {
    return channel.frequency >= row.low && channel.frequency <= row.high;
  };
  const auto found = std::find_if(bands.begin(), bands.end(), inside);
  const BandLife& band = found == bands.end() ? elsewhere : *found;
  const double day = 0.5 + 0.5 * std::cos((local_hour - band.peak_hour) * std::numbers::pi / 12);
  const double now = band.floor + (1 - band.floor) * day;
  if (channel.mode == Mode::wspr) return band.wspr * now;
  return band.ft8 * shares.at(static_cast<std::size_t>(channel.mode)) * now;
}

}  // namespace sim
