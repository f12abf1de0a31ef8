// The least disturbing way from what runs to what is wanted. Any thread.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/receiver_launch.h"
#include "options/station.h"

namespace launcher {

/// From the least disturbing to the most.
enum class ChangeClass : std::uint8_t { none, live, retune, restart_some, restart_all };
/// "none", "live", "retune", "restart some", "restart all".
std::string_view change_class_text(ChangeClass change);

/// What changes on one receiver.
struct ReceiverChange {
  std::vector<std::string> changed;  ///< the screen names of the settings that differ
  options::Profile settings;         ///< of the live set, with their new values; an empty one was taken away
  options::Profile hardware;         ///< what a card sends at once, likewise
  bool retune = false;
  bool restart = false;
  bool operator==(const ReceiverChange&) const = default;
};

struct PlanChange {
  ChangeClass change = ChangeClass::none;
  /// What should run. After a retune the captures keep the rates at which they run.
  std::vector<ReceiverLaunch> launches;
  std::map<std::string, ReceiverChange> receivers;  ///< by name, those that change
  std::vector<std::string> changed;                 ///< what a restart of all is for

  /// Settings to be told to running engines, beside a retune or without one.
  [[nodiscard]] bool has_live() const;
};

/// The same change where engines cannot be retuned: those that a retune was for start anew with what it would have
/// brought them.
PlanChange without_retune(PlanChange change);

/// Compares the plan of a station with the launches that run. Throws as plan() does when the station cannot be planned.
PlanChange plan_change(const options::Station& station, const std::vector<ReceiverLaunch>& running);

}  // namespace launcher
