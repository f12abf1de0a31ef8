#include "receiver/lifecycle.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace receiver {
namespace {

using namespace std::chrono_literals;

const Event started{Event::Kind::started};
const Event clean_exit{Event::Kind::exited, "", true};
const Event crash{Event::Kind::exited, "", false};
const Event output_ended{Event::Kind::output_ended};
const Event stop{Event::Kind::stop};
const Event stop_job{Event::Kind::stop_job};
const Event change{Event::Kind::change, "Antenna"};
const Event guard_due{Event::Kind::guard_due};
const Event closing_due{Event::Kind::closing_due};
const Event restart_due{Event::Kind::restart_due};

std::string text_of(const Action& action) {
  switch (action.kind) {
    case Action::Kind::report:
      return action.text;
    case Action::Kind::terminate:
      return "<terminate>";
    case Action::Kind::force_end:
      return "<force end>";
    case Action::Kind::schedule_restart:
      return fmt::format("<restart {} in {} ms>", action.attempt, action.delay.count());
    case Action::Kind::remove_profile:
      return "<remove profile>";
    case Action::Kind::drop:
      return "<drop>";
    case Action::Kind::start_same_profile:
      return "<start again>";
    case Action::Kind::start_new_profile:
      return "<start changed>";
  }
  return "?";
}

struct Life {
  EngineState state;
  std::vector<std::string> last;  // what the last event led to
};

Life live(const std::vector<Event>& events, const Surroundings& around = {}, EngineState state = {}) {
  Life life{state, {}};
  for (const Event& event : events) {
    Step next = step(life.state, event, around);
    life.state = next.state;
    life.last.clear();
    for (const Action& action : next.actions)
      life.last.push_back(text_of(action));
  }
  return life;
}

const char* const stopped = "Receiver stopped.";
const char* const crashed = "Receiver exited with an error. Other receivers continue.";

struct Case {
  const char* what;
  std::vector<Event> events;
  Phase phase;
  std::vector<std::string> last;
  Surroundings around = {};
  bool temporary = false;
};

TEST(Lifecycle, OneReceiverFromStartToEnd) {
  const std::vector<std::string> first_restart{crashed, "Starting it again in 5 s (attempt 1).",
                                               "<restart 1 in 5000 ms>", "<drop>"};
  const std::vector<std::string> ended{stopped, "<remove profile>", "<drop>"};
  const std::vector<std::string> silent{"<remove profile>", "<drop>"};
  const std::vector<Case> cases{
      {"exit alone is not the end", {started, crash}, Phase::ending, {}},
      {"nor is the end of the output", {started, output_ended}, Phase::ending, {}},
      {"exit with 0, then output", {started, clean_exit, output_ended}, Phase::idle, ended},
      {"output, then exit with 0", {started, output_ended, clean_exit}, Phase::idle, ended},
      {"crash", {started, crash, output_ended}, Phase::waiting, first_restart},
      {"crash, output first", {started, output_ended, crash}, Phase::waiting, first_restart},
      {"crash while closing",
       {started, crash, output_ended},
       Phase::idle,
       {crashed, "<remove profile>", "<drop>"},
       {.closing = true}},
      {"crash without a profile",
       {started, crash, output_ended},
       Phase::idle,
       {crashed, "<remove profile>", "<drop>"},
       {.has_profile = false}},
      {"stop", {started, stop}, Phase::stopping, {"Stopping receiver…", "<terminate>"}},
      {"stop twice says it once", {started, stop, stop}, Phase::stopping, {}},
      {"stop is not over with the exit", {started, stop, crash}, Phase::stopping, {}},
      {"stopped by the signal", {started, stop, crash, output_ended}, Phase::idle, ended},
      {"stop of a crashed one that is still read", {started, crash, stop, output_ended}, Phase::idle, ended},
      {"such a stop sends nothing", {started, crash, stop}, Phase::ending, {}},
      {"stop of one that closed its output",
       {started, output_ended, stop},
       Phase::stopping,
       {"Stopping receiver…", "<terminate>"}},
      {"the guard",
       {started, stop, guard_due},
       Phase::force_ended,
       {"<force end>", "It had not stopped 10 seconds after Stop, so Tarnwick ended it."}},
      {"after the guard", {started, stop, guard_due, crash, output_ended}, Phase::idle, ended},
      {"the guard of one that has exited", {started, stop, crash, guard_due}, Phase::stopping, {}},
      {"a guard without a stop", {started, guard_due}, Phase::running, {}},
      {"the window cannot wait",
       {started, stop, closing_due},
       Phase::force_ended,
       {"<force end>", "The window was closing, so Tarnwick ended this receiver without waiting."}},
      {"the window does not wait for what has exited", {started, crash, closing_due}, Phase::ending, {}},
      {"a change",
       {started, change},
       Phase::stopping,
       {"Restarting this receiver for its changed settings (changed: Antenna); the other receivers keep running.",
        "<terminate>"}},
      {"a change, to its end",
       {started, change, crash, output_ended},
       Phase::idle,
       {stopped, "<remove profile>", "<drop>", "<start changed>"},
       {.start_again = true}},
      {"a change overtaken by the close of the window",
       {started, change, crash, output_ended},
       Phase::idle,
       ended,
       {.closing = true, .start_again = true}},
      {"a change during Stop", {started, stop, change}, Phase::stopping, {}},
      {"a wait that fails",
       {started, output_ended, {Event::Kind::wait_failed, "no child"}},
       Phase::waiting,
       {"Process wait failed: no child", crashed, "Starting it again in 5 s (attempt 1).", "<restart 1 in 5000 ms>",
        "<drop>"}},
      {"a read that fails",
       {started, clean_exit, {Event::Kind::read_failed, "bad"}},
       Phase::idle,
       {"Log read failed: bad", stopped, "<remove profile>", "<drop>"}},
      {"a job is not stopped by Stop", {started, stop}, Phase::running, {}, {}, true},
      {"nor by a change", {started, change}, Phase::running, {}, {}, true},
      {"a job is stopped without a word", {started, stop_job}, Phase::stopping, {"<terminate>"}, {}, true},
      {"the end of jobs leaves receivers alone", {started, stop_job}, Phase::running, {}},
      {"a job ends without a word", {started, crash, output_ended}, Phase::idle, silent, {}, true},
      {"a job never joins a restart",
       {started, clean_exit, output_ended},
       Phase::idle,
       silent,
       {.start_again = true},
       true},
      {"the window cannot wait for jobs either",
       {started, stop_job, closing_due},
       Phase::force_ended,
       {"<force end>", "The window was closing, so Tarnwick ended this receiver without waiting."},
       {},
       true},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    const Life life = live(test.events, test.around, {.temporary = test.temporary});
    EXPECT_EQ(life.state.phase, test.phase);
    EXPECT_EQ(life.last, test.last);
  }
}

TEST(Lifecycle, WaitingForARestart) {
  const EngineState waiting{.phase = Phase::waiting};
  const std::vector<Case> cases{
      {"due", {restart_due}, Phase::waiting, {"<start again>"}},
      {"started", {restart_due, started}, Phase::running, {}},
      {"not in the plan any more", {restart_due}, Phase::idle, {"<remove profile>"}, {.in_plan = false}},
      {"the window closes", {restart_due}, Phase::idle, {"<remove profile>"}, {.closing = true}},
      {"stop", {stop}, Phase::idle, {"<remove profile>", "Automatic restart cancelled."}},
      {"cannot be started",
       {{Event::Kind::restart_failed, "no such file"}},
       Phase::waiting,
       {"Could not start it again: no such file", "Starting it again in 30 s (attempt 3).", "<restart 3 in 30000 ms>"},
       {.attempts = 2}},
      {"changed settings cannot be started: given up",
       {stop, {Event::Kind::restart_failed, "no such file"}},
       Phase::idle,
       {"Could not start it again: no such file"}},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.what);
    const Life life = live(test.events, test.around, waiting);
    EXPECT_EQ(life.state.phase, test.phase);
    EXPECT_EQ(life.last, test.last);
  }
}

TEST(Lifecycle, BackOffGrowsAndALongRunForgives) {
  struct Row {
    int attempts;
    std::chrono::nanoseconds run_time;
    const char* says;
  };
  const Row rows[]{
      {0, 10s, "Starting it again in 5 s (attempt 1)."},        {1, 10s, "Starting it again in 15 s (attempt 2)."},
      {2, 0s, "Starting it again in 30 s (attempt 3)."},        {3, 0s, "Starting it again in 60 s (attempt 4)."},
      {4, 0s, "Starting it again in 120 s (attempt 5)."},       {5, 0s, "Starting it again in 120 s (attempt 6)."},
      {1000, 0s, "Starting it again in 120 s (attempt 1001)."}, {4, 600s, "Starting it again in 120 s (attempt 5)."},
      {4, 600s + 1ns, "Starting it again in 5 s (attempt 1)."}, {9, 601s, "Starting it again in 5 s (attempt 1)."},
  };
  for (const Row& row : rows) {
    const Life life = live({started, crash, output_ended}, {.attempts = row.attempts, .run_time = row.run_time});
    ASSERT_EQ(life.last.size(), 4U);
    EXPECT_EQ(life.last[1], row.says);
  }
}

}  // namespace
}  // namespace receiver
