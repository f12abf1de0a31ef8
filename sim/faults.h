// What goes wrong while a receiver runs.
#pragma once

#include <vector>

#include "sim/output.h"
#include "sim/scenario.h"
#include "sim/schedule.h"
#include "sim/timeline.h"

namespace sim {

/// Thrown when the scenario says that the engine ends here.
class FaultyEnd : public std::exception {};

/// Plans the faults of a receiver whose engine began at `start`. `channels` are what a flood of summaries is of.
void plan_faults(Timeline& timeline, const Faults& faults, const std::vector<Channel>& channels, double start,
                 Output& output);

/// Ends the process as `faults` has it: by signal or status.
[[noreturn]] void end_badly(const Faults& faults);

/// Leaves a child process behind that holds this one's output open for some seconds and does nothing else.
void leave_pipe_holder(double seconds);

}  // namespace sim
