// Where a profile listens for signals other than the digital modes.
#pragma once

#include <vector>

#include "options/receiver_options.h"
#include "sim/signals.h"

namespace sim {

/// The places of the known channels that the capture holds, and of the profile's own analysis channels. A channel that
/// listens for several kinds gives a place for each kind that is at home in such a channel.
std::vector<KnownPlace> known_places(const options::ReceiverOptions& options);

}  // namespace sim
