#include "receiver/lifecycle.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace receiver {

namespace {

using Kind = Action::Kind;

// One step in the making.
struct Stepping {
  EngineState& state;
  const Event& event;
  const Surroundings& around;
  const Timing& timing;
  std::vector<Action>& actions;

  void act(Kind kind) const { actions.push_back({kind}); }
  void report(std::string text) const { actions.push_back({Kind::report, std::move(text)}); }
};

bool has_process(const EngineState& state) {
  return state.phase != Phase::idle && state.phase != Phase::waiting;
}

void schedule_restart(const Stepping& s, std::chrono::nanoseconds run_time) {
  const int attempt = (run_time > s.timing.healthy_run ? 0 : s.around.attempts) + 1;
  const auto& table = s.timing.back_off;
  const auto delay = table.at(std::min(static_cast<size_t>(attempt), table.size()) - 1);
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(delay).count();
  s.report(fmt::format("Starting it again in {} s (attempt {}).", seconds, attempt));
  s.actions.push_back({Kind::schedule_restart, {}, delay, attempt});
  s.state = EngineState{.phase = Phase::waiting};
}

// Both ends have come: the record goes, and what follows is decided.
void gone(const Stepping& s) {
  const EngineState was = std::exchange(s.state, EngineState{});
  const bool as_meant = was.clean_exit || was.stop_requested;
  if (!was.temporary)
    s.report(as_meant ? "Receiver stopped." : "Receiver exited with an error. Other receivers continue.");
  if (!was.temporary && !as_meant && !s.around.closing && s.around.has_profile)
    schedule_restart(s, s.around.run_time);
  else
    s.act(Kind::remove_profile);
  s.act(Kind::drop);
  if (!was.temporary && !s.around.closing && s.around.start_again) s.act(Kind::start_new_profile);
}

void ended(const Stepping& s) {
  if (s.state.exit_seen && s.state.output_ended)
    gone(s);
  else if (s.state.phase == Phase::running)
    s.state.phase = Phase::ending;
}

void started(const Stepping& s) {
  if (!has_process(s.state)) s.state = EngineState{.phase = Phase::running, .temporary = s.state.temporary};
}

void exited(const Stepping& s) {
  if (!has_process(s.state) || s.state.exit_seen) return;
  s.state.exit_seen = true;
  s.state.clean_exit = s.event.clean;
  ended(s);
}

void wait_failed(const Stepping& s) {
  if (!has_process(s.state) || s.state.exit_seen) return;
  s.report(fmt::format("Process wait failed: {}", s.event.detail));
  exited(s);
}

void output_ended(const Stepping& s) {
  if (!has_process(s.state) || s.state.output_ended) return;
  s.state.output_ended = true;
  ended(s);
}

void read_failed(const Stepping& s) {
  if (!has_process(s.state) || s.state.output_ended) return;
  s.report(fmt::format("Log read failed: {}", s.event.detail));
  output_ended(s);
}

// Asks a process to end. One that has exited already, with lines still to be read, is only kept from restarting.
void ask_to_end(const Stepping& s, const std::string& words) {
  s.state.stop_requested = true;
  if (!s.state.exit_seen && !words.empty()) s.report(words);
  if (s.state.exit_seen) return;
  s.state.phase = Phase::stopping;
  s.act(Kind::terminate);
}

void stop(const Stepping& s) {
  if (s.state.phase == Phase::waiting) {
    s.state = EngineState{};
    s.act(Kind::remove_profile);
    s.report("Automatic restart cancelled.");
  } else if (has_process(s.state) && !s.state.temporary && !s.state.stop_requested) {
    ask_to_end(s, "Stopping receiver…");
  }
}

void stop_job(const Stepping& s) {
  if (has_process(s.state) && s.state.temporary && !s.state.exit_seen && !s.state.stop_requested) ask_to_end(s, {});
}

void change(const Stepping& s) {
  if (!has_process(s.state) || s.state.temporary || s.state.stop_requested) return;
  s.report(
      fmt::format("Restarting this receiver for its changed settings (changed: {}); the other receivers keep "
                  "running.",
                  s.event.detail));
  ask_to_end(s, {});
}

void force_end(const Stepping& s, const char* words) {
  if (!has_process(s.state) || s.state.exit_seen) return;
  s.state.phase = Phase::force_ended;
  s.act(Kind::force_end);
  s.report(words);
}

void guard_due(const Stepping& s) {
  if (s.state.phase == Phase::stopping) force_end(s, "It had not stopped 10 seconds after Stop, so Tarnwick ended it.");
}

void closing_due(const Stepping& s) {
  force_end(s, "The window was closing, so Tarnwick ended this receiver without waiting.");
}

void restart_due(const Stepping& s) {
  if (s.state.phase != Phase::waiting) return;
  if (s.around.closing || !s.around.in_plan) {
    s.state = EngineState{};
    s.act(Kind::remove_profile);
  } else {
    s.act(Kind::start_same_profile);
  }
}

void restart_failed(const Stepping& s) {
  if (has_process(s.state)) return;
  s.report(fmt::format("Could not start it again: {}", s.event.detail));
  if (s.state.phase == Phase::waiting) schedule_restart(s, {});
}

// In the order of Event::Kind.
constexpr void (*handlers[])(const Stepping&) = {started,     exited,      wait_failed, output_ended,
                                                 read_failed, stop,        stop_job,    change,
                                                 guard_due,   closing_due, restart_due, restart_failed};

}  // namespace

Step step(EngineState state, const Event& event, const Surroundings& around, const Timing& timing) {
  Step result{state, {}};
  handlers[static_cast<size_t>(event.kind)]({result.state, event, around, timing, result.actions});
  return result;
}

}  // namespace receiver
