// The places of the known-channel catalogue that a profile listens on.
#pragma once

#include <vector>

#include "sim/profile.h"
#include "sim/signals.h"

namespace sim {

std::vector<KnownPlace> known_places(const Profile& profile);

}  // namespace sim
