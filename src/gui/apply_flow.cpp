#include "gui/apply_flow.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "launcher/receiver_overlay.h"
#include "launcher/retune_plan.h"
#include "launcher/setting_kinds.h"
#include "receiver/control_requests.h"

namespace gui {
namespace {

using launcher::ChangeClass;
using launcher::PlanChange;
using launcher::ReceiverLaunch;
using receiver::RetuneOutcome;
using receiver::SettingsOutcome;

receiver::RetuneTarget retune_target(const ReceiverLaunch& launch) {
  const std::string known = launcher::known_selection_text(launch);
  return {launch.name, launch.control_path,
          receiver::retune_request(receiver::RetuneStep::check, launch.capture.center, launch.channels, known),
          receiver::retune_request(receiver::RetuneStep::apply, launch.capture.center, launch.channels, known)};
}

std::vector<std::string> names_of(const std::vector<ReceiverLaunch>& launches) {
  std::vector<std::string> names;
  names.reserve(launches.size());
  for (const ReceiverLaunch& launch : launches)
    names.push_back(launch.name);
  return names;
}

/// A running launch with the selection of a planned one. A retune carries nothing else: what else the plan has of newer
/// settings is not the engine's yet.
ReceiverLaunch with_selection(const ReceiverLaunch& running, ReceiverLaunch planned) {
  const auto family = launcher::parse_family(launcher::value_or(running.profile, "backend", "sdrplay"));
  const auto selects = [&](const auto& entry) {
    return launcher::setting_kind(entry.first, family.value_or(launcher::Family::sdrplay)) ==
           launcher::SettingKind::selection;
  };
  options::Profile profile = running.profile;
  std::erase_if(profile, selects);
  std::copy_if(planned.profile.begin(), planned.profile.end(), std::inserter(profile, profile.end()), selects);
  planned.profile = std::move(profile);
  return planned;
}

}  // namespace

ApplyFlow::ApplyFlow(ApplySurroundings surroundings)
    : surroundings_(std::move(surroundings)), live_(live_hooks(), surroundings_.edit_delay) {}

ReceiverLaunch* ApplyFlow::find_launch(const std::string& name) {
  auto& launches = surroundings_.launches;
  const auto found =
      std::find_if(launches.begin(), launches.end(), [&](const auto& each) { return each.name == name; });
  return found == launches.end() ? nullptr : &*found;
}

unsigned ApplyFlow::engine_of(const std::string& name) const {
  for (const auto& child : surroundings_.supervisor.children())
    if (child->name == name && !child->temporary && !child->exit_seen && !child->stop_requested) return child->number;
  return 0;
}

bool ApplyFlow::is_receiving() const {
  const auto& supervisor = surroundings_.supervisor;
  const auto& children = supervisor.children();
  return !supervisor.pending_restarts().empty() || std::any_of(children.begin(), children.end(), [](const auto& child) {
    return !child->temporary && !child->stop_requested;
  });
}

std::vector<ReceiverLaunch> ApplyFlow::running_launches() const {
  std::vector<ReceiverLaunch> running;
  for (const ReceiverLaunch& launch : surroundings_.launches)
    if (is_running(launch.name)) running.push_back(launch);
  return running;
}

void ApplyFlow::begin_operation(const std::vector<std::string>& names, const std::string& status,
                                const std::string& text) {
  busy_ = true;
  engines_.clear();
  for (const std::string& name : names)
    engines_[name] = engine_of(name);
  live_.hold({names.begin(), names.end()});
  surroundings_.report(text, {});
  surroundings_.refresh();
  if (!status.empty()) surroundings_.show_status(status);
}

ReceiverLaunch* ApplyFlow::find_told(const std::string& name, std::string& failure) {
  ReceiverLaunch* const launch = find_launch(name);
  const unsigned engine = engine_of(name);
  if (launch == nullptr || engine == 0 || engine == engines_.at(name)) return launch;
  if (failure.empty())
    failure = launch->label() + " has started again meanwhile. Apply and Save once more tells it the new settings.";
  return nullptr;
}

// --- Apply and Save ---

void ApplyFlow::apply_and_save() {
  const receiver::Supervisor& supervisor = surroundings_.supervisor;
  const bool restarting = !supervisor.restart_names().empty() || supervisor.restart_all();
  if (busy_ || live_.sending() || surroundings_.other_operation() || restarting) {
    const char* words = "Wait for the current receiver update to finish, then Apply and Save.";
    surroundings_.report(words, {});
    return surroundings_.show_status(words);
  }
  options::Session& session = surroundings_.session;
  const bool receiving = is_receiving();
  PlanChange change;
  try {
    if (receiving) change = launcher::plan_change(session.station(), surroundings_.launches);
    // A retune is asked of engines that run; one that waits to start again takes it with its profile.
    if (running_launches().size() < surroundings_.launches.size()) change = launcher::without_retune(std::move(change));
  } catch (const std::exception& error) {
    return surroundings_.show_error(error.what());
  }
  try {
    session.save();
    session.save_opened();
  } catch (const std::exception& error) {
    return surroundings_.show_error(fmt::format("Could not save session settings: {}", error.what()));
  }
  if (receiving) return apply_change(change);
  session.store_fingerprint();
  surroundings_.refresh();
  surroundings_.report("Settings saved. The receivers use them when they start.", {});
}

void ApplyFlow::apply_change(const PlanChange& change) {
  switch (change.change) {
    case ChangeClass::none:
      surroundings_.session.store_fingerprint();
      surroundings_.report("Settings saved; the running receivers already use them.", {});
      return surroundings_.refresh();
    case ChangeClass::live:
      return apply_live(change);
    case ChangeClass::retune:
      return change.has_live() ? apply_live(change) : retune();
    case ChangeClass::restart_some:
      return restart_some(change);
    case ChangeClass::restart_all:
      if (const std::string refusal = surroundings_.start_refusal(); !refusal.empty())
        return surroundings_.show_error(refusal);
      surroundings_.session.store_fingerprint();
      surroundings_.report(fmt::format("Restarting the receivers with the new settings (changed: {}).",
                                       base::join(change.changed, ", ")),
                           {});
      surroundings_.supervisor.restart_all_receivers();
      return surroundings_.refresh();
  }
}

void ApplyFlow::restart_some(const PlanChange& change) {
  for (const auto& [name, receiver] : change.receivers) {
    if (!receiver.restart) continue;
    const auto wanted = std::find_if(change.launches.begin(), change.launches.end(),
                                     [&name = name](const auto& launch) { return launch.name == name; });
    *find_launch(name) = *wanted;
    live_.started(*wanted);
    surroundings_.supervisor.restart_changed(name, base::join(receiver.changed, ", "));
  }
  surroundings_.launches_changed();
  if (change.has_live()) return apply_live(change);
  surroundings_.session.store_fingerprint();
  surroundings_.refresh();
}

// --- Live settings of the station ---

void ApplyFlow::apply_live(const PlanChange& change) {
  std::vector<receiver::SettingsTarget> targets;
  std::vector<std::string> names;
  SettingsOutcome untold;
  for (const auto& [name, receiver] : change.receivers) {
    const ReceiverLaunch* const launch = find_launch(name);
    if (receiver.restart || (receiver.settings.empty() && receiver.hardware.empty()) || launch == nullptr) continue;
    if (is_running(name)) {
      targets.push_back({name, launch->control_path, receiver.settings, receiver.hardware});
      names.push_back(name);
    } else {  // it takes them when it starts
      untold.confirmed[name] = receiver.settings;
      untold.confirmed[name].insert(receiver.hardware.begin(), receiver.hardware.end());
    }
  }
  // A retune that follows must find no request of a card out.
  if (change.change == ChangeClass::retune) names = names_of(surroundings_.launches);
  begin_operation(names, {}, "Applying changed settings to the running receivers; they keep running.");
  for (const auto& [name, settings] : untold.confirmed)
    take_settings(*find_launch(name), settings);
  base::run_in_background(
      alive_.watch(),
      [targets, transport = surroundings_.transport] { return receiver::apply_settings(targets, transport); },
      [this, change](const base::Outcome<SettingsOutcome>& outcome) {
        settings_applied(change, outcome.value.value_or(SettingsOutcome{{}, outcome.error}));
      });
}

void ApplyFlow::take_settings(ReceiverLaunch& launch, const receiver::Settings& settings) {
  for (const auto& [key, value] : settings)
    if (value.empty())
      launch.profile.erase(key);
    else
      launch.profile[key] = value;
  live_.started(launch);
  surroundings_.supervisor.update_restart_profile(launch.name);
}

void ApplyFlow::settings_applied(const PlanChange& change, SettingsOutcome outcome) {
  busy_ = false;
  for (const auto& [name, confirmed] : outcome.confirmed)
    if (ReceiverLaunch* const launch = find_told(name, outcome.failure)) {
      take_settings(*launch, confirmed);
      save_rounded(name, change.receivers.at(name).hardware, confirmed);
    }
  surroundings_.refresh();
  if (!surroundings_.supervisor.closing()) after_settings(change, outcome.failure);
  if (!busy_) live_.hold({});
}

void ApplyFlow::after_settings(const PlanChange& change, const std::string& failure) {
  if (!failure.empty()) return surroundings_.show_error(failure);
  if (change.change == ChangeClass::retune) return retune();
  surroundings_.session.store_fingerprint();
  surroundings_.refresh();
  surroundings_.show_status("Settings applied; receivers continue running.");
}

void ApplyFlow::save_rounded(const std::string& name, const receiver::Settings& asked,
                             const receiver::Settings& confirmed) {
  for (const auto& [key, value] : asked) {
    const auto taken = confirmed.find(key);
    if (taken == confirmed.end() || taken->second == value) continue;
    const std::string own = surroundings_.session.value(fmt::format("receiver.{}.{}", name, key));
    if ((own.empty() ? surroundings_.session.value(key) : own) == value)
      surroundings_.set_setting(name, key, taken->second);
  }
}

// --- Retune ---

void ApplyFlow::retune() {
  if (busy_ || surroundings_.other_operation()) return;
  std::vector<ReceiverLaunch> changed;
  std::vector<receiver::RetuneTarget> targets;
  try {
    for (ReceiverLaunch& planned : launcher::retune_plan(surroundings_.session.station(), running_launches())) {
      const ReceiverLaunch& now = *find_launch(planned.name);
      ReceiverLaunch launch = with_selection(now, std::move(planned));
      if (now.profile == launch.profile && now.capture == launch.capture) continue;
      targets.push_back(retune_target(launch));
      changed.push_back(std::move(launch));
    }
  } catch (const std::exception& error) {
    return surroundings_.show_error(error.what());
  }
  begin_operation(names_of(changed), "Applying selected bands to running receivers…",
                  "Applying selected bands to running receivers.");
  base::run_in_background(
      alive_.watch(),
      [targets, transport = surroundings_.transport] { return receiver::retune_receivers(targets, transport); },
      [this, changed](const base::Outcome<RetuneOutcome>& outcome) {
        retuned(changed, outcome.value.value_or(RetuneOutcome{{}, outcome.error}));
      });
}

void ApplyFlow::retuned(const std::vector<ReceiverLaunch>& targets, RetuneOutcome outcome) {
  busy_ = false;
  for (const ReceiverLaunch& launch : targets) {
    const bool done =
        std::find(outcome.succeeded.begin(), outcome.succeeded.end(), launch.name) != outcome.succeeded.end();
    ReceiverLaunch* const running = done ? find_told(launch.name, outcome.failure) : nullptr;
    if (running == nullptr) continue;
    *running = with_selection(*running, launch);
    live_.started(*running);
    surroundings_.supervisor.update_restart_profile(launch.name);
    surroundings_.report(fmt::format("Retuned to selected bands, capture centre {:.6f} MHz; partial decode intervals "
                                     "discarded.",
                                     launch.capture.center / 1e6),
                         launch.label());
  }
  live_.hold({});
  if (surroundings_.supervisor.closing()) return;
  if (!outcome.succeeded.empty()) surroundings_.launches_changed();
  if (outcome.failure.empty()) surroundings_.session.store_fingerprint();
  surroundings_.refresh();
  if (outcome.failure.empty()) {
    surroundings_.show_status("Retuned to selected bands; receivers continue running.");
  } else {
    surroundings_.show_error(outcome.failure);
    surroundings_.show_status(outcome.failure);
  }
  try {
    surroundings_.session.save();
  } catch (const std::exception& error) {
    surroundings_.report(fmt::format("Could not save retuned session: {}", error.what()), {});
  }
}

bool ApplyFlow::differs_from_running() const {
  try {
    return launcher::plan_change(surroundings_.session.station(), surroundings_.launches).change != ChangeClass::none;
  } catch (const std::exception&) {
    return true;
  }
}

// --- A card of a running receiver ---

receiver::LiveSettingsHooks ApplyFlow::live_hooks() {
  receiver::LiveSettingsHooks hooks;
  hooks.send = [transport = surroundings_.transport](const std::string& path, const receiver::Settings& settings) {
    return receiver::send_radio_set(transport, path, settings);
  };
  hooks.running = [this](const std::string& name) { return is_running(name) ? find_launch(name) : nullptr; };
  hooks.confirmed = [this](const std::string& name, const receiver::Settings& confirmed,
                           const receiver::Settings& to_save) { live_confirmed(name, confirmed, to_save); };
  hooks.unsent = [this](const std::string& name, const receiver::Settings& settings) {
    set_receiver_settings(name, settings);
  };
  hooks.adjusted = [this](const std::string& name, const receiver::Settings& shown) {
    surroundings_.show_applied(name, shown);
  };
  hooks.refused = [this](const std::string& name, const std::string& reason, const receiver::Settings& shown) {
    live_refused(name, reason, shown);
  };
  return hooks;
}

void ApplyFlow::edit_live(const std::string& name, const std::string& key, const std::string& value) {
  // An empty box is Automatic, which a running engine has no word for: it takes "Apply and Save".
  if (!value.empty() && is_running(name)) return live_.edit(name, key, value);
  live_.withdraw(name, key);
  set_receiver_settings(name, {{key, value}});
}

void ApplyFlow::set_receiver_settings(const std::string& name, const receiver::Settings& settings) {
  for (const auto& [key, value] : settings)
    surroundings_.set_setting(name, key, value);
}

void ApplyFlow::live_confirmed(const std::string& name, const receiver::Settings& confirmed,
                               const receiver::Settings& to_save) {
  ReceiverLaunch* launch = find_launch(name);
  if (launch == nullptr) return;
  const bool differed = differs_from_running();
  for (const auto& [key, value] : confirmed) {
    launch->profile[key] = value;
    if (key == "center-frequency") launch->capture.center = base::parse_scaled(value).value_or(launch->capture.center);
  }
  surroundings_.supervisor.update_restart_profile(name);
  set_receiver_settings(name, to_save);
  try {
    surroundings_.session.save();
    if (!differed) surroundings_.session.store_fingerprint();
  } catch (const std::exception& error) {
    surroundings_.report(fmt::format("Could not save session settings: {}", error.what()), {});
  }
  surroundings_.refresh();
}

void ApplyFlow::live_refused(const std::string& name, const std::string& reason, const receiver::Settings& shown) {
  const ReceiverLaunch* launch = find_launch(name);
  surroundings_.report("Live SDR update failed: " + reason, launch == nullptr ? std::string() : launch->label());
  surroundings_.show_applied(name, shown);
}

void ApplyFlow::engine_restarted(const std::string& name, const std::string& conf) {
  ReceiverLaunch* const launch = find_launch(name);
  if (launch == nullptr) return;
  try {
    launcher::take_profile(*launch, options::read_profile(conf));
  } catch (const std::exception&) {
    return;  // The engine reads the same and says so.
  }
  live_.started(*launch);
  surroundings_.launches_changed();
}

void ApplyFlow::keep_unsent() {
  for (const ReceiverLaunch& launch : surroundings_.launches)
    set_receiver_settings(launch.name, live_.take_unsent(launch.name));
}

}  // namespace gui
