#include "launcher/placement/fewest.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace launcher {
namespace {

constexpr std::uint8_t impossible = 255;

/// Whether every part of each set that keeps the pinned groups is a candidate too, so that overlapping sets can always
/// be cut down to disjoint ones.
bool is_closed(const std::vector<bool>& member, const SlotCandidates& sets, Mask required) {
  return std::all_of(sets.begin(), sets.end(), [&](Mask set) {
    for (Mask rest = set & ~required; rest != 0; rest &= rest - 1) {
      const Mask part = set & ~(rest & -rest);
      if (part != 0 && !member[part]) return false;
    }
    return true;
  });
}

SlotCandidates without_parts(const std::vector<bool>& member, const SlotCandidates& sets, Mask all) {
  SlotCandidates largest;
  for (const Mask set : sets) {
    bool grows = false;
    for (Mask rest = all & ~set; rest != 0 && !grows; rest &= rest - 1)
      grows = member[set | (rest & -rest)];
    if (!grows) largest.push_back(set);
  }
  return largest;
}

class FewestBySets : public Fewest {
 public:
  FewestBySets(std::size_t groups, const Candidates& candidates, const SlotClasses& classes)
      : all_((Mask(1) << groups) - 1), fewest_(std::size_t(all_) + 1, impossible) {
    fewest_[0] = 0;
    std::vector<std::pair<SlotCandidates, unsigned>> closed;
    std::vector<bool> member(fewest_.size());
    for (std::size_t index = 0; index < classes.size.size(); ++index) {
      const std::size_t slot = classes.example[index];
      const SlotCandidates& sets = candidates.slots[slot];
      if (sets.empty()) continue;
      member.assign(member.size(), false);
      for (const Mask set : sets)
        member[set] = true;
      if (is_closed(member, sets, candidates.required[slot]))
        closed.emplace_back(without_parts(member, sets, all_), classes.size[index]);
      else
        repeat(classes.size[index], [&] { add_exactly(sets); });
    }
    // Sets that can be cut down come last: they may overlap whatever is there.
    for (const auto& [sets, size] : closed)
      repeat(size, [&sets = sets, this] { add_overlapping(sets); });
    spread_to_parts();
  }

  [[nodiscard]] std::optional<unsigned> for_all() const override {
    return fewest_[all_] == impossible ? std::nullopt : std::optional<unsigned>(fewest_[all_]);
  }
  [[nodiscard]] unsigned for_rest(Mask rest) const override { return fewest_[rest]; }

 private:
  template <typename Step>
  static void repeat(unsigned times, const Step& step) {
    for (unsigned turn = 0; turn < times; ++turn)
      step();
  }

  void offer(std::vector<std::uint8_t>& next, Mask set, std::uint8_t count) {
    if (count < next[set]) next[set] = count;
  }

  /// One more slot whose sets must not touch what is covered.
  void add_exactly(const SlotCandidates& sets) {
    std::vector<std::uint8_t> next = fewest_;
    for (Mask covered = 0; covered <= all_; ++covered)
      if (fewest_[covered] != impossible)
        for (const Mask set : sets)
          if ((set & covered) == 0) offer(next, covered | set, static_cast<std::uint8_t>(fewest_[covered] + 1));
    fewest_.swap(next);
  }

  void add_overlapping(const SlotCandidates& largest) {
    std::vector<std::uint8_t> next = fewest_;
    for (Mask covered = 0; covered <= all_; ++covered)
      if (fewest_[covered] != impossible)
        for (const Mask set : largest)
          offer(next, covered | set, static_cast<std::uint8_t>(fewest_[covered] + 1));
    fewest_.swap(next);
  }

  /// A part takes no more than the whole.
  void spread_to_parts() {
    for (Mask set = all_ + 1; set-- > 0;)
      for (Mask rest = all_ & ~set; rest != 0; rest &= rest - 1)
        offer(fewest_, set, fewest_[set | (rest & -rest)]);
  }

  Mask all_;
  std::vector<std::uint8_t> fewest_;
};

/// What is pinned goes with its receiver whatever happens, so the runs are those over the groups that are not. Taking
/// every run to reach as far as the best one that starts no later makes the furthest reach the best one too.
class FewestByRuns : public Fewest {
 public:
  FewestByRuns(std::size_t groups, const Candidates& candidates, const SlotClasses& classes) {
    for (const Mask required : candidates.required)
      pinned_ |= required;
    for (std::size_t group = 0; group < groups; ++group)
      position_.push_back(end_), end_ += (pinned_ >> group & 1) == 0 ? 1 : 0;
    std::vector<std::vector<unsigned>> reach;
    for (const std::size_t slot : classes.example)
      reach.push_back(reach_of(candidates.slots[slot]));
    find_for_rest(reach);
    // A receiver that cannot take what is pinned to it.
    for (std::size_t slot = 0; slot < candidates.slots.size(); ++slot)
      if (candidates.required[slot] != 0 && candidates.slots[slot].empty()) return;
    find_for_all(reach, candidates, classes);
  }

  [[nodiscard]] std::optional<unsigned> for_all() const override { return for_all_; }
  [[nodiscard]] unsigned for_rest(Mask rest) const override {
    const Mask free = rest & ~pinned_;
    if (free == 0) return rest == 0 ? 0 : 1;
    return from_[position_[static_cast<std::size_t>(std::countr_zero(free))]];
  }

 private:
  /// For each start how far a run that begins no later gets.
  std::vector<unsigned> reach_of(const SlotCandidates& sets) const {
    std::vector<unsigned> reach(end_ + 1, 0);
    for (const Mask set : sets) {
      const Mask free = set & ~pinned_;
      if (free == 0) continue;
      unsigned& at = reach[position_[static_cast<std::size_t>(std::countr_zero(free))]];
      at = std::max(at, position_[static_cast<std::size_t>(std::bit_width(free) - 1)] + 1);
    }
    for (std::size_t start = 1; start < reach.size(); ++start)
      reach[start] = std::max(reach[start], reach[start - 1]);
    return reach;
  }

  /// The furthest end for each choice of how many slots of each class are used.
  void find_for_all(const std::vector<std::vector<unsigned>>& reach, const Candidates& candidates,
                    const SlotClasses& classes) {
    std::vector<std::size_t> stride(classes.size.size() + 1, 1);
    for (std::size_t index = 0; index < classes.size.size(); ++index)
      stride[index + 1] = stride[index] * (classes.size[index] + 1);
    std::vector<std::uint8_t> furthest(stride.back(), 0);
    std::vector<unsigned> used(classes.size.size(), 0);
    for (std::size_t state = 0; state < furthest.size(); ++state, count_up(used, classes.size)) {
      unsigned count = 0;
      std::uint8_t& end = furthest[state];
      for (std::size_t index = 0; index < used.size(); ++index) {
        if (used[index] == 0) continue;
        count += used[index];
        const std::uint8_t before = furthest[state - stride[index]];
        end = std::max({end, before, static_cast<std::uint8_t>(reach[index][before])});
      }
      if (end == end_ && (!for_all_ || count < *for_all_) && uses_pinned(used, candidates, classes)) for_all_ = count;
    }
  }

  /// The next choice, the first class running quickest.
  static void count_up(std::vector<unsigned>& used, const std::vector<unsigned>& limits) {
    for (std::size_t index = 0; index < used.size(); ++index) {
      if (++used[index] <= limits[index]) return;
      used[index] = 0;
    }
  }

  static bool uses_pinned(const std::vector<unsigned>& used, const Candidates& candidates, const SlotClasses& classes) {
    for (std::size_t index = 0; index < used.size(); ++index)
      if (candidates.required[classes.example[index]] != 0 && used[index] < classes.size[index]) return false;
    return true;
  }

  void find_for_rest(const std::vector<std::vector<unsigned>>& reach) {
    constexpr unsigned never = impossible;
    from_.assign(end_ + 1, 0);
    for (std::size_t start = end_; start-- > 0;) {
      unsigned best = static_cast<unsigned>(start);
      for (const auto& each : reach)
        best = std::max(best, each[start]);
      from_[start] = best > start ? std::min(never, from_[best] + 1) : never;
    }
  }

  Mask pinned_ = 0;
  unsigned end_ = 0;
  std::vector<unsigned> position_;  ///< of a group among those that are not pinned
  std::optional<unsigned> for_all_;
  std::vector<unsigned> from_;  ///< runs from a position to the end
};

}  // namespace

SlotClasses::SlotClasses(const Candidates& candidates) {
  for (std::size_t slot = 0; slot < candidates.slots.size(); ++slot) {
    const auto same = std::find_if(example.begin(), example.end(), [&](std::size_t other) {
      return candidates.required[other] == candidates.required[slot] &&
             candidates.slots[other] == candidates.slots[slot];
    });
    of_slot.push_back(static_cast<std::size_t>(same - example.begin()));
    if (same == example.end()) {
      example.push_back(slot);
      size.push_back(0);
    }
    ++size[of_slot.back()];
  }
}

std::unique_ptr<Fewest> fewest_by_sets(std::size_t groups, const Candidates& candidates, const SlotClasses& classes) {
  return std::make_unique<FewestBySets>(groups, candidates, classes);
}

std::unique_ptr<Fewest> fewest_by_runs(std::size_t groups, const Candidates& candidates, const SlotClasses& classes) {
  return std::make_unique<FewestByRuns>(groups, candidates, classes);
}

}  // namespace launcher
