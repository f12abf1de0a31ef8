// Asks the running engines for their levels: twenty times a second while somebody looks, once a second otherwise.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/timer.h"
#include "receiver/control_client.h"
#include "receiver/meter_snapshot.h"
#include "receiver/timing.h"

namespace receiver {

/// A receiver to be asked.
struct MeterTarget {
  std::string name;
  std::string path;  ///< of its control socket
};

/// What the poller needs of the launcher around it.
struct MeterHooks {
  /// The receivers whose engines run and were not asked to stop.
  std::function<std::vector<MeterTarget>()> targets;
  /// Some meter is on the screen.
  std::function<bool()> shown;
  /// A receiver's snapshot is a new one.
  std::function<void(const std::string& name)> changed;
  /// A monotonic clock, in microseconds.
  std::function<std::int64_t()> now;
};

/// Main thread only. Receivers are asked independently of each other, each at most once at a time: one that hangs holds
/// only its own slot, for 200 ms.
class MeterPoller {
 public:
  explicit MeterPoller(MeterHooks hooks) : hooks_(std::move(hooks)) {}
  MeterPoller(const MeterPoller&) = delete;
  MeterPoller& operator=(const MeterPoller&) = delete;

  void start(std::chrono::milliseconds period = Timing{}.meter_period);
  /// Asks whoever is due; the timer calls it.
  void tick();

  /// A session starts: nothing of an earlier one is shown any more, and nobody waits for its answers.
  void begin_session();
  /// A receiver's engine has gone.
  void forget(const std::string& name) { receivers_.erase(name); }

  /// Null before the first poll of a receiver.
  [[nodiscard]] const MeterSnapshot* snapshot(const std::string& name) const;

 private:
  struct Receiver {
    MeterSnapshot snapshot;
    std::optional<ControlCall> call;  ///< while a poll is out
  };

  void ask(const MeterTarget& target, Receiver& receiver);
  void answered(const std::string& name, const base::Outcome<std::string>& reply);

  MeterHooks hooks_;
  base::Timer timer_;
  std::int64_t due_ = 0;  ///< when the next polls may go; 0 for at once
  std::map<std::string, Receiver> receivers_;
};

}  // namespace receiver
