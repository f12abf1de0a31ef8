// What the ticked receivers hold, when it is not enough. Any thread.
#pragma once

#include <string>
#include <vector>

#include "launcher/placement/planner.h"

namespace launcher {

/// A selection cut down until it can be placed.
struct Remainder {
  GroupTable table{{}};
  std::vector<Mask> placement;
  std::vector<Group> left_out;  ///< from the lowest frequency up
};
/// Leaves out groups from the highest frequency down, and takes back those that were not in the way.
Remainder most_that_fit(const Slots& slots, const GroupTable& table, const Pins& pins);

/// One line per slot with what it holds and how wide its capture may be. `wanted` is the group that finds no place, or
/// null. `placement` may be empty: everything is idle.
std::string capacity_lines(const Planner& planner, const GroupTable& table, const std::vector<Mask>& placement,
                           const Group* wanted);

/// "0-32 MHz at ADC sample rate Half" and so on: what an RX-888 covers with its settings.
std::string rx888_range(const options::Profile& common, const options::ReceiverProfile& receiver);

}  // namespace launcher
