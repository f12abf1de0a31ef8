// The places on the dial where signals other than the digital modes are known to live: calling frequencies, bulletins,
// beacons and weather fax transmitters. Compiled in, constant, any thread. Frequencies in Hz.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sig {

struct KnownChannel {
  std::string id;  ///< a stable key, at most 32 letters, digits, underscores or hyphens
  double dial_hz{};
  bool usb = true;
  double bandwidth_hz{};
  std::string spec;         ///< the fields of its analysis channel that follow the bandwidth
  std::string label;        ///< on screen
  std::string description;  ///< as a tooltip
};

/// All rows. Their order is that of selection, so it decides which of them survive a limit.
const std::vector<KnownChannel>& known_channels();
/// The row of a key, null if there is none.
const KnownChannel* find_known_channel(std::string_view id);
/// Whether the row is a weather fax transmitter and nothing else.
bool is_fax_channel(const KnownChannel& row);
/// The row's whole analysis channel specification, not yet in its canonical form.
std::string known_channel_specification(const KnownChannel& row);
/// "20", "70cm", ..., or empty for a frequency outside the amateur bands: where a band filter looks for a row.
std::string_view known_channel_band(double hz);

}  // namespace sig
