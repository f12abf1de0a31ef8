// Turns a profile into launches by its pins alone: which receivers a band could go to is not weighed.
#pragma once

#include <vector>

#include "launcher/receiver_launch.h"
#include "options/profile.h"

namespace launcher {

/// One launch per ticked receiver that carries something, in ascending order of serial. A band goes to the receiver it
/// is pinned to; without a pin to a ticked receiver, to the first ticked one. A profile that names no receiver is
/// launched as it stands. Throws std::runtime_error with the operator's words when nothing can be started.
std::vector<ReceiverLaunch> pinned_plan(const options::Profile& profile);

}  // namespace launcher
