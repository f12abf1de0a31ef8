// What the launcher asks of this engine: its profile, as far as a simulated receiver cares.
#pragma once

#include <string>
#include <vector>

#include "sim/schedule.h"

namespace sim {

struct Profile {
  std::string backend = "sdrplay";
  std::string serial;  ///< empty when the receiver is meant by its backend alone
  std::vector<Channel> channels;
  std::vector<const launcher::BandPreset*> bands;  ///< those that the receiver covers
  std::string all_txt;                             ///< path of the decode log
  std::string grid;                                ///< empty or a locator
  bool known_channels = false;
  bool pskreporter = false;
};

/// Reads and judges a profile. Throws std::runtime_error with the words for the operator.
Profile load_profile(const std::string& path);

/// Degrees east of a locator's square; 0 for a text that is none.
double longitude_of(std::string_view grid);

}  // namespace sim
