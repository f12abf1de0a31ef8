// The station in words: what Start would do.
#pragma once

#include <vector>

#include "gui/pages/text_card.h"
#include "launcher/receiver_launch.h"

namespace gui {

/// A card per planned receiver: a line per band with its channels.
std::vector<TextCard> plan_cards(const std::vector<launcher::ReceiverLaunch>& launches);

}  // namespace gui
