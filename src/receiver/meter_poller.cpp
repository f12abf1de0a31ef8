#include "receiver/meter_poller.h"

#include <stdexcept>

#include "receiver/control_requests.h"

namespace receiver {
namespace {

constexpr std::int64_t hidden_period = 1000000;
constexpr int time_to_answer = 200;  // ms

/// What a poll came to. Throws std::runtime_error with the reason why there is no reading.
MeterReading reading_of(const base::Outcome<std::string>& reply) {
  if (!reply.value) throw std::runtime_error(reply.error);
  return parse_meter(*reply.value);
}

}  // namespace

void MeterPoller::start(std::chrono::milliseconds period) {
  timer_ = base::Timer::repeating(period, [this] { tick(); });
}

void MeterPoller::tick() {
  const bool shown = hooks_.shown();
  const std::int64_t now = hooks_.now();
  // What was put off while nobody looked is not put off any longer.
  if (!shown && now < due_) return;
  due_ = shown ? 0 : now + hidden_period;
  for (const MeterTarget& target : hooks_.targets()) {
    Receiver& receiver = receivers_[target.name];
    if (!receiver.call) ask(target, receiver);
  }
}

void MeterPoller::ask(const MeterTarget& target, Receiver& receiver) {
  static const std::string request(meter_request);
  const auto take = [this, name = target.name](const base::Outcome<std::string>& reply) { answered(name, reply); };
  try {
    receiver.call.emplace(target.path, request, time_to_answer, take);
  } catch (const std::exception& error) {
    take({{}, error.what()});
  }
}

void MeterPoller::answered(const std::string& name, const base::Outcome<std::string>& reply) {
  Receiver& receiver = receivers_.at(name);
  MeterSnapshot& snapshot = receiver.snapshot;
  try {
    snapshot.reading = reading_of(reply);
    snapshot.error.clear();
    snapshot.taken = hooks_.now();
    if (snapshot.reading.overload_state == "detected") snapshot.last_overload = snapshot.taken;
  } catch (const std::exception& error) {
    snapshot.error = error.what();
    MeterReading& reading = snapshot.reading;
    reading.level_state = reading.overload_state = reading.if_state = reading.tuner_state = "unavailable";
  }
  receiver.call.reset();
  hooks_.changed(name);
}

void MeterPoller::begin_session() {
  receivers_.clear();
  due_ = 0;
}

const MeterSnapshot* MeterPoller::snapshot(const std::string& name) const {
  const auto found = receivers_.find(name);
  return found == receivers_.end() ? nullptr : &found->second.snapshot;
}

}  // namespace receiver
