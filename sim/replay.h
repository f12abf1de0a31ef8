// A recorded decode log, told again as if it happened now.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/schedule.h"
#include "sim/traffic.h"

namespace sim {

/// A decode as a log holds it.
struct LoggedDecode {
  double time{};  ///< seconds since the epoch
  double dial{};  ///< Hz; 0 when the radio was not read
  Mode mode{};
  Decode decode;
};

/// A received line in the columns of WSJT-X, without its line feed; empty for every other line of a log: transmissions,
/// headers, other programs' dialects, torn and cut lines. Marks that decoders put behind a message are dropped.
std::optional<LoggedDecode> parse_logged(std::string_view line);

/// A message without the marks that decoders put behind one that needed a guess: "?", "a1" to "a7".
std::string_view without_marks(std::string_view message);

/// The station that sent a message, upper case; empty when the message does not say or is not one that stations send.
std::string sender_of(Mode mode, std::string_view message);

/// The decodes of a log by channel and cycle, shifted by whole slots (30 seconds, two minutes with WSPR) so that its
/// first slot becomes the one that holds `start`; it begins again after its end.
class Replay {
 public:
  /// Only lines of `channels` are kept: those of the same mode whose dial, which a log rounds to kHz, is the channel's.
  Replay(std::string_view log, const std::vector<Channel>& channels, double start);

  [[nodiscard]] bool empty() const { return decodes_.empty(); }
  /// The decodes of the channel's cycle that begins at `start`; none in a cycle that the log lacks.
  [[nodiscard]] std::vector<Decode> cycle(const Channel& channel, double start) const;

 private:
  /// The channel's place in `channels` and the cycle's number since the log's first slot.
  using Slot = std::pair<std::size_t, std::int64_t>;
  [[nodiscard]] std::size_t channel_of(const LoggedDecode& logged) const;

  std::vector<Channel> channels_;
  std::map<Slot, std::vector<Decode>> decodes_;
  double begin_ = 0;   ///< of the first telling
  double length_ = 0;  ///< of the log, in whole slots
};

}  // namespace sim
