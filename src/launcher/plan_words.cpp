#include "launcher/plan_words.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/planner.h"
#include "launcher/setting_names.h"

namespace launcher {
namespace {

using options::Station;

PlanFix open_tab(PlanFix::Kind kind, const char* label) {
  PlanFix fix;
  fix.kind = kind;
  fix.label = label;
  return fix;
}

/// A listening channel's pin is a matter of its own tab.
PlanFix pin_fix(const std::string& group, const Station& station) {
  if (group.starts_with('@')) return open_tab(PlanFix::Kind::open_audio_receivers, "Open Audio Receivers");
  PlanFix fix;
  fix.kind = PlanFix::Kind::pin;
  fix.label = fmt::format("Set {} to Automatic", group_name(group, station));
  fix.group = group;
  return fix;
}

PlanFix setting_fix(const std::string& serial, const std::string& key) {
  PlanFix fix;
  fix.kind = PlanFix::Kind::receiver_setting;
  fix.label = key == "sample-rate" ? fmt::format("Set {} to Automatic", setting_name(key))
                                   : fmt::format("Clear {}", setting_name(key));
  fix.serial = serial;
  fix.key = key;
  return fix;
}

PlanFix unusable_fix(const PlanError& error, const Station& station) {
  PlanFix clear = setting_fix(error.serial, error.key);
  // A cure that was not proven by the diagnosis is tried before it is offered.
  if (error.key == "bandwidth" && can_be_planned(apply_fix(station, clear))) return clear;
  return open_tab(PlanFix::Kind::open_sdr_config, "Open SDR Config");
}

/// Other receivers may have reasons of their own: what clears the first one's is tried before it is offered.
std::optional<PlanFix> reach_fix(const PlanError& error, Station station) {
  if (error.serial.empty() || error.key.empty()) return std::nullopt;
  PlanFix clear = setting_fix(error.serial, error.key);
  std::string& bands = station.common["bands"];
  const auto selected = base::split(bands, ',');
  const bool asked_for = std::none_of(selected.begin(), selected.end(), [&](const auto entry) {
    const BandPreset* const band = find_band(entry);
    return band != nullptr && band->name == error.band;
  });
  if (asked_for && find_band(error.band) != nullptr) bands += (bands.empty() ? "" : ",") + error.band;
  if (!can_be_planned(apply_fix(station, clear))) return std::nullopt;
  return clear;
}

/// Where nothing is ticked yet, the unticked bands are judged all the same.
bool judges_unticked(const BandChoices& choices) {
  return !choices.error || choices.error->code == PlanCode::nothing_selected ||
         choices.error->code == PlanCode::no_mode;
}

/// Why the band cannot be added, without what is said of this band alone: what several bands can have in common.
std::string common_reason(const BandChoice& band) {
  const std::string name = band_display_name(band.band);
  if (band.refusal && band.refusal->code == PlanCode::capacity) return "another receiver is needed.";
  std::string reason = band.reason;
  for (const auto& [head, kept] :
       {std::pair(name + " does not fit: ", ""), {name + " is out of reach: ", "out of reach: "}})
    if (reason.starts_with(head)) reason.replace(0, head.size(), kept);
  if (!band.refusal) return reason;
  const auto advice = reason.rfind(". ");
  if (advice != std::string::npos) reason.erase(advice + 1);
  return reason;
}

std::vector<std::string> refused_lines(const BandChoices& choices) {
  struct Refused {
    std::vector<std::string> bands;
    std::string reason;
  };
  std::vector<Refused> groups;
  for (const BandChoice& band : choices.bands) {
    if (band.ticked || band.allowed) continue;
    const std::string reason = common_reason(band);
    auto same =
        std::find_if(groups.begin(), groups.end(), [&](const Refused& group) { return group.reason == reason; });
    if (same == groups.end()) same = groups.insert(groups.end(), {{}, reason});
    same->bands.push_back(band_display_name(band.band));
  }
  std::vector<std::string> lines;
  lines.reserve(groups.size());
  for (const Refused& group : groups)
    lines.push_back(fmt::format("{} cannot be added: {}", base::enumerate(group.bands, "and"), group.reason));
  return lines;
}

std::string sharing_line(const options::ReceiverProfile& receiver) {
  return fmt::format("{} is in use by Corvane. Free it in Corvane's settings, or untick it here.", receiver.label());
}

bool is_shared_away(const options::ReceiverProfile& receiver, const DeviceStatuses& statuses) {
  const auto found = statuses.find(receiver.serial);
  return found != statuses.end() && found->second == DeviceStatus::used_by_sharing;
}

}  // namespace

std::optional<PlanFix> plan_fix(const PlanError& error, const Station& station) {
  switch (error.code) {
    case PlanCode::unusable_receiver:
      return unusable_fix(error, station);
    case PlanCode::narrowed_capture:
      if (error.key.empty()) return std::nullopt;
      return setting_fix(error.serial, error.key);
    case PlanCode::out_of_reach:
      return reach_fix(error, station);
    case PlanCode::assignment:
      if (error.serial.empty()) return std::nullopt;
      return pin_fix(error.band, station);
    case PlanCode::consumers:
      return open_tab(PlanFix::Kind::open_audio_receivers, "Open Audio Receivers");
    default:
      return std::nullopt;
  }
}

std::optional<PlanFix> choices_fix(const BandChoices& choices, const Station& station) {
  if (choices.error && !judges_unticked(choices)) return plan_fix(*choices.error, station);
  for (const BandChoice& band : choices.bands) {
    if (!band.refusal) continue;
    if (auto fix = plan_fix(*band.refusal, station)) return fix;
  }
  for (const PlanNote& note : choices.notes)
    return pin_fix(note.band, station);
  return std::nullopt;
}

Station apply_fix(Station station, const PlanFix& fix) {
  if (fix.kind == PlanFix::Kind::pin) station.assignments.erase(fix.group);
  if (fix.kind != PlanFix::Kind::receiver_setting) return station;
  for (options::ReceiverProfile& receiver : station.receivers) {
    if (receiver.serial != fix.serial) continue;
    // An empty value of its own takes a common one away.
    if (station.common.contains(fix.key))
      receiver.settings[fix.key].clear();
    else
      receiver.settings.erase(fix.key);
  }
  return station;
}

std::string error_text(const PlanError& error, const Station& station, const DeviceStatuses& statuses) {
  if (error.code == PlanCode::absent_receiver)
    for (const options::ReceiverProfile& receiver : station.receivers)
      if (receiver.serial == error.serial && is_shared_away(receiver, statuses)) return sharing_line(receiver);
  return error.text();
}

std::vector<std::string> notice_lines(const BandChoices& choices, const Station& station,
                                      const DeviceStatuses& statuses) {
  std::vector<std::string> lines;
  if (judges_unticked(choices)) lines = refused_lines(choices);
  if (choices.error) lines.insert(lines.begin(), error_text(*choices.error, station, statuses));
  for (const options::ReceiverProfile& receiver : station.receivers) {
    const std::string line = sharing_line(receiver);
    if (receiver.enabled && is_shared_away(receiver, statuses) &&
        std::find(lines.begin(), lines.end(), line) == lines.end())
      lines.push_back(line);
  }
  for (const PlanNote& note : choices.notes)
    lines.push_back(note.text);
  if (!lines.empty()) return lines;
  const auto used = std::count_if(choices.receivers.begin(), choices.receivers.end(),
                                  [](const ReceiverChoice& receiver) { return receiver.state.empty(); });
  return {fmt::format("Ready. Selected bands fit {} receiver(s).", used)};
}

std::string band_tooltip(const BandChoice& band, const BandChoices& choices) {
  if (!band.reason.empty()) return band.reason;
  const auto carrier = std::find_if(choices.receivers.begin(), choices.receivers.end(),
                                    [&](const ReceiverChoice& receiver) { return receiver.serial == band.carrier; });
  if (band.carrier.empty() || carrier == choices.receivers.end()) return {};
  return fmt::format("{} is on {} ({}).", band_display_name(band.band), carrier->label,
                     band.assigned == band.carrier ? "assigned" : "automatic");
}

std::string group_name(const std::string& group, const Station& station) {
  if (group.starts_with('@')) {
    const std::string id = group.substr(1);
    return (station.common.contains("analysis." + id) && !station.common.contains("audio." + id) ? "analysis channel "
                                                                                                 : "audio receiver ") +
           id;
  }
  return find_band(group) != nullptr ? band_display_name(group) : group;
}

}  // namespace launcher
