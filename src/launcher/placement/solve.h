// The search for the fewest receivers. Frequencies in Hz. One thread at a time.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "launcher/placement/slot.h"

namespace launcher {

/// Group name to the serial of the receiver that it is bound to.
using Pins = std::map<std::string, std::string>;
using Slots = std::vector<std::shared_ptr<Slot>>;

/// One set of groups per slot, together each group once; empty when there is no way. Of all ways with the fewest
/// receivers it is the first in this order: the lowest group that is not yet placed goes to the lowest slot that can
/// take it, with the largest set that holds it, and among equally large ones the one of the smallest value. Pins to
/// receivers that have no slot are ignored.
std::vector<Mask> solve(const Slots& slots, const GroupTable& table, const Pins& pins);

}  // namespace launcher
