#include "results/activity_model.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "base/callsign.h"
#include "base/text.h"

namespace results {
namespace {

constexpr double window_seconds = 300;
constexpr std::uint64_t windows_per_hour = 12;
constexpr std::size_t longest_callsign = 32;

bool holds(const std::vector<ChannelKey>& keys, const ChannelKey& key) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

std::vector<ChannelKey> all_channels(const std::vector<ReceiverChannels>& receivers) {
  std::vector<ChannelKey> all;
  for (const auto& receiver : receivers)
    for (const auto& key : receiver.channels)
      if (!holds(all, key)) all.push_back(key);
  return all;
}

void refresh_window(ChannelRecord& record, double now) {
  auto& recent = record.recent;
  recent.erase(recent.begin(), recent.upper_bound(now - window_seconds));
  record.window = {};
  const auto future = recent.upper_bound(now);
  for (auto cycle = recent.begin(); cycle != future; ++cycle) {
    record.window.spots += cycle->second.spots;
    record.window.decodes += cycle->second.decodes;
  }
}

std::string callsigns_text(const ChannelRecord& record) {
  if (!record.has_lists) return "—";
  return fmt::format("{}{}", record.partial ? "≥" : "", record.senders.size());
}

std::string average_text(const ChannelRecord::Cycles& window) {
  if (window.decodes == 0) return "—";
  return fmt::format("{:.2f}", static_cast<double>(window.spots) / static_cast<double>(window.decodes));
}

}  // namespace

void ActivityModel::begin_session(const std::vector<launcher::ReceiverLaunch>& plan) {
  receivers_.clear();
  known_.clear();
  attribution_.clear();
  records_.clear();
  total_spots_ = total_decodes_ = five_minute_spots_ = 0;
  change_plan(plan);
}

void ActivityModel::change_plan(const std::vector<launcher::ReceiverLaunch>& plan) {
  const std::vector<ChannelKey> old_channels = all_channels(receivers_);
  receivers_ = receiver_channels(plan);
  std::vector<ChannelKey> known = all_channels(receivers_);
  // With its record made here, a channel that leaves the plan before its first decode is not taken for a new one when
  // a late line arrives.
  for (const auto& key : known)
    records_.try_emplace(key.text());
  for (auto& key : known_)
    if (!holds(old_channels, key) && !holds(known, key)) known.push_back(std::move(key));
  known_ = std::move(known);
}

bool ActivityModel::count(const SpotSummary& summary, std::string_view key, std::optional<double> capture_time,
                          std::string_view label) {
  total_spots_ += summary.spots;
  ++total_decodes_;

  auto found = records_.find(key);
  bool new_row = false;
  if (found == records_.end()) {
    found = records_.try_emplace(std::string(key)).first;
    new_row = label.empty() || is_of_plan(label);
    if (new_row) known_.push_back(ChannelKey::from_text(key));
    if (new_row && !label.empty()) attribution_.insert_or_assign(std::string(key), std::string(label));
  }

  ChannelRecord& record = found->second;
  record.spots += summary.spots;
  ++record.decodes;
  if (capture_time) {
    auto& cycle = record.recent[*capture_time];
    cycle.spots += summary.spots;
    ++cycle.decodes;
  }
  (summary.callsigns ? record.has_lists : record.partial) = true;
  if (summary.callsigns) add_senders(record, *summary.callsigns);
  return new_row;
}

void ActivityModel::add_senders(ChannelRecord& record, std::string_view list) {
  while (!list.empty()) {
    const auto comma = std::min(list.find(','), list.size());
    const std::string_view item = list.substr(0, comma);
    list.remove_prefix(std::min(comma + 1, list.size()));
    if (item.size() > longest_callsign) continue;
    scratch_.clear();
    for (const char c : item)
      scratch_ += base::is_lower(c) ? static_cast<char>(c - 'a' + 'A') : c;
    if (!record.senders.contains(std::string_view(scratch_)) && base::is_callsign(scratch_))
      record.senders.insert(scratch_);
  }
}

bool ActivityModel::is_of_plan(std::string_view label) const {
  return std::any_of(receivers_.begin(), receivers_.end(),
                     [label](const ReceiverChannels& receiver) { return receiver.label == label; });
}

void ActivityModel::refresh(double now) {
  five_minute_spots_ = 0;
  for (auto& [key, record] : records_) {
    refresh_window(record, now);
    five_minute_spots_ += record.window.spots;
  }
}

std::string ActivityModel::totals_text() const {
  return fmt::format("{} spots  /  {} spots/hr  /  PSKR24: {}", total_spots_, five_minute_spots_ * windows_per_hour,
                     psk_total_ ? fmt::to_string(*psk_total_) : "—");
}

RowTexts ActivityModel::row_texts(std::string_view key) const {
  static const ChannelRecord unheard;
  const ChannelRecord* known = record(key);
  const ChannelRecord& shown = known ? *known : unheard;
  return {fmt::to_string(shown.spots), fmt::to_string(shown.decodes), callsigns_text(shown),
          average_text(shown.window)};
}

std::string ActivityModel::sum_text(const ActivityCard& card) const {
  ChannelRecord::Cycles sum;
  for (const auto& row : card.rows) {
    const ChannelRecord* heard = record(row.key);
    if (!heard) continue;
    sum.spots += heard->spots;
    sum.decodes += heard->decodes;
  }
  return fmt::format("{} spots · {} decodes", sum.spots, sum.decodes);
}

std::vector<ActivityCard> ActivityModel::cards(Family family) const {
  return make_activity_cards(family, receivers_, known_, attribution_);
}

bool ActivityModel::begin_psk_total() {
  return !std::exchange(psk_in_flight_, true);
}

void ActivityModel::finish_psk_total(std::optional<std::int64_t> total) {
  psk_in_flight_ = false;
  psk_total_ = total;
}

const ChannelRecord* ActivityModel::record(std::string_view key) const {
  const auto found = records_.find(key);
  return found == records_.end() ? nullptr : &found->second;
}

}  // namespace results
