#include "receiver/apply_plan.h"

#include <stdexcept>

namespace receiver {
namespace {

constexpr int setting_timeout = 5000;
constexpr int check_timeout = 15000;
constexpr int apply_timeout = 30000;

}  // namespace

void require_ok(const std::string& reply) {
  if (!reply.starts_with("OK")) throw std::runtime_error(reply.empty() ? "No audio-control response" : reply);
}

ApplyOutcome apply_settings(const std::vector<ReceiverRequests>& targets, const Transport& transport) {
  ApplyOutcome outcome;
  for (const ReceiverRequests& target : targets) {
    try {
      for (const std::string& request : target.requests)
        require_ok(transport(target.path, request, setting_timeout));
      outcome.succeeded.push_back(target.name);
    } catch (const std::exception& error) {
      if (outcome.failure.empty()) outcome.failure = error.what();
    }
  }
  return outcome;
}

ApplyOutcome retune_receivers(const std::vector<RetuneTarget>& targets, const Transport& transport) {
  ApplyOutcome outcome;
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
