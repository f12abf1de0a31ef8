#include "launcher/band_choices.h"

#include <algorithm>

#include <fmt/format.h>

#include "launcher/placement/memory.h"
#include "launcher/placement/names.h"
#include "launcher/placement/planner.h"
#include "launcher/placement/selection.h"
#include "launcher/receiver_overlay.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;
using options::Station;

PlanError plain_error(const std::exception& error) {
  return {PlanCode::other, *error.what() != '\0' ? error.what() : "Receiver planning failed"};
}

/// The station as its unticked bands are judged. Where no mode at all is ticked, nothing could be ticked any more, so
/// they are judged with the first mode that the operator could tick.
Station with_some_mode(Station station) {
  try {
    judge_modes(station.common);
  } catch (const PlanError&) {
    station.common.erase("modes");
  }
  return station;
}

class Choosing {
 public:
  explicit Choosing(const Station& station) : station_(station), judged_(with_some_mode(station)) {
    for (std::size_t row = 0; row < band_presets.size(); ++row)
      answer_.bands[row].band = band_presets[row].name;
    for (const std::string& text : selected_bands(station.common))
      if (const BandPreset* preset = find_band(text))
        answer_.bands[static_cast<std::size_t>(preset - band_presets.data())].ticked = true;
    for (BandChoice& band : answer_.bands) {
      band.allowed = band.ticked;
      if (const auto pin = station.assignments.find(band.band); pin != station.assignments.end())
        band.assigned = pin->second;
    }
  }

  BandChoices choose() {
    try {
      planner_.emplace(judged_);
    } catch (const PlanError& error) {
      answer_.error = error;
    } catch (const std::exception& error) {
      answer_.error = plain_error(error);
    }
    list_receivers();
    if (!planner_) mark_unusable(*answer_.error);
    if (!planner_) {
      const bool none = answer_.error->code == PlanCode::no_receiver;
      const std::string reason = none ? "Tick a receiver to see which bands it can cover." : answer_.error->text();
      refuse_unticked(reason);
      for (BandChoice& band : answer_.bands)
        if (none && band.ticked) band.reason = reason;
      return std::move(answer_);
    }
    note_pins();
    if (places_bands())
      choose_bands();
    else
      choose_without_bands();
    return std::move(answer_);
  }

 private:
  [[nodiscard]] bool places_bands() const {
    const std::string_view mode = value_or(station_.common, "mode", "audio");
    return mode == "decoder" || mode == "hybrid";
  }

  void list_receivers();
  void mark_unusable(const PlanError& error);
  void note_pins();
  void add_note(const std::string& group, const std::string& name, const std::string& opening);
  void refuse_unticked(const std::string& reason);
  void choose_without_bands();
  void choose_bands();
  [[nodiscard]] bool gather_selection();
  bool place_selection();
  void show_placement(const GroupTable& table, const std::vector<Mask>& placement);
  void mark_broken(const GroupTable& table);
  void keep_beside_bands();
  void judge_unticked(BandChoice& band);
  void judge_added(BandChoice& band, Group group);

  const Station& station_;
  const Station judged_;
  BandChoices answer_;
  std::optional<Planner> planner_;
  std::vector<Group> groups_;  ///< of the selection, sorted
  Carried carried_;            ///< its placement
  std::vector<Group> beside_;  ///< what stays of it when a band is ticked, sorted
  Carried beside_carried_;     ///< where that is
  bool placed_ = false;        ///< it has one, or there is nothing to be placed
};

void Choosing::list_receivers() {
  for (const ReceiverProfile& receiver : station_.receivers) {
    if (!receiver.enabled) continue;
    ReceiverChoice choice;
    choice.serial = receiver.serial;
    choice.label = receiver.label();
    choice.capability = capability_of(station_.common, receiver);
    choice.rate = choice.capability.set_rate;
    choice.span = choice.capability.set_span;
    if (!choice.capability.unusable_reason.empty())
      choice.state = "Cannot be used: " + choice.capability.unusable_reason;
    answer_.receivers.push_back(std::move(choice));
  }
  std::sort(answer_.receivers.begin(), answer_.receivers.end(),
            [](const auto& a, const auto& b) { return a.serial < b.serial; });
}

/// A receiver whose own settings already stand against it, before anything is placed.
void Choosing::mark_unusable(const PlanError& error) {
  if (error.code != PlanCode::unusable_receiver) return;
  for (ReceiverChoice& receiver : answer_.receivers)
    if (receiver.serial == error.serial) receiver.state = "Cannot be used: " + error.text();
}

void Choosing::add_note(const std::string& group, const std::string& name, const std::string& opening) {
  const auto pin = station_.assignments.find(group);
  if (pin == station_.assignments.end() || pin->second.empty() || planner_->pins().contains(group)) return;
  const auto listed = std::find_if(station_.receivers.begin(), station_.receivers.end(),
                                   [&](const auto& receiver) { return receiver.serial == pin->second; });
  PlanNote note;
  note.code = PlanCode::assignment;
  note.band = group;
  note.serial = pin->second;
  note.text = listed != station_.receivers.end()
                  ? fmt::format(
                        "{} is assigned to {}, which is not ticked, so it is placed automatically. Tick that "
                        "receiver or set {} to Automatic.",
                        opening, listed->label(), name)
                  : fmt::format(
                        "{} is assigned to a receiver that is no longer listed ({}), so it is placed "
                        "automatically. Set {} to Automatic.",
                        opening, pin->second, name);
  answer_.notes.push_back(std::move(note));
}

void Choosing::note_pins() {
  const std::string_view mode = value_or(station_.common, "mode", "audio");
  if (places_bands())
    for (const BandChoice& band : answer_.bands)
      if (band.ticked) add_note(band.band, band_display_name(band.band), band_display_name(band.band));
  if (mode != "receivers" && mode != "hybrid") return;
  try {
    for (const Group& group : consumer_groups(station_.common))
      add_note(group.name(), spoken_name(group), opening_name(group));
  } catch (const std::exception&) {
    // The selection will be refused for it.
  }
}

void Choosing::refuse_unticked(const std::string& reason) {
  for (BandChoice& band : answer_.bands)
    if (!band.ticked) {
      band.allowed = false;
      band.reason = reason;
    }
}

/// In the modes that only listen, bands wait for the operator to change the mode.
void Choosing::choose_without_bands() {
  for (BandChoice& band : answer_.bands)
    band.allowed = true;
  try {
    if (value_or(station_.common, "mode", "audio") == "audio") {
      for (const ReceiverLaunch& launch : planner_->audio_launch())
        for (ReceiverChoice& receiver : answer_.receivers)
          if (receiver.serial == launch.name) {
            receiver.rate = launch.capture.sample_rate;
            receiver.span = launch.capture.usable_span();
          }
      return;
    }
    groups_ = selected_groups(station_.common);
    place_selection();
  } catch (const PlanError& error) {
    answer_.error = error;
  } catch (const std::exception& error) {
    answer_.error = plain_error(error);
  }
}

bool Choosing::gather_selection() {
  try {
    groups_ = selected_groups(station_.common);
    return true;
  } catch (const PlanError& error) {
    answer_.error = error;
    for (BandChoice& band : answer_.bands)
      if (error.code == PlanCode::missing_frequency && band.band == error.band) band.reason = error.text();
  } catch (const std::exception& error) {
    answer_.error = plain_error(error);
  }
  return false;
}

void Choosing::choose_bands() {
  if (gather_selection())
    placed_ = place_selection();
  else
    placed_ = answer_.error->code == PlanCode::nothing_selected || answer_.error->code == PlanCode::no_mode;
  if (!placed_) return refuse_unticked("Not available until the ticked bands fit. " + answer_.error->text());
  keep_beside_bands();
  for (BandChoice& band : answer_.bands)
    if (!band.ticked) judge_unticked(band);
}

/// Ticking a band takes typed frequencies away.
void Choosing::keep_beside_bands() {
  beside_carried_.masks.assign(carried_.masks.size(), 0);
  for (std::size_t index = 0; index < groups_.size(); ++index) {
    if (!groups_[index].frequency.empty()) continue;
    for (std::size_t slot = 0; slot < carried_.masks.size(); ++slot)
      if ((carried_.masks[slot] >> index & 1U) != 0) beside_carried_.masks[slot] |= Mask(1) << beside_.size();
    beside_.push_back(groups_[index]);
  }
}

bool Choosing::place_selection() {
  const GroupTable table(groups_);
  mark_broken(table);
  carried_.masks = solve(planner_->slots(), table, planner_->pins());
  if (carried_.empty()) {
    answer_.error = planner_->diagnose(table, planner_->pins(), -1, {});
    for (BandChoice& band : answer_.bands)
      if (band.ticked) band.reason = answer_.error->text();
    return false;
  }
  show_placement(table, carried_.masks);
  return true;
}

void Choosing::show_placement(const GroupTable& table, const std::vector<Mask>& placement) {
  for (std::size_t slot = 0; slot < placement.size(); ++slot) {
    ReceiverChoice& choice = answer_.receivers[slot];
    if (placement[slot] == 0) {
      if (choice.state.empty()) choice.state = "Not needed for the ticked bands";
      continue;
    }
    const ReceiverLaunch launch =
        expand(station_.common, planner_->slots()[slot]->receiver(), table.groups(), placement[slot]);
    choice.groups = launch.groups;
    choice.rate = launch.capture.sample_rate;
    choice.span = launch.capture.usable_span();
    for (BandChoice& band : answer_.bands)
      if (std::find(launch.groups.begin(), launch.groups.end(), band.band) != launch.groups.end())
        band.carrier = choice.serial;
  }
}

/// A receiver that refuses every group for a reason of its own is broken, not full.
void Choosing::mark_broken(const GroupTable& table) {
  for (std::size_t index = 0; index < planner_->slots().size(); ++index) {
    Slot& slot = *planner_->slots()[index];
    bool broken = true;
    for (std::size_t group = 0; group < table.size() && broken; ++group)
      broken = slot.fit(table, Mask(1) << group) == FitStatus::refused;
    if (broken) answer_.receivers[index].state = "Cannot be used: " + slot.reason(table, 1);
  }
}

void Choosing::judge_unticked(BandChoice& band) {
  const Profile& common = judged_.common;
  const auto refuse = [&band](const std::string& reason) { band.reason = reason; };
  const auto wants_mode = [&](const std::string& advice) {
    band.lacks_mode = true;
    refuse(advice + " to use it.");
  };
  if (only_known_frequencies(common) && !has_known_frequency(common, band.band))
    return wants_mode(missing_known_advice(band.band));
  try {
    judge_added(band, band_group(common, band.band));
  } catch (const std::exception& error) {
    const std::string advice = missing_mode_advice(common, band.band);
    if (advice.empty()) return refuse(error.what());
    wants_mode(advice);
  }
}

void Choosing::judge_added(BandChoice& band, Group group) {
  std::vector<Group> groups = beside_;
  groups.push_back(std::move(group));
  judge_number(station_.common, groups.size());
  sort_groups(groups);
  const auto added = std::find_if(groups.begin(), groups.end(), [&](const Group& g) { return g.band == band.band; });
  const auto index = static_cast<int>(added - groups.begin());
  const GroupTable table(std::move(groups));
  if (!solve(planner_->slots(), table, planner_->pins()).empty()) {
    band.allowed = true;
    return;
  }
  // The lines of a diagnosis name the groups by their place in its table.
  Carried shifted;
  const Mask below = (Mask(1) << index) - 1;
  for (const Mask mask : beside_carried_.masks)
    shifted.masks.push_back((mask & below) | (mask & ~below) << 1);
  band.refusal = planner_->diagnose(table, planner_->pins(), index, shifted);
  band.reason = band.refusal->text();
}

}  // namespace

BandChoices band_choices(const Station& station) {
  constexpr std::size_t remembered = 16;
  static Memory<BandChoices> memory(remembered);
  return memory.get(station, band_choices_uncached);
}

BandChoices band_choices_uncached(const Station& station) {
  return Choosing(station).choose();
}

}  // namespace launcher
