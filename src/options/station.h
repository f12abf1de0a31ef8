// A whole station as one profile: settings common to all receivers, each receiver's own, and what is pinned where. Any
// thread. Failures are std::runtime_error with the operator's words.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "options/profile.h"

namespace options {

/// The value of `gui-format` that this version writes and reads.
inline constexpr std::string_view station_format = "multi-receiver-v1";

/// One receiver as the session holds it.
struct ReceiverProfile {
  std::string serial;      ///< anything without a dot in a file; planning and saving a listed device demand more
  std::string model;       ///< may be empty or "Unknown RSP"
  Profile settings;        ///< its own keys, which override the common ones, and "remote-" keys kept for others
  bool enabled = false;    ///< ticked
  bool available = false;  ///< attached and not busy at the last discovery; never in a file
  bool spot = true;        ///< decodes and spots
  bool share = true;       ///< may be shared
  bool operator==(const ReceiverProfile&) const = default;

  /// "{model} · {serial}", or the serial alone: the key of lines, cards and journals.
  [[nodiscard]] std::string label() const;
};

struct Station {
  Profile common;                          ///< option keys and "audio.{id}", "analysis.{id}"
  std::vector<ReceiverProfile> receivers;  ///< in ascending order of serial, each once
  /// Pins: band name in catalogue form, or "@{id}" of a listening or analysis channel, to serial. Empty is Automatic.
  std::map<std::string, std::string> assignments;
  bool operator==(const Station&) const = default;
};

/// Whether a key may stand in a receiver's settings: one of the per-receiver options, or one that begins "remote-".
bool is_receiver_setting(std::string_view key);

/// Takes a profile apart. One without `gui-format` is a single receiver's: all its keys are common ones, and its
/// `serial`, if there is one, is its only receiver, ticked, with its per-receiver options as settings.
Station parse_station(const Profile& profile);
/// The reverse: a multi-receiver profile. An empty pin is not written.
Profile render_station(const Station& station);

}  // namespace options
