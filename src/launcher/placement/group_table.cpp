#include "launcher/placement/group_table.h"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <unordered_map>

namespace launcher {
namespace {

/// The limits of one engine.
constexpr unsigned most_channels = 96;
constexpr unsigned most_consumers = 16;

void mix(std::size_t& seed, double value) {
  seed ^= std::hash<double>{}(value) + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
}

/// The order of the sets of n groups never changes, and sorting it is a good part of a cold plan.
const std::vector<Mask>& sets_largest_first(std::size_t groups) {
  static const auto orders = [] {
    std::array<std::vector<Mask>, SubsetTable::most_groups + 1> made;
    for (std::size_t n = 0; n < made.size(); ++n) {
      for (Mask mask = 1; mask < Mask(1) << n; ++mask)
        made[n].push_back(mask);
      std::stable_sort(made[n].begin(), made[n].end(),
                       [](Mask a, Mask b) { return std::popcount(a) > std::popcount(b); });
    }
    return made;
  }();
  return orders.at(groups);
}

void add(FitKey& key, const Group& group) {
  if (group.is_consumer()) {
    key.consumers.add(options::Passband{group.low, group.high});
    return;
  }
  key.listened_low = key.no_band ? group.listened_low : std::min(key.listened_low, group.listened_low);
  key.no_band = false;
  key.span.add(options::Passband{group.low, group.high});
  key.ft8_top = std::max(key.ft8_top, group.ft8_top);
  key.other_top = std::max(key.other_top, group.other_top);
  key.listened_ft8_top = std::max(key.listened_ft8_top, group.listened_ft8_top);
  key.listened_other_top = std::max(key.listened_other_top, group.listened_other_top);
}

/// What the extremes leave out of a set.
struct Counts {
  unsigned channels = 0, consumers = 0;
};

void add(Counts& counts, const Group& group) {
  counts.channels += group.channel_count;
  counts.consumers += group.is_consumer() ? 1 : 0;
}

void judge(FitKey& key, const Counts& counts) {
  key.too_many_channels = counts.channels > most_channels;
  key.too_many_consumers = counts.consumers > most_consumers;
}

}  // namespace

std::size_t FitKeyHash::operator()(const FitKey& key) const {
  std::size_t seed = (key.listens ? 1U : 0U) | (key.no_band ? 2U : 0U) | (key.too_many_channels ? 4U : 0U) |
                     (key.too_many_consumers ? 8U : 0U);
  for (const double value : {key.span.low, key.span.high, key.ft8_top, key.other_top, key.consumers.low,
                             key.consumers.high, key.listened_low, key.listened_other_top})
    mix(seed, value);
  return seed;
}

GroupTable::GroupTable(std::vector<Group> groups) : groups_(std::move(groups)) {
  listens_ = std::any_of(groups_.begin(), groups_.end(), [](const Group& group) { return group.is_consumer(); });
}

double GroupTable::width(Mask mask) const {
  Extent extent;
  for (; mask != 0; mask &= mask - 1) {
    const Group& group = groups_[static_cast<std::size_t>(std::countr_zero(mask))];
    extent.add(options::Passband{group.low, group.high});
  }
  return extent.high - extent.low;
}

FitKey GroupTable::key(Mask mask) const {
  FitKey key;
  key.listens = listens_;
  Counts counts;
  for (; mask != 0; mask &= mask - 1) {
    const Group& group = groups_[static_cast<std::size_t>(std::countr_zero(mask))];
    add(key, group);
    add(counts, group);
  }
  judge(key, counts);
  return key;
}

SubsetTable::SubsetTable(const GroupTable& table) : order_(&sets_largest_first(table.size())) {
  const std::size_t sets = std::size_t(1) << table.size();
  key_of_.resize(sets);
  widths_.resize(sets);
  std::unordered_map<FitKey, std::uint16_t, FitKeyHash> seen;
  std::vector<FitKey> key_of_set(sets);
  std::vector<Counts> counts(sets);
  std::vector<Extent> extents(sets);
  key_of_set[0] = table.key(0);
  for (Mask mask = 1; mask < sets; ++mask) {
    // A set is the one without its highest group, and that group.
    const auto top = static_cast<std::size_t>(std::bit_width(mask) - 1);
    const Mask rest = mask ^ (Mask(1) << top);
    const Group& group = table.groups()[top];
    FitKey key = key_of_set[rest];
    counts[mask] = counts[rest];
    add(key, group);
    add(counts[mask], group);
    judge(key, counts[mask]);
    key_of_set[mask] = key;
    extents[mask] = extents[rest];
    extents[mask].add(options::Passband{group.low, group.high});
    widths_[mask] = extents[mask].high - extents[mask].low;
    const auto [at, fresh] = seen.try_emplace(key, static_cast<std::uint16_t>(keys_.size()));
    key_of_[mask] = at->second;
    if (!fresh) continue;
    keys_.push_back(key);
    examples_.push_back(mask);
  }
}

}  // namespace launcher
