// The life of one receiver as a pure function: what is known, what happens, what to do about it.
//
// A receiver is idle until its engine is started. A running engine ends in two steps that come in either order: the
// process exits, and its output ends. Only when both have come has it gone, because lines may still be queued in the
// pipe, or a grandchild may hold it open. A receiver that has gone with an error nobody asked for waits for a restart;
// every other one is idle again.
//
//   idle ── started ──> running ── exited or output ended ──> ending ── the other one ──> idle, or waiting after a
//   crash
//                          └── Stop: SIGTERM ──> stopping ── 10 s ──> force-ended ── both ended ──> idle
//   waiting ── timer ──> running;   waiting ── Stop ──> idle;   waiting ── start failed ──> waiting, one step longer
//
// Nothing here reads a clock, a process or a file: that is the Supervisor's part.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "receiver/timing.h"

namespace receiver {

enum class Phase { idle, running, stopping, force_ended, ending, waiting };

/// What is known of one receiver.
struct EngineState {
  Phase phase = Phase::idle;
  bool exit_seen = false;       ///< the wait for the process finished
  bool output_ended = false;    ///< its output stream ended
  bool clean_exit = false;      ///< it ended with status 0
  bool stop_requested = false;  ///< it was asked to end, by Stop or to be started again with new settings
  bool temporary = false;       ///< started for one job, not part of the session
  bool operator==(const EngineState&) const = default;
};

struct Event {
  enum class Kind {
    started,         ///< a process was created
    exited,          ///< the process ended; `clean` says how
    wait_failed,     ///< how it ended cannot be known, for the reason `detail`: counts as an error
    output_ended,    ///< its last line has been read
    read_failed,     ///< its output cannot be read further, for the reason `detail`
    stop,            ///< Stop: for a receiver of the session
    stop_job,        ///< the end of all jobs: for a temporary engine
    change,          ///< it is to end and start again, for the changed settings `detail`
    guard_due,       ///< it is still alive when the stop guard fires
    closing_due,     ///< the window has waited long enough
    restart_due,     ///< the wait for a restart is over
    restart_failed,  ///< a process could not be created for a restart, for the reason `detail`
  };
  Kind kind;
  std::string detail = {};  ///< a reason, or the names of changed settings
  bool clean = false;       ///< it exited with status 0
};

/// What the step may depend on besides the receiver itself.
struct Surroundings {
  bool closing = false;                 ///< the window closes: nothing is started any more
  bool in_plan = true;                  ///< the running plan holds this receiver
  bool has_profile = true;              ///< the engine was given a profile file of the session
  bool start_again = false;             ///< it is on the list of receivers to start with changed settings
  int attempts = 0;                     ///< restarts so far in the current run of failures
  std::chrono::nanoseconds run_time{};  ///< how long the process ran, until its exit
};

struct Action {
  enum class Kind {
    report,              ///< say `text` under the receiver's label
    terminate,           ///< SIGTERM, and arm the stop guard
    force_end,           ///< SIGKILL
    schedule_restart,    ///< keep the profile and arm the restart timer for `delay`
    remove_profile,      ///< unlink the profile file
    drop,                ///< forget the process
    start_same_profile,  ///< say so and start the engine with the profile that it had
    start_new_profile,   ///< write a new profile from the plan, then the same
  };
  Kind kind;
  std::string text = {};
  std::chrono::milliseconds delay{};
  int attempt = 0;  ///< of a restart: its number in the run of failures
  bool operator==(const Action&) const = default;
};

struct Step {
  EngineState state;
  std::vector<Action> actions;  ///< to be done in this order
};

/// What follows from `event`. An event that does not fit the state changes nothing.
Step step(EngineState state, const Event& event, const Surroundings& around, const Timing& timing = {});

}  // namespace receiver
