#include "launcher/placement/candidates.h"

#include <algorithm>
#include <bit>
#include <optional>

namespace launcher {
namespace {

/// The widest capture of an SDRplay receiver.
constexpr double sdrplay_span = 7200000;

/// What the pins say of one slot.
struct Binding {
  Mask required = 0;  ///< pinned to it
  Mask others = 0;    ///< pinned to another slot
};

std::vector<Binding> bindings(const Slots& slots, const GroupTable& table, const Pins& pins) {
  std::vector<Binding> result(slots.size());
  Mask pinned = 0;
  for (std::size_t group = 0; group < table.size(); ++group) {
    const auto pin = pins.find(table.groups()[group].name());
    if (pin == pins.end()) continue;
    for (std::size_t slot = 0; slot < slots.size(); ++slot)
      if (slots[slot]->serial() == pin->second) {
        result[slot].required |= Mask(1) << group;
        pinned |= Mask(1) << group;
      }
  }
  for (Binding& binding : result)
    binding.others = pinned & ~binding.required;
  return result;
}

bool allowed(Mask mask, const Binding& binding) {
  return (mask & binding.others) == 0 && (mask & binding.required) == binding.required;
}

/// One slot's answers for every set of a small table.
class SubsetFit {
 public:
  SubsetFit(Slot& slot, const GroupTable& table, const SubsetTable& subsets)
      : slot_(slot), table_(table), subsets_(subsets), known_(subsets.keys().size()) {}

  bool fits(Mask mask) {
    const std::size_t key = subsets_.key_of(mask);
    auto& known = known_[key];
    if (!known) known = slot_.fit(table_, subsets_.example(key), subsets_.keys()[key]);
    return *known == FitStatus::fits;
  }

 private:
  Slot& slot_;
  const GroupTable& table_;
  const SubsetTable& subsets_;
  std::vector<std::optional<FitStatus>> known_;
};

/// An RX-888 capture that holds a set holds every part of it.
SlotCandidates rx888_candidates(SubsetFit& fit, const GroupTable& table, const SubsetTable& subsets,
                                const Binding& binding) {
  Mask reachable = 0;
  for (std::size_t group = 0; group < table.size(); ++group) {
    const Mask alone = Mask(1) << group;
    if ((alone & binding.others) == 0 && fit.fits(alone)) reachable |= alone;
  }
  std::vector<bool> held(std::size_t(table.all()) + 1);
  SlotCandidates found;
  for (const Mask mask : subsets.largest_first()) {
    if ((mask & ~reachable) != 0) continue;
    if (!held[mask]) {
      if (!fit.fits(mask)) continue;
      for (Mask part = mask; part != 0; part = (part - 1) & mask)
        held[part] = true;
    }
    if ((mask & binding.required) == binding.required) found.push_back(mask);
  }
  return found;
}

SlotCandidates subset_candidates(SubsetFit& fit, const SubsetTable& subsets, const Binding& binding, bool sdrplay) {
  SlotCandidates found;
  for (const Mask mask : subsets.largest_first())
    if (allowed(mask, binding) && !(sdrplay && subsets.width(mask) > sdrplay_span) && fit.fits(mask))
      found.push_back(mask);
  return found;
}

SlotCandidates run_candidates(Slot& slot, const GroupTable& table, const Binding& binding) {
  const bool sdrplay = slot.family() == Family::sdrplay;
  SlotCandidates found;
  const auto too_wide = [&](Mask mask) { return sdrplay && table.width(mask) > sdrplay_span; };
  const auto take = [&](Mask mask) {
    if (slot.fit(table, mask) == FitStatus::fits) found.push_back(mask);
  };
  if (binding.required != 0 && !too_wide(binding.required)) take(binding.required);
  for (std::size_t start = 0; start < table.size(); ++start) {
    Mask run = binding.required;
    for (std::size_t group = start; group < table.size(); ++group) {
      const Mask bit = Mask(1) << group;
      if ((bit & binding.others) != 0) continue;
      run |= bit;
      if (too_wide(run)) break;  // and wider still with every further one
      take(run);
    }
  }
  std::sort(found.begin(), found.end(), [](Mask a, Mask b) {
    const int bits_a = std::popcount(a), bits_b = std::popcount(b);
    return bits_a != bits_b ? bits_a > bits_b : a < b;
  });
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

}  // namespace

Candidates find_candidates(const Slots& slots, const GroupTable& table, const Pins& pins) {
  const std::vector<Binding> bound = bindings(slots, table, pins);
  std::optional<SubsetTable> subsets;
  if (table.size() <= SubsetTable::most_groups) subsets.emplace(table);
  Candidates result;
  for (std::size_t index = 0; index < slots.size(); ++index) {
    Slot& slot = *slots[index];
    result.required.push_back(bound[index].required);
    if (!subsets) {
      result.slots.push_back(run_candidates(slot, table, bound[index]));
      continue;
    }
    SubsetFit fit(slot, table, *subsets);
    result.slots.push_back(slot.family() == Family::rx888
                               ? rx888_candidates(fit, table, *subsets, bound[index])
                               : subset_candidates(fit, *subsets, bound[index], slot.family() == Family::sdrplay));
  }
  return result;
}

}  // namespace launcher
