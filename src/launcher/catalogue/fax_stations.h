// The weather fax transmitters that are received, with their published hours. Constant data, any thread.
//
// Hours are taken from the stations' published schedules of about 2011 to 2020 (the start of each chart, ten minutes a
// chart where no length is given; charts less than about an hour apart run together). They are sensible defaults.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sig {

/// A run of charts, in minutes of the UTC day, 0..1439. It may end before it starts, on the next day.
struct FaxBlock {
  int start{}, end{};
  bool operator==(const FaxBlock&) const = default;
};

/// One transmitter of a station.
struct FaxTransmitter {
  std::string_view id;           ///< of its row in the known channels
  std::string_view station;      ///< "NMG New Orleans"
  double centre_hz{};            ///< of its emission
  std::vector<FaxBlock> blocks;  ///< empty: charts around the clock
  std::string description;       ///< for a tooltip
};

/// In the order of the known channels.
const std::vector<FaxTransmitter>& fax_transmitters();

}  // namespace sig
