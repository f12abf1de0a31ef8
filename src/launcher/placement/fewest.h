// How many receivers it takes at least, before any way of placing the groups is searched for.
#pragma once

#include <optional>
#include <vector>

#include "launcher/placement/candidates.h"

namespace launcher {

/// Slots that can take the same sets are of one class: they stand in for each other.
struct SlotClasses {
  explicit SlotClasses(const Candidates& candidates);

  std::vector<std::size_t> of_slot;  ///< the class of each slot
  std::vector<std::size_t> example;  ///< for each class its lowest slot
  std::vector<unsigned> size;        ///< for each class how many slots
};

/// A lower bound for what a set of groups takes. It never exceeds the truth, and where it says that there is no way,
/// there is none.
class Fewest {
 public:
  virtual ~Fewest() = default;
  /// nullopt: no number of slots will do.
  [[nodiscard]] virtual std::optional<unsigned> for_all() const = 0;
  /// For the groups that are left, on any slots at all.
  [[nodiscard]] virtual unsigned for_rest(Mask rest) const = 0;
};

/// By dynamic programming over all sets; for up to twelve groups.
std::unique_ptr<Fewest> fewest_by_sets(std::size_t groups, const Candidates& candidates, const SlotClasses& classes);
/// By how far a run can reach; for any number of groups, when the candidates are runs.
std::unique_ptr<Fewest> fewest_by_runs(std::size_t groups, const Candidates& candidates, const SlotClasses& classes);

}  // namespace launcher
