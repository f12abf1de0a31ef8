// What `--list-devices` says.
#pragma once

#include <string>
#include <vector>

#include "sim/scenario.h"

namespace sim {

/// One line per receiver, then a note for each that cannot be used as it is. With a line feed after each.
std::string device_listing(const std::vector<Receiver>& receivers);

/// Lists the scenario's receivers on standard output as the scenario wants it, and returns the exit status.
int list_devices(const Scenario& scenario);

}  // namespace sim
