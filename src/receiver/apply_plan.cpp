#include "receiver/apply_plan.h"

#include <stdexcept>

#include "receiver/control_requests.h"

namespace receiver {
namespace {

constexpr int setting_timeout = 5000;
constexpr int check_timeout = 15000;
constexpr int apply_timeout = 30000;

}  // namespace

void require_ok(const std::string& reply) {
  if (!reply.starts_with("OK")) throw std::runtime_error(reply.empty() ? "No audio-control response" : reply);
}

SettingsOutcome apply_settings(const std::vector<SettingsTarget>& targets, const Transport& transport) {
  SettingsOutcome outcome;
  for (const SettingsTarget& target : targets) {
    try {
      if (!target.settings.empty()) {
        const Settings told = told_settings(target.settings);
        require_ok(transport(target.path, setting_request(told), setting_timeout));
        outcome.confirmed[target.name].insert(told.begin(), told.end());
      }
      if (!target.hardware.empty())
        outcome.confirmed[target.name].merge(send_radio_set(transport, target.path, target.hardware));
    } catch (const std::exception& error) {
      if (outcome.failure.empty()) outcome.failure = error.what();
    }
  }
  return outcome;
}

RetuneOutcome retune_receivers(const std::vector<RetuneTarget>& targets, const Transport& transport) {
  RetuneOutcome outcome;
  try {
    for (const RetuneTarget& target : targets)
      require_ok(transport(target.path, target.check, check_timeout));
    for (const RetuneTarget& target : targets) {
      require_ok(transport(target.path, target.apply, apply_timeout));
      outcome.succeeded.push_back(target.name);
    }
  } catch (const std::exception& error) {
    outcome.failure = error.what();
  }
  return outcome;
}

}  // namespace receiver
