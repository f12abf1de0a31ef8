// Invented traffic: what one channel hears in one cycle.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sim/population.h"
#include "sim/random.h"
#include "sim/schedule.h"

namespace sim {

/// One decode, as a decoder reports it.
struct Decode {
  int snr{};    ///< dB
  double dt{};  ///< seconds
  int audio{};  ///< Hz above the dial
  std::string message;
  std::string sender;  ///< empty when the message hides it
};

class Traffic {
 public:
  /// `activity` is a factor on a busy station; `longitude` in degrees east makes the day.
  Traffic(std::uint64_t seed, double activity, double longitude);

  /// The decodes of the cycle that begins at `start`. The same cycle always gives the same decodes. Stations stay for
  /// some minutes, keep their audio offset and their turn, and come back on other days.
  [[nodiscard]] std::vector<Decode> cycle(const Channel& channel, double start) const;

  [[nodiscard]] const std::vector<Station>& population() const { return population_; }

 private:
  struct Visitor;
  [[nodiscard]] double expected(const Channel& channel, double start) const;
  [[nodiscard]] std::vector<Visitor> visitors(const Channel& channel, double start, double mean) const;

  std::uint64_t seed_;
  double activity_;
  double longitude_;
  std::vector<Station> population_;
};

/// A signal strength in dB for a chance of 0..1, distributed as in public logs (-24 to +58, median -6).
int snr_quantile(double chance);

}  // namespace sim
