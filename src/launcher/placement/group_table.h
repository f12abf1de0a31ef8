// The groups of one question, and for a set of them the few extremes on which the fit of a capture depends. In Hz.
#pragma once

#include <cstddef>
#include <vector>

#include "launcher/placement/expansion.h"
#include "launcher/placement/group.h"

namespace launcher {

/// A faithful summary of a set of groups: two sets with equal extremes fit the same captures.
struct FitKey {
  bool listens = false;             ///< some group of the whole list is a consumer, in the set or not
  bool no_band = true;              ///< the set has no band and no frequency
  bool too_many_channels = false;   ///< for one engine
  bool too_many_consumers = false;  ///< likewise
  Extent span;                      ///< of its bands and frequencies
  double ft8_top = -1, other_top = -1;
  Extent consumers;
  double listened_low = 0, listened_ft8_top = -1, listened_other_top = -1;  ///< on a receiver that does not decode
  bool operator==(const FitKey&) const = default;
};
struct FitKeyHash {
  std::size_t operator()(const FitKey& key) const;
};

class GroupTable {
 public:
  explicit GroupTable(std::vector<Group> groups);

  [[nodiscard]] const std::vector<Group>& groups() const { return groups_; }
  [[nodiscard]] std::size_t size() const { return groups_.size(); }
  [[nodiscard]] Mask all() const { return (Mask(1) << groups_.size()) - 1; }
  /// From the lowest low to the highest high of a set that is not empty.
  [[nodiscard]] double width(Mask mask) const;
  [[nodiscard]] FitKey key(Mask mask) const;

 private:
  std::vector<Group> groups_;
  bool listens_ = false;
};

/// Every set of at most twelve groups, with the number of its extremes among the different ones.
class SubsetTable {
 public:
  static constexpr std::size_t most_groups = 12;

  explicit SubsetTable(const GroupTable& table);

  [[nodiscard]] std::size_t key_of(Mask mask) const { return key_of_[mask]; }
  /// The first set, in the order of their numbers, that has these extremes.
  [[nodiscard]] Mask example(std::size_t key) const { return examples_[key]; }
  [[nodiscard]] const std::vector<FitKey>& keys() const { return keys_; }
  [[nodiscard]] double width(Mask mask) const { return widths_[mask]; }
  /// All sets but the empty one: the larger first, and then by value.
  [[nodiscard]] const std::vector<Mask>& largest_first() const { return *order_; }

 private:
  std::vector<std::uint16_t> key_of_;
  std::vector<Mask> examples_;
  std::vector<FitKey> keys_;
  std::vector<double> widths_;
  const std::vector<Mask>* order_;
};

}  // namespace launcher
