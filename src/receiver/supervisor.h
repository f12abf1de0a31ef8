// Starts the receive engines, reads what they print, notices when they end, starts a crashed one again with a growing
// delay, and stops them on request with a hard limit.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "base/file_write.h"
#include "base/gobject_ptr.h"
#include "base/timer.h"
#include "launcher/receiver_launch.h"
#include "receiver/lifecycle.h"
#include "receiver/line_reader.h"
#include "receiver/process.h"
#include "receiver/session_files.h"
#include "receiver/timing.h"

namespace receiver {

/// One started engine process, running or just ended. Its flags are those of EngineState.
struct Child : EngineState {
  base::GObjectPtr<GSubprocess> process;
  std::string name;                     ///< the receiver as planned; the key of all per-receiver maps
  std::string label;                    ///< "{model} · {name}", the label of its lines
  base::TemporaryPath conf;             ///< its session profile, unlinked with the record; empty when none
  unsigned number{};                    ///< of this start; no two have the same
  std::chrono::nanoseconds started{};   ///< on the supervisor's clock
  std::chrono::nanoseconds run_time{};  ///< until its exit was seen

  // These call back into the record, so they end before the rest of it.
  LineReader reader;
  ExitWatch exit_watch;
  base::Timer stop_guard;
};

/// A crashed receiver that waits to be started again.
struct PendingRestart {
  base::TemporaryPath conf;  ///< the crashed process's profile, used again unchanged
  std::string label;
  base::Timer timer;
};

/// What the supervisor needs from the launcher around it. All are called on the main thread; none may destroy it.
struct SupervisorHooks {
  /// The operator is told something; the label is a receiver's.
  std::function<void(const std::string& text, const std::string& label)> report;
  /// An engine printed a line (bytes; valid during the call). `counts` is false for a line of an earlier session.
  std::function<void(std::string_view line, bool counts, const std::string& label)> line;
  /// Writes an engine's profile. Throws std::exception with the operator's words.
  std::function<void(const std::string& path, const std::map<std::string, std::string>& profile)> write_profile;
  /// Saves the session. Throws like write_profile.
  std::function<void()> save_session;
  /// The last receiver and the last waiting restart are gone, and the session has been saved (or could not be, and that
  /// was reported): the settings shown are the saved ones, and gui.log closes.
  std::function<void()> session_ended;
  /// The running plan's launch of this receiver; null when the plan does not hold it.
  std::function<const launcher::ReceiverLaunch*(const std::string& name)> find_launch;
  /// A receiver that crashed was started again with this profile, as the file has it.
  std::function<void(const std::string& name, const std::string& conf)> restarted = [](const std::string&,
                                                                                       const std::string&) {};
  /// Something on the screen may have to change.
  std::function<void()> changed;
  /// All receivers have stopped in order to be started again.
  std::function<void()> start_again;
  /// The window is closing and nothing is left to wait for.
  std::function<void()> quit;
};

/// Profiles written for a start. Those not yet handed to an engine are unlinked with this.
struct PreparedStart {
  std::vector<base::TemporaryPath> profiles;  ///< one per launch, in plan order
};

/// Owner of all engine processes. Main thread only; never blocks on a process.
///
/// A start is made of the launcher's steps and these, in this order and in one `try` block:
///     PreparedStart prepared = supervisor.prepare(launches);   // profiles and sockets
///     ...                                                      // save the session, open gui.log
///     supervisor.begin_session();
///     ...                                                      // clear counters, show the new plan
///     supervisor.launch_all(std::move(prepared), launches);
/// and in its `catch`, where the block has already unlinked what no engine took over: stop_receivers(), and close
/// gui.log unless receiving().
///
/// What a kill -9 of the launcher leaves behind: engines notice at their next line, since nobody reads their pipe any
/// more, and end by SIGPIPE as any program does whose reader has gone; an engine that prints nothing for a while goes
/// on decoding, recording and reporting until then, which harms nobody. Their session-{pid}-*.conf stay: no process is
/// left to remove them, the next launcher has another process id and so never takes them for its own, and removing the
/// files of another id would pull them from under a second launcher that is alive.
class Supervisor {
 public:
  Supervisor(SupervisorHooks hooks, SessionFiles files, const Timing& timing = {},
             MonotonicClock clock = monotonic_clock());
  /// Ends what still runs with SIGTERM, without waiting, and unlinks its profiles: an engine without a launcher would
  /// hold its receiver until its next line. No hook is called from now on.
  ~Supervisor();
  Supervisor(const Supervisor&) = delete;
  Supervisor& operator=(const Supervisor&) = delete;

  /// The receive engine executable.
  void use_engine(std::string path) { tuner_ = std::move(path); }

  /// Gives each launch its control socket path and writes its first profile; creates the directories of decode files.
  /// Throws like write_profile, or std::runtime_error("{path}: {reason}"); nothing is left behind then.
  [[nodiscard]] PreparedStart prepare(std::vector<launcher::ReceiverLaunch>& launches);
  /// Asks temporary engines to end and raises session_number().
  void begin_session();
  /// Starts an engine per launch. Throws std::runtime_error when one cannot be; those before it run on.
  void launch_all(PreparedStart prepared, const std::vector<launcher::ReceiverLaunch>& launches);

  /// Starts one process and adds its record. Takes `conf` over only on success. Throws std::runtime_error.
  Child& spawn_child(const std::vector<std::string>& argv, const launcher::ReceiverLaunch& launch,
                     base::TemporaryPath&& conf, bool temporary);
  /// "{engine} --config {conf} --no-daemon", the only command line an engine is started with.
  [[nodiscard]] std::vector<std::string> engine_command(const std::string& conf) const;

  /// Saves the session, cancels waiting restarts and asks every engine of the session to end. Temporary engines go on.
  /// The caller makes "Stop" insensitive.
  void stop_receivers();
  /// Asks the temporary engines to end.
  void stop_temporary();
  /// Ends the engine of a receiver so that it starts with its launch in the plan, which the caller has replaced;
  /// `changes` names the changed settings. One that waits for a restart gets its profile rewritten instead. Nothing
  /// happens to a receiver that has no engine or is being stopped.
  void restart_changed(const std::string& name, const std::string& changes);
  /// Writes the profile of a receiver's launch anew, so that a restart after a crash comes back with it. A failure is
  /// reported.
  void update_restart_profile(const std::string& name);
  /// stop_receivers(), and start_again when the last one has gone.
  void restart_all_receivers();
  /// The window closes: saves the session, asks everything to end, and quits when the last engine has gone, at the
  /// latest after Timing::closing_limit, when what is left is ended by force.
  void close();

  [[nodiscard]] bool closing() const { return closing_; }
  /// True from the start of a session until its last engine and its last waiting restart are gone.
  [[nodiscard]] bool receiving() const;
  [[nodiscard]] const std::vector<std::unique_ptr<Child>>& children() const { return children_; }
  [[nodiscard]] const std::map<std::string, PendingRestart>& pending_restarts() const { return pending_restarts_; }
  [[nodiscard]] const std::map<std::string, int>& restart_attempts() const { return restart_attempts_; }
  [[nodiscard]] const std::set<std::string>& restart_names() const { return restart_names_; }
  [[nodiscard]] bool restart_all() const { return restart_all_; }
  [[nodiscard]] int session_number() const { return session_number_; }

 private:
  // Whom actions are done to: a receiver with a process, one whose restart is due, or one that has just gone.
  struct Subject {
    std::string name;
    std::string label;
    base::TemporaryPath* conf;
    Child* child;
  };

  void attach(Child& child);
  void happened(Child& child, const Event& event);
  [[nodiscard]] Surroundings surroundings(const std::string& name) const;
  void perform(Subject subject, const std::vector<Action>& actions);
  void perform(Subject& subject, const Action& action);
  void terminate(Child& child);
  void drop(Subject& subject);
  void schedule_restart(Subject& subject, const Action& action);
  void restart_due(const std::string& name);
  void stop_all();
  void cancel_restarts();
  void start_same_profile(Subject& subject);
  void start_new_profile(Subject& subject);
  void start(const launcher::ReceiverLaunch& launch, base::TemporaryPath&& conf);
  void rewrite_profile(const std::string& name, const base::TemporaryPath& conf, const std::string& label);
  void force_end_all();
  void save_session();
  void end_session_if_over();
  void settle();

  SupervisorHooks hooks_;
  SessionFiles files_;
  Timing timing_;
  MonotonicClock clock_;
  std::string tuner_;
  int session_number_ = 0;
  unsigned starts_ = 0;
  bool closing_ = false;
  bool restart_all_ = false;
  bool session_open_ = false;
  std::set<std::string> restart_names_;
  std::map<std::string, int> restart_attempts_;
  LinePump pump_;
  std::vector<std::unique_ptr<Child>> children_;
  std::map<std::string, PendingRestart> pending_restarts_;
  base::Timer start_again_;
  base::Timer closing_timer_;
};

}  // namespace receiver
