// The name of a decode channel in counters, rows and rate stores: "FT8:14.074000".
#pragma once

#include <string>
#include <string_view>

namespace results {

struct ChannelKey {
  std::string mode;       ///< "FT8"
  std::string frequency;  ///< MHz with exactly six decimals, "14.074000"

  ChannelKey() = default;
  /// `frequency_hz` is in Hz.
  ChannelKey(std::string_view mode_text, double frequency_hz);
  /// From the joined form; the mode ends at the first colon.
  static ChannelKey from_text(std::string_view text);

  [[nodiscard]] std::string text() const { return mode + ':' + frequency; }
  bool operator==(const ChannelKey&) const = default;
  auto operator<=>(const ChannelKey&) const = default;
};

/// Replaces `out` with the joined form; allocates only until `out` has grown to fit.
void assign_channel_key(std::string& out, std::string_view mode, double frequency_hz);

}  // namespace results
