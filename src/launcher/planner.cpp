#include "launcher/planner.h"

#include "launcher/placement/memory.h"
#include "launcher/placement/planner.h"
#include "launcher/placement/selection.h"
#include "launcher/receiver_overlay.h"

namespace launcher {

std::vector<ReceiverLaunch> plan(const options::Station& station) {
  constexpr std::size_t remembered = 128;
  static Memory<std::vector<ReceiverLaunch>> memory(remembered);
  return memory.get(station, plan_uncached);
}

namespace {

bool listens_to_one(const options::Station& station) {
  return value_or(station.common, "mode", "audio") == "audio";
}

}  // namespace

bool can_be_planned(const options::Station& station) {
  try {
    const Planner planner(station);
    if (listens_to_one(station)) return !planner.audio_launch().empty();
    return !solve(planner.slots(), GroupTable(selected_groups(station.common)), planner.pins()).empty();
  } catch (const std::exception&) {
    return false;
  }
}

std::vector<ReceiverLaunch> plan_uncached(const options::Station& station) {
  const Planner planner(station);
  if (listens_to_one(station)) return planner.audio_launch();
  const GroupTable table(selected_groups(station.common));
  const std::vector<Mask> placement = solve(planner.slots(), table, planner.pins());
  if (placement.empty()) throw PlanError(planner.diagnose(table, planner.pins(), -1, {}));
  return planner.launches(table, placement);
}

}  // namespace launcher
