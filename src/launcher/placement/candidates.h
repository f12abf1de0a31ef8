// Which sets of groups each receiver can take.
#pragma once

#include <vector>

#include "launcher/placement/solve.h"

namespace launcher {

/// The sets of one slot, the larger first and then by value, each once. All of them hold the slot's pinned groups.
using SlotCandidates = std::vector<Mask>;

struct Candidates {
  std::vector<SlotCandidates> slots;  ///< by slot
  std::vector<Mask> required;         ///< by slot: the groups pinned to it
};

/// Up to twelve groups every set is tried; beyond that the runs of groups that are neighbours in frequency, each with
/// the pinned ones added.
Candidates find_candidates(const Slots& slots, const GroupTable& table, const Pins& pins);

}  // namespace launcher
