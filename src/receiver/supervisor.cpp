#include "receiver/supervisor.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <utility>

#include <fmt/format.h>

namespace receiver {

namespace {

/// Where the engine will make its socket and write its decodes.
void create_directories(const launcher::ReceiverLaunch& launch) {
  const std::filesystem::path sockets = std::filesystem::path(launch.control_path).parent_path();
  for (const auto& each : {sockets.parent_path(), sockets})
    base::make_private_directory(each);
  const std::filesystem::path directory = std::filesystem::path(launch.decode_path).parent_path();
  if (launch.writes_decodes && !directory.empty()) base::make_private_directory(directory);
}

}  // namespace

Supervisor::Supervisor(SupervisorHooks hooks, SessionFiles files, const Timing& timing, MonotonicClock clock)
    : hooks_(std::move(hooks)), files_(std::move(files)), timing_(timing), clock_(std::move(clock)) {}

Supervisor::~Supervisor() {
  for (const auto& child : children_)
    if (!child->exit_seen) g_subprocess_send_signal(child->process.get(), SIGTERM);
}

bool Supervisor::receiving() const {
  return !pending_restarts_.empty() ||
         std::any_of(children_.begin(), children_.end(), [](const auto& child) { return !child->temporary; });
}

// --- Starting ---

PreparedStart Supervisor::prepare(std::vector<launcher::ReceiverLaunch>& launches) {
  PreparedStart prepared;
  for (size_t i = 0; i < launches.size(); ++i) {
    launcher::ReceiverLaunch& launch = launches[i];
    const std::string path = files_.first_profile(i);
    launch.control_path = files_.control_socket(i);
    launch.profile["audio-control"] = launch.control_path;
    hooks_.write_profile(path, launch.profile);
    prepared.profiles.emplace_back(path);
    create_directories(launch);
  }
  return prepared;
}

void Supervisor::begin_session() {
  stop_temporary();
  ++session_number_;
}

void Supervisor::launch_all(PreparedStart prepared, const std::vector<launcher::ReceiverLaunch>& launches) {
  for (size_t i = 0; i < launches.size(); ++i)
    start(launches[i], std::move(prepared.profiles.at(i)));
}

void Supervisor::start(const launcher::ReceiverLaunch& launch, base::TemporaryPath&& conf) {
  hooks_.report("Starting receiver using the current settings.", launch.label());
  spawn_child(engine_command(conf.path()), launch, std::move(conf), false);
}

std::vector<std::string> Supervisor::engine_command(const std::string& conf) const {
  return {tuner_, "--config", conf, "--no-daemon"};
}

Child& Supervisor::spawn_child(const std::vector<std::string>& argv, const launcher::ReceiverLaunch& launch,
                               base::TemporaryPath&& conf, bool temporary) {
  auto child = std::make_unique<Child>();
  static_cast<EngineState&>(*child) = step({.temporary = temporary}, {Event::Kind::started}, {}, timing_).state;
  child->name = launch.name;
  child->label = launch.label();
  child->number = ++starts_;
  child->started = clock_();
  child->process = spawn(argv);
  child->conf = std::move(conf);
  session_open_ = session_open_ || !temporary;
  attach(*children_.emplace_back(std::move(child)));
  return *children_.back();
}

void Supervisor::attach(Child& child) {
  const auto ended = [this, &child](const std::string& error) {
    happened(child, {error.empty() ? Event::Kind::output_ended : Event::Kind::read_failed, error});
  };
  const auto line = [this, session = session_number_, label = child.label](std::string_view text) {
    hooks_.line(text, session == session_number_, label);
  };
  const auto cut = [this, label = child.label] {
    hooks_.report("The receiver printed a line longer than 4 MB; its end is left out.", label);
  };
  child.reader = LineReader(pump_, g_subprocess_get_stdout_pipe(child.process.get()), {line, cut, ended});
  child.exit_watch = ExitWatch(child.process.get(), [this, &child](bool clean, const std::string& error) {
    child.run_time = clock_() - child.started;
    happened(child, {error.empty() ? Event::Kind::exited : Event::Kind::wait_failed, error, clean});
  });
}

// --- The shell of the state machine ---

Surroundings Supervisor::surroundings(const std::string& name) const {
  const auto attempts = restart_attempts_.find(name);
  return {.closing = closing_,
          .in_plan = hooks_.find_launch(name) != nullptr,
          .start_again = restart_names_.count(name) > 0,
          .attempts = attempts == restart_attempts_.end() ? 0 : attempts->second};
}

void Supervisor::happened(Child& child, const Event& event) {
  Surroundings around = surroundings(child.name);
  around.has_profile = !child.conf.path().empty();
  around.run_time = child.run_time;
  Step next = step(child, event, around, timing_);
  static_cast<EngineState&>(child) = next.state;
  perform({child.name, child.label, &child.conf, &child}, next.actions);
}

void Supervisor::perform(Subject subject, const std::vector<Action>& actions) {
  const bool had_process = subject.child != nullptr;
  for (const Action& action : actions)
    perform(subject, action);
  if (had_process && !subject.child) settle();
}

void Supervisor::perform(Subject& subject, const Action& action) {
  switch (action.kind) {
    case Action::Kind::report:
      return hooks_.report(action.text, subject.label);
    case Action::Kind::terminate:
      return terminate(*subject.child);
    case Action::Kind::force_end:
      return g_subprocess_force_exit(subject.child->process.get());
    case Action::Kind::schedule_restart:
      return schedule_restart(subject, action);
    case Action::Kind::remove_profile:
      *subject.conf = {};
      return;
    case Action::Kind::drop:
      return drop(subject);
    case Action::Kind::start_same_profile:
      return start_same_profile(subject);
    case Action::Kind::start_new_profile:
      return start_new_profile(subject);
  }
}

void Supervisor::terminate(Child& child) {
  g_subprocess_send_signal(child.process.get(), SIGTERM);
  child.stop_guard = base::Timer::once(timing_.stop_guard, [this, &child] {
    if (still_running(child.process.get())) happened(child, {Event::Kind::guard_due});
  });
}

void Supervisor::drop(Subject& subject) {
  const auto record =
      std::find_if(children_.begin(), children_.end(), [&](const auto& child) { return child.get() == subject.child; });
  children_.erase(record);
  subject.child = nullptr;
  subject.conf = nullptr;
}

void Supervisor::start_new_profile(Subject& subject) {
  restart_names_.erase(subject.name);
  const launcher::ReceiverLaunch* launch = hooks_.find_launch(subject.name);
  if (!launch) return;
  try {
    const std::string path = files_.next_profile();
    hooks_.write_profile(path, launch->profile);
    base::TemporaryPath conf(path);
    create_directories(*launch);
    start(*launch, std::move(conf));
  } catch (const std::exception& error) {
    perform(subject, step({}, {Event::Kind::restart_failed, error.what()}, {}, timing_).actions);
  }
}

// --- Restarts after a crash ---

void Supervisor::schedule_restart(Subject& subject, const Action& action) {
  restart_attempts_[subject.name] = action.attempt;
  auto timer = base::Timer::once(action.delay, [this, name = subject.name] { restart_due(name); });
  pending_restarts_[subject.name] = {std::move(*subject.conf), subject.label, std::move(timer)};
}

void Supervisor::restart_due(const std::string& name) {
  auto record = pending_restarts_.extract(name);
  PendingRestart& restart = record.mapped();
  const Step next = step({.phase = Phase::waiting}, {Event::Kind::restart_due}, surroundings(name), timing_);
  perform({record.key(), restart.label, &restart.conf, nullptr}, next.actions);
  settle();
}

void Supervisor::start_same_profile(Subject& subject) {
  try {
    const std::string path = subject.conf->path();
    start(*hooks_.find_launch(subject.name), std::move(*subject.conf));
    hooks_.restarted(subject.name, path);
  } catch (const std::exception& error) {
    const Event failed{Event::Kind::restart_failed, error.what()};
    perform(subject, step({.phase = Phase::waiting}, failed, surroundings(subject.name), timing_).actions);
  }
}

void Supervisor::cancel_restarts() {
  while (!pending_restarts_.empty()) {
    auto record = pending_restarts_.extract(pending_restarts_.begin());
    PendingRestart& restart = record.mapped();
    perform({record.key(), restart.label, &restart.conf, nullptr},
            step({.phase = Phase::waiting}, {Event::Kind::stop}, {}, timing_).actions);
  }
  restart_attempts_.clear();
}

// --- Stopping, and starting anew ---

void Supervisor::stop_receivers() {
  restart_all_ = false;
  stop_all();
}

void Supervisor::stop_all() {
  start_again_.cancel();
  restart_names_.clear();
  save_session();
  cancel_restarts();
  for (const auto& child : children_)
    happened(*child, {Event::Kind::stop});
  if (receiving()) return;
  end_session_if_over();
  hooks_.changed();
}

void Supervisor::stop_temporary() {
  for (const auto& child : children_)
    happened(*child, {Event::Kind::stop_job});
}

void Supervisor::restart_changed(const std::string& name, const std::string& changes) {
  if (pending_restarts_.count(name) > 0) return update_restart_profile(name);
  for (const auto& child : children_) {
    if (child->name != name || child->temporary || child->stop_requested) continue;
    restart_names_.insert(name);
    return happened(*child, {Event::Kind::change, changes});
  }
}

void Supervisor::update_restart_profile(const std::string& name) {
  if (const auto waiting = pending_restarts_.find(name); waiting != pending_restarts_.end())
    return rewrite_profile(name, waiting->second.conf, waiting->second.label);
  for (const auto& child : children_)
    if (child->name == name && !child->temporary && !child->conf.path().empty())
      return rewrite_profile(name, child->conf, child->label);
}

void Supervisor::rewrite_profile(const std::string& name, const base::TemporaryPath& conf, const std::string& label) {
  try {
    if (const launcher::ReceiverLaunch* launch = hooks_.find_launch(name))
      hooks_.write_profile(conf.path(), launch->profile);
  } catch (const std::exception& error) {
    hooks_.report(fmt::format("Could not update the receiver's restart settings: {}", error.what()), label);
  }
}

void Supervisor::restart_all_receivers() {
  // Known before anything ends: nobody is to begin something else in between.
  restart_all_ = true;
  stop_all();
  if (!receiving()) settle();
}

void Supervisor::close() {
  save_session();
  closing_ = true;
  stop_temporary();
  if (receiving()) stop_receivers();
  if (children_.empty()) return hooks_.quit();
  closing_timer_ = base::Timer::once(timing_.closing_limit, [this] {
    force_end_all();
    hooks_.quit();
  });
}

void Supervisor::force_end_all() {
  for (const auto& child : children_)
    happened(*child, {Event::Kind::closing_due});
}

void Supervisor::save_session() {
  try {
    hooks_.save_session();
  } catch (const std::exception& error) {
    hooks_.report(fmt::format("Could not save session settings: {}", error.what()), "");
  }
}

void Supervisor::end_session_if_over() {
  if (receiving() || !std::exchange(session_open_, false)) return;
  save_session();
  hooks_.session_ended();
}

// What follows when a process has gone or a restart was due.
void Supervisor::settle() {
  end_session_if_over();
  if (restart_all_ && !receiving()) {
    restart_all_ = false;
    start_again_ = base::Timer::idle([this] {
      if (!closing_) hooks_.start_again();
    });
  }
  if (!closing_ || !children_.empty()) return hooks_.changed();
  closing_timer_.cancel();
  hooks_.quit();
}

}  // namespace receiver
