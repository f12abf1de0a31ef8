#include "receiver/meter_poller.h"

#include <chrono>

namespace receiver {
namespace {

constexpr std::chrono::milliseconds tick_period{50};
constexpr std::int64_t hidden_period = 1000000;

}  // namespace

void MeterPoller::start() {
  timer_ = base::Timer::repeating(tick_period, [this] { tick(); });
}

void MeterPoller::tick() {
  const std::vector<MeterTarget> targets = hooks_.targets();
  if (targets.empty()) return;
  const bool shown = hooks_.shown();
  const std::int64_t now = hooks_.now();
  for (const MeterTarget& target : targets) {
    MeterSnapshot& snapshot = snapshots_[target.name];
    // What was put off while nobody looked is not put off any longer.
    if (shown) snapshot.due = 0;
    if (snapshot.polling || now < snapshot.due) continue;
    snapshot.due = shown ? 0 : now + hidden_period;
    poll(target, snapshot);
  }
}

void MeterPoller::poll(const MeterTarget& target, MeterSnapshot& snapshot) {
  snapshot.polling = true;
  snapshot.poll_number = ++polls_;
  base::run_in_background(
      alive_.watch(), [ask = hooks_.ask, path = target.path] { return parse_meter(ask(path)); },
      [this, name = target.name, number = polls_](const base::Outcome<MeterReading>& outcome) {
        answered(name, number, outcome);
      });
}

void MeterPoller::answered(const std::string& name, std::uint64_t number, const base::Outcome<MeterReading>& outcome) {
  const auto found = snapshots_.find(name);
  if (found == snapshots_.end() || found->second.poll_number != number) return;
  MeterSnapshot& snapshot = found->second;
  snapshot.polling = false;
  snapshot.error = outcome.error;
  if (outcome.value) {
    snapshot.reading = *outcome.value;
    snapshot.taken = hooks_.now();
    if (snapshot.reading.overload_state == "detected") snapshot.last_overload = snapshot.taken;
  } else {
    MeterReading& reading = snapshot.reading;
    reading.level_state = reading.overload_state = reading.if_state = reading.tuner_state = "unavailable";
  }
  hooks_.changed(name);
}

void MeterPoller::begin_session() {
  snapshots_.clear();
}

const MeterSnapshot* MeterPoller::snapshot(const std::string& name) const {
  const auto found = snapshots_.find(name);
  return found == snapshots_.end() ? nullptr : &found->second;
}

}  // namespace receiver
