// What the cards of a Live tab show besides their numbers, as plain data that a page puts on widgets and compares.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "launcher/receiver_launch.h"
#include "results/channel_key.h"
#include "results/mode_table.h"

namespace results {

/// Heads of the channel grid, from the left.
inline constexpr const char* activity_column_heads[] = {"Mode / frequency", "Spots", "Decodes", "Unique\ncallsigns",
                                                        "5m Avg/decode"};
inline constexpr const char* unattributed_receiver = "Unattributed receiver";

struct ActivityRow {
  std::string key;   ///< "FT8:14.074000", for ActivityModel::row_texts
  std::string text;  ///< "FT8 14.074000 MHz"
  bool operator==(const ActivityRow&) const = default;
};

struct ActivityCard {
  std::string label;       ///< the receiver's label, or unattributed_receiver
  int ordinal = 0;         ///< from 1
  std::string audio_line;  ///< where its audio goes; empty for nowhere
  std::string only_line;   ///< stands in place of the channel grid for a receiver that only carries audio; else empty
  std::vector<ActivityRow> rows;
  bool operator==(const ActivityCard&) const = default;
};

/// What the dashboard needs of a receiver of the plan.
struct ReceiverChannels {
  std::string label;
  std::string audio_line;
  std::vector<ChannelKey> channels;
};
std::vector<ReceiverChannels> receiver_channels(const std::vector<launcher::ReceiverLaunch>& plan);

/// Joined channel key to the label of the receiver that first decoded it.
using Attribution = std::map<std::string, std::string, std::less<>>;

/// One card per receiver in plan order with its known channels of the family, then those that no receiver is known
/// for. A receiver without such channels has a card without rows.
std::vector<ActivityCard> make_activity_cards(Family family, const std::vector<ReceiverChannels>& receivers,
                                              const std::vector<ChannelKey>& known, const Attribution& attribution);

}  // namespace results
