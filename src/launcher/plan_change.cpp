#include "launcher/plan_change.h"

#include <algorithm>
#include <array>
#include <set>

#include "launcher/planner.h"
#include "launcher/receiver_overlay.h"
#include "launcher/retune_plan.h"
#include "launcher/setting_kinds.h"
#include "launcher/setting_names.h"

namespace launcher {
namespace {

using Launches = std::vector<ReceiverLaunch>;

constexpr std::array<std::string_view, 5> class_texts{"none", "live", "retune", "restart some", "restart all"};

Family family_of(const ReceiverLaunch& launch) {
  return parse_family(value_or(launch.profile, "backend", "sdrplay")).value_or(Family::sdrplay);
}

/// A receiver without bands listens only, whatever the station's mode.
std::string_view reception_mode(const Launches& launches) {
  for (const ReceiverLaunch& launch : launches)
    if (const auto mode = value_or(launch.profile, "mode", "audio"); mode != "receivers") return mode;
  return "receivers";
}

bool same_receivers(const Launches& running, const Launches& wanted) {
  const auto names = [](const Launches& launches) {
    std::set<std::string> all;
    for (const ReceiverLaunch& launch : launches)
      all.insert(launch.name);
    return all;
  };
  return names(running) == names(wanted);
}

/// Keys that one of the profiles has and the other has not, or otherwise.
std::set<std::string> differing_keys(const options::Profile& from, const options::Profile& to) {
  std::set<std::string> keys;
  for (const auto& [key, value] : from)
    if (const auto other = to.find(key); other == to.end() || other->second != value) keys.insert(key);
  for (const auto& [key, value] : to)
    if (!from.contains(key)) keys.insert(key);
  return keys;
}

class Comparison {
 public:
  Comparison(const options::Station& station, const Launches& running) : station_(station), running_(running) {
    result_.launches = plan(station);
  }

  PlanChange compare() {
    if (reception_mode(running_) != reception_mode(result_.launches)) return restart_all({"mode"});
    if (!same_receivers(running_, result_.launches)) return restart_all({"which receivers are used"});
    for (const ReceiverLaunch& launch : running_)
      compare_receiver(launch);
    if (!station_wide_.empty())
      return restart_all(std::vector<std::string>(station_wide_.begin(), station_wide_.end()));
    plan_retune();
    classify();
    return std::move(result_);
  }

 private:
  PlanChange restart_all(std::vector<std::string> changed) {
    result_.change = ChangeClass::restart_all;
    result_.changed = std::move(changed);
    return std::move(result_);
  }

  [[nodiscard]] ReceiverLaunch& wanted(const std::string& name) {
    return *std::find_if(result_.launches.begin(), result_.launches.end(),
                         [&](const auto& launch) { return launch.name == name; });
  }

  void compare_receiver(const ReceiverLaunch& running) {
    ReceiverLaunch& wish = wanted(running.name);
    keep_control(wish, running);
    const Family family = family_of(wish);
    ReceiverChange change;
    for (const std::string& key : differing_keys(running.profile, wish.profile)) {
      const auto kind = setting_kind(key, family);
      if (kind == SettingKind::unseen) continue;
      const std::string name(setting_name(key));
      // A receiver that changes between decoding and listening has other keys of the station's than before.
      if (kind == SettingKind::restart_all && key != "mode") station_wide_.insert(name);
      change.changed.push_back(name);
      note(change, key, kind == SettingKind::restart_all ? SettingKind::restart_receiver : kind, running, wish);
    }
    if (change != ReceiverChange{}) result_.receivers.emplace(running.name, std::move(change));
  }

  static void note(ReceiverChange& change, const std::string& key, SettingKind kind, const ReceiverLaunch& running,
                   const ReceiverLaunch& wish) {
    const std::string value(value_or(wish.profile, key.c_str(), ""));
    const bool deaf = running.control_path.empty();
    if (deaf || kind == SettingKind::restart_receiver)
      change.restart = true;
    else if (kind == SettingKind::live)
      change.settings[key] = value;
    else if (kind == SettingKind::hardware && !value.empty())
      change.hardware[key] = value;
    else if (kind == SettingKind::hardware)
      change.restart = true;  // back to what the engine takes by itself, which has no words on the socket
    else
      change.retune = true;
  }

  /// A retune is asked of all receivers at once; what cannot be had that way takes a restart of those that differ.
  void plan_retune() {
    const auto retunes = [](const auto& entry) { return entry.second.retune && !entry.second.restart; };
    if (std::none_of(result_.receivers.begin(), result_.receivers.end(), retunes)) return;
    const bool restarts = std::any_of(result_.receivers.begin(), result_.receivers.end(),
                                      [](const auto& entry) { return entry.second.restart; });
    try {
      if (!restarts) {
        result_.launches = retune_plan(station_, running_);
        return;
      }
    } catch (const RetuneRefusal&) {
    }
    for (auto& [name, change] : result_.receivers)
      if (change.retune) change.restart = true;
  }

  void classify() {
    for (const auto& [name, change] : result_.receivers) {
      const ChangeClass own = change.restart  ? ChangeClass::restart_some
                              : change.retune ? ChangeClass::retune
                                              : ChangeClass::live;
      result_.change = std::max(result_.change, own);
    }
  }

  const options::Station& station_;
  const Launches& running_;
  std::set<std::string> station_wide_;
  PlanChange result_;
};

}  // namespace

std::string_view change_class_text(ChangeClass change) {
  return class_texts.at(static_cast<std::size_t>(change));
}

bool PlanChange::has_live() const {
  return std::any_of(receivers.begin(), receivers.end(), [](const auto& entry) {
    return !entry.second.restart && (!entry.second.settings.empty() || !entry.second.hardware.empty());
  });
}

PlanChange without_retune(PlanChange change) {
  for (auto& [name, receiver] : change.receivers)
    if (receiver.retune) receiver.restart = true;
  if (change.change == ChangeClass::retune) change.change = ChangeClass::restart_some;
  return change;
}

PlanChange plan_change(const options::Station& station, const Launches& running) {
  return Comparison(station, running).compare();
}

}  // namespace launcher
