// Hardware settings that a receiver's card changes while its engine runs: edits are gathered for a moment, sent
// together, and count only when the engine has confirmed them.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "base/background.h"
#include "base/timer.h"
#include "launcher/receiver_launch.h"
#include "receiver/live_pairs.h"

namespace receiver {

/// What live settings need of the launcher around them. All but `send` are called on the main thread; none may destroy
/// the object.
struct LiveSettingsHooks {
  /// Sends the settings to the control socket at `path` and returns what the engine says it applied. Called on a worker
  /// thread. Throws std::exception with the reason.
  std::function<Settings(const std::string& path, const Settings& settings)> send;
  /// The running launch of a receiver; null when its engine does not run.
  std::function<const launcher::ReceiverLaunch*(const std::string& name)> running;
  /// The engine confirmed these values: they are the receiver's now. Those `to_save` are still what the operator wants.
  std::function<void(const std::string& name, const Settings& confirmed, const Settings& to_save)> confirmed;
  /// These edits need no request, since the engine has the values already, or does not run any more: they may be saved.
  std::function<void(const std::string& name, const Settings& settings)> unsent;
  /// Edits came to nothing. `shown` is what the controls return to: what the engine runs with, and edits that are yet
  /// to be sent.
  std::function<void(const std::string& name, const std::string& reason, const Settings& shown)> refused;
  /// The engine took other values than those sent, rounded ones: the controls go to `shown`, as with refused.
  std::function<void(const std::string& name, const Settings& shown)> adjusted = [](const std::string&,
                                                                                    const Settings&) {};
};

/// Main thread only. At most one request per receiver is out at a time; nothing is sent twice.
class LiveSettings {
 public:
  explicit LiveSettings(LiveSettingsHooks hooks, std::chrono::milliseconds delay = std::chrono::milliseconds(250))
      : hooks_(std::move(hooks)), delay_(delay) {}
  ~LiveSettings() { alive_.end(); }
  LiveSettings(const LiveSettings&) = delete;
  LiveSettings& operator=(const LiveSettings&) = delete;

  /// A session starts: what its engines are started with is applied, and answers to older requests are dropped.
  void begin_session(const std::vector<launcher::ReceiverLaunch>& launches);
  /// A receiver's engine runs with the settings of this launch from now on.
  void started(const launcher::ReceiverLaunch& launch);

  /// An edit of the operator; the timer runs anew, so that dragging a slider sends one request. What cannot be sent is
  /// refused at once.
  void edit(const std::string& name, const std::string& key, const std::string& value);
  /// Sends a receiver's edits now, unless a request to it is out: then they follow its answer.
  void apply_live_sdr(const std::string& name);
  /// The operator has since given this setting a value that is not to be sent: a waiting edit of it goes, and one that
  /// is out is not to be saved.
  void withdraw(const std::string& name, const std::string& key);
  /// Others talk to these receivers: their edits wait. Those of receivers that were held before, and are not now, go
  /// out.
  void hold(std::set<std::string> names);
  /// The engine is going: edits that were not sent yet are no longer the engine's matter. Returns them.
  Settings take_unsent(const std::string& name);

  /// What the engine of a receiver last confirmed.
  [[nodiscard]] const Settings& applied(const std::string& name) const;
  /// A request is out, or edits wait to be sent.
  [[nodiscard]] bool pending(const std::string& name) const;
  [[nodiscard]] bool sending() const;

 private:
  struct Receiver {
    Settings applied;
    Settings edits;
    base::Timer timer;
    bool sending = false;
    std::set<std::string> withdrawn;  ///< settings of the request that is out
  };

  [[nodiscard]] Settings shown(const std::string& name) const;
  void refuse(const std::string& name, const std::string& reason);
  void answered(const std::string& name, const Settings& sent, const base::Outcome<Settings>& outcome);

  LiveSettingsHooks hooks_;
  std::chrono::milliseconds delay_;
  base::Liveness alive_;
  unsigned session_ = 0;
  std::set<std::string> held_;
  std::map<std::string, Receiver> receivers_;
};

}  // namespace receiver
