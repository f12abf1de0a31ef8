// Keeps the session's receivers in step with what is attached: discovery, the RX-888 that dropped off USB, and what the
// sharing service holds.
#pragma once

#include <chrono>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/background.h"
#include "base/timer.h"
#include "launcher/device_merge.h"
#include "receiver/device_discovery.h"
#include "receiver/outside_programs.h"
#include "receiver/usb_recovery.h"

namespace receiver {

/// What the watch needs from the launcher around it. All are called on the main thread; none may destroy the watch.
struct DeviceWatchHooks {
  /// The settings now, with the availability that was taken last.
  std::function<options::Station()> station;
  std::function<const options::ReceiverStore&()> saved;
  /// Serials of the receivers that this launcher runs, or is about to run again.
  std::function<std::set<std::string>()> running;
  /// The receivers as a discovery found them.
  std::function<void(const options::Station& station)> take;
  /// The operator is told something.
  std::function<void(const std::string& text)> report;
  /// Something on the screen may have to change.
  std::function<void()> changed;
  /// A question with two answers, one of which is called.
  std::function<void(const std::string& question, std::function<void()> yes, std::function<void()> no)> ask;
  /// Another receiver operation is in flight.
  std::function<bool()> occupied = [] { return false; };
};

struct DeviceTiming {
  std::chrono::milliseconds listing_limit{10000};
  std::chrono::milliseconds snapshot_period = std::chrono::seconds(4);
  int return_wait = 8;  ///< seconds that a listing after a controller's reset waits for the RX-888; below the limit
};

/// Why a discovery runs.
enum class DiscoveryCause {
  opened,     ///< the launcher starts
  asked,      ///< the operator wants it
  stopped,    ///< receivers have stopped
  recovered,  ///< a USB controller was reset
};

/// Main thread only, on the main loop; never blocks. Destroying it ends what is under way.
class DeviceWatch {
 public:
  DeviceWatch(DeviceWatchHooks hooks, OutsidePrograms programs, const DeviceTiming& timing = {});
  ~DeviceWatch();
  DeviceWatch(const DeviceWatch&) = delete;
  DeviceWatch& operator=(const DeviceWatch&) = delete;

  /// The receive engine executable.
  void use_engine(std::string path) { engine_ = std::move(path); }
  /// Looks now and every few seconds at what the sharing service holds.
  void begin_snapshots();
  /// Starts a discovery; says so and does nothing while any receiver operation is in flight.
  void refresh(DiscoveryCause cause);
  /// A line of a running engine: the kernel's words for a dead USB controller raise the question about it. Cheap.
  void hear(std::string_view line);

  /// A discovery runs.
  [[nodiscard]] bool checking() const { return discovery_.running(); }
  /// A discovery or the reset of a controller runs.
  [[nodiscard]] bool busy() const { return checking() || resetting_; }
  /// The last discovery failed.
  [[nodiscard]] bool failed() const { return failed_; }
  /// At least one discovery has ended, well or not.
  [[nodiscard]] bool ended_once() const { return ended_once_; }
  /// What the last discovery came to, in a line or more; empty before the first has ended.
  [[nodiscard]] const std::string& status_text() const { return status_text_; }
  /// How each receiver of the session stands, those marked that the sharing service holds now.
  [[nodiscard]] launcher::DeviceStatuses statuses() const { return launcher::with_sharing(statuses_, held_); }

 private:
  void ended(DiscoveryCause cause, const DiscoveryResult& result);
  void take_failure(const DiscoveryFailure& failure);
  void take_listing(DiscoveryCause cause, const launcher::DeviceListing& listing);
  void remember_controller();
  void suspect_dead_controller();
  void ask_for_reset(const ControllerReset& reset);
  void reset(const std::string& controller);
  void reset_ended(bool done);
  void take_snapshot();

  DeviceWatchHooks hooks_;
  OutsidePrograms programs_;
  DeviceTiming timing_;
  std::string engine_;
  launcher::DeviceStatuses statuses_;
  std::set<std::string> held_;  ///< by the sharing service
  std::string status_text_;
  std::string rx888_controller_;  ///< where an RX-888 was when it was last seen; empty while none was
  bool failed_ = false, ended_once_ = false;
  bool resetting_ = false;
  bool reset_suggested_ = false;  ///< since an RX-888 was last seen

  base::Liveness alive_;
  DeviceDiscovery discovery_;
  base::GObjectPtr<GSubprocess> reset_process_;
  ExitWatch reset_watch_;
  base::Timer snapshots_;
};

}  // namespace receiver
