// The station in words: what Start would do, and what the profile says of each receiver.
#pragma once

#include <vector>

#include "gui/pages/text_card.h"
#include "launcher/receiver_launch.h"
#include "options/profile.h"

namespace gui {

/// A card per planned receiver: a line per band with its channels.
std::vector<TextCard> plan_cards(const std::vector<launcher::ReceiverLaunch>& launches);
/// A card per receiver of the profile: whether it is ticked, and its own settings. Throws as parse_station does.
std::vector<TextCard> receiver_cards(const options::Profile& profile);

}  // namespace gui
