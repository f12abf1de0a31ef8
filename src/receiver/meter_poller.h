// Asks the running engines for their levels: twenty times a second while somebody looks, once a second otherwise.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/background.h"
#include "base/timer.h"
#include "receiver/meter_snapshot.h"

namespace receiver {

/// A receiver to be asked.
struct MeterTarget {
  std::string name;
  std::string path;  ///< of its control socket
};

/// What the poller needs of the launcher around it. All but `ask` are called on the main thread.
struct MeterHooks {
  /// The receivers whose engines run and were not asked to stop.
  std::function<std::vector<MeterTarget>()> targets;
  /// Some meter is on the screen.
  std::function<bool()> shown;
  /// Returns the reply of the engine at `path`. Called on a worker thread, may block for some time. Throws
  /// std::exception with the reason.
  std::function<std::string(const std::string& path)> ask;
  /// A receiver's snapshot is a new one.
  std::function<void(const std::string& name)> changed;
  /// A monotonic clock, in microseconds.
  std::function<std::int64_t()> now;
};

/// Main thread only. Receivers are asked independently of each other: one that hangs holds only its own slot.
class MeterPoller {
 public:
  explicit MeterPoller(MeterHooks hooks) : hooks_(std::move(hooks)) {}
  ~MeterPoller() { alive_.end(); }
  MeterPoller(const MeterPoller&) = delete;
  MeterPoller& operator=(const MeterPoller&) = delete;

  /// Begins to tick, every 50 ms.
  void start();
  void stop() { timer_ = {}; }
  /// Asks whoever is due. The tick calls it.
  void tick();

  /// A session starts: nothing of an earlier one is shown any more, and its answers are dropped when they come.
  void begin_session();
  /// A receiver's engine has gone.
  void forget(const std::string& name) { snapshots_.erase(name); }

  /// Null before the first poll of a receiver.
  [[nodiscard]] const MeterSnapshot* snapshot(const std::string& name) const;

 private:
  void poll(const MeterTarget& target, MeterSnapshot& snapshot);
  void answered(const std::string& name, std::uint64_t number, const base::Outcome<MeterReading>& outcome);

  MeterHooks hooks_;
  base::Liveness alive_;
  base::Timer timer_;
  std::uint64_t polls_ = 0;  ///< sent so far; an answer counts for the poll that its receiver waits for
  std::map<std::string, MeterSnapshot> snapshots_;
};

}  // namespace receiver
