#include "launcher/placement/selection.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/catalogue/band_modes.h"
#include "launcher/catalogue/known_selection.h"
#include "launcher/plan_error.h"
#include "launcher/receiver_overlay.h"

namespace launcher {
namespace {

using options::Profile;

std::optional<std::string_view> found(const Profile& profile, const char* key) {
  const auto at = profile.find(key);
  return at == profile.end() ? std::nullopt : std::optional<std::string_view>(at->second);
}

bool decodes_bands(const Profile& common) {
  const std::string_view mode = value_or(common, "mode", "audio");
  return mode == "decoder" || mode == "hybrid";
}

std::vector<std::string> entries(std::string_view list) {
  std::vector<std::string> result;
  if (list.empty()) return result;
  for (const auto piece : base::split(list, ','))
    result.emplace_back(base::trim(piece));
  return result;
}

PlanError missing_frequency(const std::string& band, const std::string& text) {
  PlanError error(PlanCode::missing_frequency, text);
  error.band = normalise_band(band);
  return error;
}

/// A band that cannot be read because it lacks a ticked mode is told so.
Group selected_band(const Profile& common, const std::string& band) {
  try {
    return band_group(common, band);
  } catch (const std::exception&) {
    const std::string advice = missing_mode_advice(common, band);
    if (advice.empty()) throw;
    throw missing_frequency(band, fmt::format("{}, or untick {}.", advice, band_display_name(band)));
  }
}

void judge_repeats(const std::vector<Group>& groups) {
  std::set<std::string> bands;
  std::set<std::pair<double, DigitalMode>> channels;
  for (const Group& group : groups) {
    if (!group.band.empty() && !bands.insert(group.band).second)
      throw std::runtime_error("A band may be selected only once");
    for (const DecoderChannel& channel : group.channels)
      if (!channels.emplace(channel.frequency, channel.mode).second)
        throw std::runtime_error("Duplicate decoder frequency/mode");
  }
}

std::vector<Group> decoded_groups(const Profile& common) {
  judge_modes(common);
  const std::vector<std::string> bands = selected_bands(common);
  if (only_known_frequencies(common))
    for (const std::string& band : bands)
      if (!has_known_frequency(common, band))
        throw missing_frequency(band,
                                fmt::format("{}, or untick {}.", missing_known_advice(band), band_display_name(band)));
  std::vector<Group> groups;
  for (const std::string& band : bands)
    groups.push_back(selected_band(common, band));
  if (bands.empty())
    for (const std::string& frequency : entries(value_or(common, "frequencies", "")))
      groups.push_back(frequency_group(common, frequency));
  judge_repeats(groups);
  return groups;
}

}  // namespace

std::vector<std::string> selected_bands(const Profile& common) {
  return entries(value_or(common, "bands", ""));
}

void judge_modes(const Profile& common) {
  const auto modes = found(common, "modes");
  if (!decodes_bands(common) || !modes || !base::trim(*modes).empty()) return;
  const bool known = value_or(common, "known-channels", "false") == "true" && !selected_bands(common).empty();
  if (!known && value_or(common, "band-modes", "").empty())
    throw PlanError(PlanCode::no_mode,
                    "Tick at least one mode (FT8, FT4, JS8 or WSPR, or a mode to decode on known frequencies).");
}

bool only_known_frequencies(const Profile& common) {
  const auto modes = found(common, "modes");
  return decodes_bands(common) && value_or(common, "known-channels", "false") == "true" && modes &&
         base::trim(*modes).empty() && value_or(common, "band-modes", "").empty();
}

bool has_known_frequency(const Profile& common, const std::string& band) {
  const sig::KnownFilters filters = sig::parse_known_filters(
      found(common, "known-modes"), found(common, "known-band-modes"), found(common, "fax-channels"));
  return sig::band_has_known_channel(filters, band_preset(band));
}

std::string missing_known_advice(const std::string& band) {
  return fmt::format(
      "{} has no known-frequency channel for the ticked modes. Tick FT8, FT4, JS8 or WSPR, or another known-frequency "
      "mode",
      band_display_name(band));
}

std::string missing_mode_advice(const Profile& common, const std::string& band) {
  const BandPreset* preset = find_band(band);
  if (preset == nullptr) return {};
  const auto modes = modes_of_band(band, found(common, "band-modes"), found(common, "modes"));
  return lacks_frequency(*preset, modes) ? missing_frequency_advice(*preset, modes) : std::string();
}

void judge_number(const Profile& common, std::size_t groups) {
  if (groups > most_groups)
    throw PlanError(
        PlanCode::too_many_groups,
        fmt::format("Too many channel groups ({}); the limit is {}. Untick bands or remove audio receivers.", groups,
                    most_groups));
  if (groups > 0) return;
  const char* words = value_or(common, "mode", "audio") == "receivers"
                          ? "No audio receiver is switched on. Add or enable one on the Audio Receivers tab."
                      : common.contains("frequencies") && !common.contains("bands") ? "Enter at least one frequency."
                                                                                    : "Tick at least one band.";
  throw PlanError(PlanCode::nothing_selected, words);
}

std::vector<Group> selected_groups(const Profile& common) {
  std::vector<Group> groups;
  if (decodes_bands(common)) groups = decoded_groups(common);
  if (value_or(common, "mode", "audio") != "decoder")
    for (Group& consumer : consumer_groups(common))
      groups.push_back(std::move(consumer));
  judge_number(common, groups.size());
  sort_groups(groups);
  return groups;
}

void sort_groups(std::vector<Group>& groups) {
  std::stable_sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) { return a.low < b.low; });
}

}  // namespace launcher
