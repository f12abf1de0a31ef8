#include "receiver/live_settings.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"
#include "launcher/receiver_overlay.h"
#include "launcher/setting_kinds.h"

namespace receiver {
namespace {

bool is_switch(std::string_view key) {
  return key == "agc" || key == "rf-notch" || key == "mw-notch";
}

bool parses(std::string_view key, const std::string& value) {
  if (is_switch(key)) return value == "on" || value == "off";
  return key == "antenna" ? !value.empty() : base::parse_scaled(value).has_value();
}

/// Throws std::runtime_error for an edit that is none, or that no engine takes while it runs.
void judge_edit(const launcher::ReceiverLaunch& launch, const std::string& key, const std::string& value) {
  if (key.empty()) throw std::runtime_error("No setting to change");
  const auto family = launcher::parse_family(launcher::value_or(launch.profile, "backend", "sdrplay"));
  if (!launcher::is_sent_at_once(key, family.value_or(launcher::Family::sdrplay)))
    throw std::runtime_error(fmt::format("{} cannot change while the receiver runs", key));
  if (!parses(key, value)) throw std::runtime_error(fmt::format("Invalid value for {}", key));
}

/// Moves out of `edits` what is applied already.
Settings take_known(Settings& edits, const Settings& applied) {
  Settings known;
  std::erase_if(edits, [&](const auto& edit) {
    const auto now = applied.find(edit.first);
    const bool same = now != applied.end() && now->second == edit.second;
    if (same) known.insert(edit);
    return same;
  });
  return known;
}

}  // namespace

void LiveSettings::begin_session(const std::vector<launcher::ReceiverLaunch>& launches) {
  ++session_;
  receivers_.clear();
  for (const launcher::ReceiverLaunch& launch : launches)
    started(launch);
}

void LiveSettings::started(const launcher::ReceiverLaunch& launch) {
  receivers_[launch.name].applied = launch.profile;
}

void LiveSettings::edit(const std::string& name, const std::string& key, const std::string& value) {
  const launcher::ReceiverLaunch* launch = hooks_.running(name);
  if (launch == nullptr) return;
  try {
    judge_edit(*launch, key, value);
  } catch (const std::exception& error) {
    return refuse(name, error.what());
  }
  Receiver& receiver = receivers_[name];
  receiver.edits[key] = value;
  receiver.timer = base::Timer::once(delay_, [this, name] { apply_live_sdr(name); });
}

void LiveSettings::withdraw(const std::string& name, const std::string& key) {
  const auto found = receivers_.find(name);
  if (found == receivers_.end()) return;
  found->second.edits.erase(key);
  if (found->second.sending) found->second.withdrawn.insert(key);
}

void LiveSettings::hold(std::set<std::string> names) {
  for (const std::string& name : std::exchange(held_, std::move(names)))
    if (const auto found = receivers_.find(name); found != receivers_.end() && !found->second.timer.armed())
      apply_live_sdr(name);
}

void LiveSettings::apply_live_sdr(const std::string& name) {
  Receiver& receiver = receivers_[name];
  receiver.timer = {};
  if (receiver.sending || held_.contains(name) || receiver.edits.empty()) return;
  Settings settings = std::exchange(receiver.edits, {});
  const launcher::ReceiverLaunch* launch = hooks_.running(name);
  if (launch == nullptr) return hooks_.unsent(name, settings);
  const Settings known = take_known(settings, receiver.applied);
  if (!known.empty()) hooks_.unsent(name, known);
  if (settings.empty()) return;
  if (launch->control_path.empty()) return refuse(name, "Restart this receiver to enable live SDR control");
  receiver.sending = true;
  base::run_in_background(
      alive_.watch(), [send = hooks_.send, path = launch->control_path, settings] { return send(path, settings); },
      [this, name, settings, session = session_](const base::Outcome<Settings>& outcome) {
        if (session == session_) answered(name, settings, outcome);
      });
}

void LiveSettings::answered(const std::string& name, const Settings& sent, const base::Outcome<Settings>& outcome) {
  Receiver& receiver = receivers_[name];
  receiver.sending = false;
  const std::set<std::string> withdrawn = std::exchange(receiver.withdrawn, {});
  if (outcome.value) {
    Settings to_save;
    for (const auto& [key, value] : *outcome.value) {
      receiver.applied[key] = value;
      if (!withdrawn.contains(key)) to_save.emplace(key, value);
    }
    hooks_.confirmed(name, *outcome.value, to_save);
    if (*outcome.value != sent) hooks_.adjusted(name, shown(name));
  } else {
    std::erase_if(receiver.edits,
                  [&](const auto& edit) { return sent.contains(edit.first) && sent.at(edit.first) == edit.second; });
    refuse(name, outcome.error);
  }
  // Edits that came while the request was out, unless they are still being made.
  if (!receivers_[name].timer.armed()) apply_live_sdr(name);
}

Settings LiveSettings::shown(const std::string& name) const {
  Settings values = applied(name);
  if (const auto found = receivers_.find(name); found != receivers_.end())
    for (const auto& [key, value] : found->second.edits)
      values[key] = value;
  return values;
}

void LiveSettings::refuse(const std::string& name, const std::string& reason) {
  hooks_.refused(name, reason, shown(name));
}

Settings LiveSettings::take_unsent(const std::string& name) {
  const auto found = receivers_.find(name);
  if (found == receivers_.end()) return {};
  Receiver& receiver = found->second;
  receiver.timer = {};
  if (receiver.sending)  // an answer to come is older than these
    for (const auto& [key, value] : receiver.edits)
      receiver.withdrawn.insert(key);
  return std::exchange(receiver.edits, {});
}

const Settings& LiveSettings::applied(const std::string& name) const {
  static const Settings none;
  const auto found = receivers_.find(name);
  return found == receivers_.end() ? none : found->second.applied;
}

bool LiveSettings::pending(const std::string& name) const {
  const auto found = receivers_.find(name);
  return found != receivers_.end() && (found->second.sending || !found->second.edits.empty());
}

bool LiveSettings::sending() const {
  return std::any_of(receivers_.begin(), receivers_.end(), [](const auto& entry) { return entry.second.sending; });
}

}  // namespace receiver
