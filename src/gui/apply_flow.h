// Bringing changed settings to receivers that run, in the least disturbing way: what "Apply and Save" and the cards do.
// Knows no widget.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/background.h"
#include "launcher/plan_change.h"
#include "options/session.h"
#include "receiver/apply_plan.h"
#include "receiver/live_settings.h"
#include "receiver/supervisor.h"

namespace gui {

/// What the flow works on. Everything outlives it; all but `transport` is called on the main thread.
struct ApplySurroundings {
  options::Session& session;
  receiver::Supervisor& supervisor;
  std::vector<launcher::ReceiverLaunch>& launches;  ///< the plan of the running session
  receiver::Transport transport;                    ///< called on worker threads
  std::function<void(const std::string& text, const std::string& label)> report = {};
  std::function<void(const std::string& text)> show_error = {};
  std::function<void(const std::string& text)> show_status = {};  ///< the words beside the buttons
  std::function<void()> refresh = {};
  std::function<void()> launches_changed = {};  ///< the cards of what is heard follow
  /// A setting of a receiver in the session; an empty value is Automatic.
  std::function<void(const std::string& serial, const std::string& key, const std::string& value)> set_setting = {};
  /// A receiver's card returns to these values.
  std::function<void(const std::string& name, const receiver::Settings& values)> show_applied = {};
  std::function<bool()> other_operation = {};  ///< another receiver, audio or frequency operation is under way
  /// Why receivers that were stopped could not be started again now; empty when they could.
  std::function<std::string()> start_refusal = [] { return std::string(); };
  std::chrono::milliseconds edit_delay{250};  ///< from the last edit of a card to its request
};

/// Main thread only.
class ApplyFlow {
 public:
  explicit ApplyFlow(ApplySurroundings surroundings);
  ~ApplyFlow() { alive_.end(); }
  ApplyFlow(const ApplyFlow&) = delete;
  ApplyFlow& operator=(const ApplyFlow&) = delete;

  /// Saves the settings, and brings what changed to the receivers that run.
  void apply_and_save();
  /// Tells running receivers of the live settings of a change; retunes afterwards if the change wants it.
  void apply_live(const launcher::PlanChange& change);
  /// Moves the running receivers to the selected bands.
  void retune();

  /// A live setting of a running receiver's card.
  void edit_live(const std::string& name, const std::string& key, const std::string& value);
  /// Sends the waiting edits of a card now.
  void apply_live_sdr(const std::string& name) { live_.apply_live_sdr(name); }
  /// New engines run with these settings.
  void begin_session() { live_.begin_session(surroundings_.launches); }
  /// A receiver that crashed runs again with this profile: what a retune left of its capture is gone, and so is what
  /// could not be written.
  void engine_restarted(const std::string& name, const std::string& conf);
  /// The receivers are about to stop: edits that were not sent yet are the session's, as those of a stopped receiver
  /// are.
  void keep_unsent();

  /// A request to the running receivers is out.
  [[nodiscard]] bool busy() const { return busy_; }
  /// What the cards of running receivers are about.
  [[nodiscard]] const receiver::LiveSettings& live() const { return live_; }
  /// What a running session would have to change; nothing where the settings cannot be planned.
  [[nodiscard]] bool differs_from_running() const;

 private:
  receiver::LiveSettingsHooks live_hooks();
  [[nodiscard]] launcher::ReceiverLaunch* find_launch(const std::string& name);
  /// The number of the start of the receiver's engine; 0 when none runs.
  [[nodiscard]] unsigned engine_of(const std::string& name) const;
  [[nodiscard]] bool is_running(const std::string& name) const { return engine_of(name) != 0; }
  /// Something runs, or will again by itself; receivers that were all asked to stop are not receiving any more.
  [[nodiscard]] bool is_receiving() const;
  [[nodiscard]] std::vector<launcher::ReceiverLaunch> running_launches() const;

  void apply_change(const launcher::PlanChange& change);
  void restart_some(const launcher::PlanChange& change);
  void settings_applied(const launcher::PlanChange& change, receiver::SettingsOutcome outcome);
  void after_settings(const launcher::PlanChange& change, const std::string& failure);
  void retuned(const std::vector<launcher::ReceiverLaunch>& targets, receiver::RetuneOutcome outcome);
  /// The receiver runs with these settings, or will.
  void take_settings(launcher::ReceiverLaunch& launch, const receiver::Settings& settings);
  /// What the hardware took otherwise than it was asked to is the receiver's setting, unless that was changed since.
  void save_rounded(const std::string& name, const receiver::Settings& asked, const receiver::Settings& confirmed);
  void live_confirmed(const std::string& name, const receiver::Settings& confirmed, const receiver::Settings& to_save);
  void live_refused(const std::string& name, const std::string& reason, const receiver::Settings& shown);
  void set_receiver_settings(const std::string& name, const receiver::Settings& settings);
  /// Requests to these receivers go out: their cards wait.
  void begin_operation(const std::vector<std::string>& names, const std::string& status, const std::string& text);
  /// The launch of a receiver that has confirmed something. Null, with the reason, when an engine runs by now that was
  /// never told.
  [[nodiscard]] launcher::ReceiverLaunch* find_told(const std::string& name, std::string& failure);

  ApplySurroundings surroundings_;
  base::Liveness alive_;
  bool busy_ = false;
  std::map<std::string, unsigned> engines_;  ///< of the receivers of the operation, as it began
  receiver::LiveSettings live_;
};

}  // namespace gui
