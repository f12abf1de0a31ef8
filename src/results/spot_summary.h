// The line that an engine prints for each finished decode cycle of a channel:
//   FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC,W9XYZ
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace results {

/// The texts are views into the line.
struct SpotSummary {
  std::string_view mode;                      ///< a text of decode_modes
  std::string_view stamp;                     ///< stamp-shaped; the date may be bad
  double frequency{};                         ///< Hz; whole for up to six decimals of MHz
  std::uint64_t spots{};                      ///< may be 0
  std::optional<std::string_view> callsigns;  ///< comma list, may be empty or repeat; absent from older engines
};

/// The summary of a whole line without its terminator; empty for any other line, and for one with a number too large
/// to hold. Accepts what this expression accepts, in one pass:
///   ^(FT[48]|JS8(?:-FAST|-TURBO|-SLOW)?|WSPR) ([0-9]{6}_[0-9]{6}) ([0-9]+\.[0-9]+) MHz: ([0-9]+) spots
///   (?:; callsigns=([A-Za-z0-9/,]*))?$
std::optional<SpotSummary> parse_spot_summary(std::string_view line);

}  // namespace results
