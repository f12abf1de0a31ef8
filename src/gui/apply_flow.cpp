#include "gui/apply_flow.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "launcher/planner.h"
#include "launcher/retune_plan.h"
#include "receiver/control_requests.h"

namespace gui {
namespace {

using launcher::ChangeClass;
using launcher::PlanChange;
using launcher::ReceiverLaunch;
using receiver::ApplyOutcome;

receiver::ReceiverRequests requests_of(const ReceiverLaunch& launch, const launcher::ReceiverChange& change) {
  receiver::ReceiverRequests requests{launch.name, launch.control_path, {}};
  if (!change.settings.empty()) requests.requests.push_back(receiver::setting_request(change.settings));
  if (!change.hardware.empty()) requests.requests.push_back(receiver::radio_set_request(change.hardware));
  return requests;
}

receiver::RetuneTarget retune_target(const ReceiverLaunch& launch) {
  const std::string known = launcher::known_selection_text(launch);
  return {launch.name, launch.control_path,
          receiver::retune_request(receiver::RetuneStep::check, launch.capture.center, launch.channels, known),
          receiver::retune_request(receiver::RetuneStep::apply, launch.capture.center, launch.channels, known)};
}

/// The values that a launch has of some settings; those that it has not are taken away.
void copy_settings(options::Profile& to, const options::Profile& from, const options::Profile& keys) {
  for (const auto& [key, value] : keys)
    if (const auto found = from.find(key); found != from.end())
      to[key] = found->second;
    else
      to.erase(key);
}

}  // namespace

ApplyFlow::ApplyFlow(ApplySurroundings surroundings) : surroundings_(std::move(surroundings)), live_(live_hooks()) {}

ReceiverLaunch* ApplyFlow::find_launch(const std::string& name) {
  auto& launches = surroundings_.launches;
  const auto found =
      std::find_if(launches.begin(), launches.end(), [&](const auto& each) { return each.name == name; });
  return found == launches.end() ? nullptr : &*found;
}

bool ApplyFlow::is_running(const std::string& name) const {
  const auto& children = surroundings_.supervisor.children();
  return std::any_of(children.begin(), children.end(), [&](const auto& child) {
    return child->name == name && !child->temporary && !child->exit_seen && !child->stop_requested;
  });
}

std::vector<ReceiverLaunch> ApplyFlow::running_launches() const {
  std::vector<ReceiverLaunch> running;
  for (const ReceiverLaunch& launch : surroundings_.launches)
    if (is_running(launch.name)) running.push_back(launch);
  return running;
}

void ApplyFlow::begin_operation(const std::string& status, const std::string& text) {
  busy_ = true;
  surroundings_.report(text, {});
  surroundings_.refresh();
  if (!status.empty()) surroundings_.show_status(status);
}

// --- Apply and Save ---

void ApplyFlow::apply_and_save() {
  if (busy_ || surroundings_.other_operation() || !surroundings_.supervisor.restart_names().empty()) {
    const char* words = "Wait for the current receiver update to finish, then Apply and Save.";
    surroundings_.report(words, {});
    return surroundings_.show_status(words);
  }
  options::Session& session = surroundings_.session;
  const bool receiving = surroundings_.supervisor.receiving();
  PlanChange change;
  try {
    if (receiving) change = launcher::plan_change(session.station(), surroundings_.launches);
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
  begin_operation({}, "Applying changed settings to the running receivers; they keep running.");
  std::vector<receiver::ReceiverRequests> targets;
  ApplyOutcome unsent;
  for (const auto& [name, receiver] : change.receivers) {
    if (receiver.restart || (receiver.settings.empty() && receiver.hardware.empty())) continue;
    try {
      targets.push_back(requests_of(*find_launch(name), receiver));
    } catch (const std::exception& error) {
      unsent.failure = error.what();
    }
  }
  base::run_in_background(
      alive_.watch(),
      [targets, transport = surroundings_.transport] { return receiver::apply_settings(targets, transport); },
      [this, change, unsent](const base::Outcome<ApplyOutcome>& outcome) {
        ApplyOutcome result = outcome.value.value_or(ApplyOutcome{{}, outcome.error});
        if (result.failure.empty()) result.failure = unsent.failure;
        settings_applied(change, result);
      });
}

void ApplyFlow::settings_applied(const PlanChange& change, const ApplyOutcome& outcome) {
  busy_ = false;
  for (const std::string& name : outcome.succeeded) {
    ReceiverLaunch* launch = find_launch(name);
    const auto wanted = std::find_if(change.launches.begin(), change.launches.end(),
                                     [&](const auto& each) { return each.name == name; });
    if (launch == nullptr || wanted == change.launches.end()) continue;
    copy_settings(launch->profile, wanted->profile, change.receivers.at(name).settings);
    copy_settings(launch->profile, wanted->profile, change.receivers.at(name).hardware);
    live_.started(*launch);
    surroundings_.supervisor.update_restart_profile(name);
  }
  surroundings_.refresh();
  if (surroundings_.supervisor.closing()) return;
  if (!outcome.failure.empty()) return surroundings_.show_error(outcome.failure);
  if (change.change == ChangeClass::retune) return retune();
  surroundings_.session.store_fingerprint();
  surroundings_.refresh();
  surroundings_.show_status("Settings applied; receivers continue running.");
}

// --- Retune ---

void ApplyFlow::retune() {
  if (busy_ || surroundings_.other_operation()) return;
  std::vector<ReceiverLaunch> changed;
  std::vector<receiver::RetuneTarget> targets;
  try {
    for (ReceiverLaunch& launch : launcher::retune_plan(surroundings_.session.station(), running_launches())) {
      const ReceiverLaunch* now = find_launch(launch.name);
      if (now->profile == launch.profile && now->capture == launch.capture) continue;
      targets.push_back(retune_target(launch));
      changed.push_back(std::move(launch));
    }
  } catch (const std::exception& error) {
    return surroundings_.show_error(error.what());
  }
  begin_operation("Applying selected bands to running receivers…", "Applying selected bands to running receivers.");
  base::run_in_background(
      alive_.watch(),
      [targets, transport = surroundings_.transport] { return receiver::retune_receivers(targets, transport); },
      [this, changed](const base::Outcome<ApplyOutcome>& outcome) {
        retuned(changed, outcome.value.value_or(ApplyOutcome{{}, outcome.error}));
      });
}

void ApplyFlow::retuned(const std::vector<ReceiverLaunch>& targets, const ApplyOutcome& outcome) {
  busy_ = false;
  for (const ReceiverLaunch& launch : targets) {
    ReceiverLaunch* running = find_launch(launch.name);
    const bool done =
        std::find(outcome.succeeded.begin(), outcome.succeeded.end(), launch.name) != outcome.succeeded.end();
    if (!done || running == nullptr) continue;
    *running = launch;
    live_.started(launch);
    surroundings_.supervisor.update_restart_profile(launch.name);
    surroundings_.report(fmt::format("Retuned to selected bands, capture centre {:.6f} MHz; partial decode intervals "
                                     "discarded.",
                                     launch.capture.center / 1e6),
                         launch.label());
  }
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
  hooks.confirmed = [this](const std::string& name, const receiver::Settings& settings) {
    live_confirmed(name, settings);
  };
  hooks.refused = [this](const std::string& name, const std::string& reason, const receiver::Settings& shown) {
    live_refused(name, reason, shown);
  };
  return hooks;
}

void ApplyFlow::edit_live(const std::string& name, const std::string& key, const std::string& value) {
  // An empty box is Automatic, which a running engine has no word for: it takes "Apply and Save".
  if (value.empty() || !is_running(name)) return set_receiver_settings(name, {{key, value}});
  live_.edit(name, key, value);
}

void ApplyFlow::set_receiver_settings(const std::string& name, const receiver::Settings& settings) {
  for (const auto& [key, value] : settings)
    surroundings_.set_setting(name, key, value);
}

void ApplyFlow::live_confirmed(const std::string& name, const receiver::Settings& confirmed) {
  ReceiverLaunch* launch = find_launch(name);
  if (launch == nullptr) return;
  const bool differed = differs_from_running();
  for (const auto& [key, value] : confirmed) {
    launch->profile[key] = value;
    if (key == "center-frequency") launch->capture.center = base::parse_scaled(value).value_or(launch->capture.center);
  }
  surroundings_.supervisor.update_restart_profile(name);
  set_receiver_settings(name, confirmed);
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

void ApplyFlow::keep_unsent() {
  for (const ReceiverLaunch& launch : surroundings_.launches)
    set_receiver_settings(launch.name, live_.take_unsent(launch.name));
}

}  // namespace gui
