#include "launcher/placement/solve.h"

#include <bit>
#include <unordered_set>

#include "launcher/placement/candidates.h"
#include "launcher/placement/fewest.h"

namespace launcher {
namespace {

/// Depth first, in the order that decides among equally good ways. Only branches that cannot end within the limit are
/// left out, so the first way found is the one that counts.
class Search {
 public:
  Search(const GroupTable& table, const Candidates& candidates, const SlotClasses& classes, const Fewest& fewest,
         unsigned limit)
      : all_(table.all()), classes_(classes), fewest_(fewest), limit_(limit), assignment_(candidates.slots.size()) {
    // While the lowest group that is left is to be placed, a set that holds it and touches nothing placed has it as its
    // own lowest.
    for (const SlotCandidates& sets : candidates.slots) {
      auto& by_lowest = by_lowest_.emplace_back(table.size());
      for (const Mask set : sets)
        by_lowest[static_cast<std::size_t>(std::countr_zero(set))].push_back(set);
    }
  }

  bool visit(Mask covered, std::uint32_t used, unsigned count) {
    if (covered == all_) return true;
    if (count + fewest_.for_rest(all_ & ~covered) > limit_) return false;
    if (!visited_.insert(covered << 32 | used).second) return false;
    const auto lowest = static_cast<std::size_t>(std::countr_one(covered));
    std::uint32_t tried = 0;
    for (std::size_t slot = 0; slot < by_lowest_.size(); ++slot) {
      if ((used >> slot & 1) != 0) continue;
      // What one of a class could not bring to an end, another of it cannot either.
      const std::uint32_t own_class = std::uint32_t(1) << classes_.of_slot[slot];
      if ((tried & own_class) != 0) continue;
      tried |= own_class;
      if (place(slot, lowest, covered, used, count)) return true;
    }
    return false;
  }

  [[nodiscard]] const std::vector<Mask>& assignment() const { return assignment_; }

 private:
  bool place(std::size_t slot, std::size_t lowest, Mask covered, std::uint32_t used, unsigned count) {
    for (const Mask set : by_lowest_[slot][lowest]) {
      if ((set & covered) != 0) continue;
      assignment_[slot] = set;
      if (visit(covered | set, used | std::uint32_t(1) << slot, count + 1)) return true;
    }
    assignment_[slot] = 0;
    return false;
  }

  Mask all_;
  const SlotClasses& classes_;
  const Fewest& fewest_;
  unsigned limit_;
  std::vector<Mask> assignment_;
  std::vector<std::vector<std::vector<Mask>>> by_lowest_;  ///< of each slot, by the lowest group
  std::unordered_set<std::uint64_t> visited_;              ///< groups are at most 32, and slots fewer
};

/// Whether each group has a receiver that could take it at all.
bool reaches_all(const Candidates& candidates, Mask all) {
  Mask reached = 0;
  for (const SlotCandidates& sets : candidates.slots)
    for (const Mask set : sets)
      reached |= set;
  return reached == all;
}

}  // namespace

std::vector<Mask> solve(const Slots& slots, const GroupTable& table, const Pins& pins) {
  if (table.size() == 0) return std::vector<Mask>(slots.size());
  const Candidates candidates = find_candidates(slots, table, pins);
  if (!reaches_all(candidates, table.all())) return {};
  const SlotClasses classes(candidates);
  const auto fewest = table.size() <= SubsetTable::most_groups ? fewest_by_sets(table.size(), candidates, classes)
                                                               : fewest_by_runs(table.size(), candidates, classes);
  const auto least = fewest->for_all();
  if (!least) return {};
  for (auto limit = *least; limit <= slots.size(); ++limit) {
    Search search(table, candidates, classes, *fewest, limit);
    if (search.visit(0, 0, 0)) return search.assignment();
  }
  return {};
}

}  // namespace launcher
