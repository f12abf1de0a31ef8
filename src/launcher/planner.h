// Puts the selected bands, frequencies, listening and analysis channels on as few receivers as will hold them.
#pragma once

#include <vector>

#include "launcher/plan_error.h"
#include "launcher/receiver_launch.h"
#include "options/station.h"

namespace launcher {

/// One launch per receiver that carries something, and per idle receiver that the operator has fixed on a frequency, in
/// ascending order of serial. Only ticked receivers count; one that is not available fails the plan. Deterministic: the
/// same station gives the same launches. Throws PlanError, or std::runtime_error with the operator's words for what no
/// placement could cure. Answers are remembered for a minute. Any thread.
std::vector<ReceiverLaunch> plan(const options::Station& station);
/// The same, computed anew.
std::vector<ReceiverLaunch> plan_uncached(const options::Station& station);
/// Whether plan() would find a way, for trying many stations one after another: nothing is diagnosed, expanded or
/// remembered. Never throws. Any thread.
bool can_be_planned(const options::Station& station);

}  // namespace launcher
