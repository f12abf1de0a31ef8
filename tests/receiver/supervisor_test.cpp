#include "receiver/supervisor.h"

#include <unistd.h>

#include <gmock/gmock.h>

#include "station.h"

namespace receiver {
namespace {

using namespace testing_station;
using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const char* const starting = "Starting receiver using the current settings.";

TEST(Supervisor, RunsAnEngineFromStartToStop) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver("a", runs)}));
  EXPECT_TRUE(station.supervisor->receiving());
  station.until_printed("a: up");
  EXPECT_THAT(station.files(), ElementsAre("session-77-0.conf"));
  EXPECT_EQ(station.plan[0].profile.at("audio-control"), station.directory / "state/audio-control/audio-77-0.sock");
  EXPECT_EQ(station.plan[0].control_path, station.plan[0].profile.at("audio-control"));
  station.supervisor->stop_receivers();
  EXPECT_TRUE(station.supervisor->receiving());
  EXPECT_EQ(station.sessions_ended, 0);
  station.until_over();
  EXPECT_THAT(station.said,
              ElementsAre(std::string("a: ") + starting, "a: Stopping receiver…", "a: Receiver stopped."));
  EXPECT_THAT(station.files(), IsEmpty());
  EXPECT_EQ(station.sessions_ended, 1);
  EXPECT_EQ(station.saved, 2);  // at Stop and at the end
}

TEST(Supervisor, GivesTheEngineItsCommandLineAndTheLaunchersSurroundings) {
  Station station;
  const std::string script =
      "echo $# $1 ${2##*/} $3; pwd; read line || echo no input; echo group $(cut -d' ' -f5 /proc/$$/stat)\n"
      "echo error >&2; printf 'caf\\351 last'";
  ASSERT_TRUE(station.start({station.receiver("a", script)}));
  station.until_over();
  EXPECT_THAT(station.lines, ElementsAre("a: 3 --config session-77-0.conf --no-daemon",
                                         "a: " + std::filesystem::current_path().string(), "a: no input",
                                         "a: group " + std::to_string(::getpgrp()), "a: error", "a: caf\351 last"));
  EXPECT_THAT(station.said, ElementsAre(std::string("a: ") + starting, "a: Receiver stopped."));
  EXPECT_EQ(station.sessions_ended, 1);
}

TEST(Supervisor, EndsByForceWhatIgnoresTheSignal) {
  Station station({.stop_guard = 20ms});
  ASSERT_TRUE(station.start({station.receiver("a", ignores_term)}));
  station.until_printed("a: up");
  station.supervisor->stop_receivers();
  station.until_over();
  EXPECT_THAT(station.said, ElementsAre(std::string("a: ") + starting, "a: Stopping receiver…",
                                        "a: It had not stopped 10 seconds after Stop, so Tarnwick ended it.",
                                        "a: Receiver stopped."));
}

TEST(Supervisor, TakesAProcessWhosePipeAGrandchildHoldsForGone) {
  Station station({.stop_guard = 300ms});
  ASSERT_TRUE(station.start({station.receiver("a", "{ sleep 0.5; echo late; } & echo up; exec sleep 30")}));
  station.until_printed("a: up");
  station.supervisor->stop_receivers();
  test::run_for(350ms);  // the guard has fired
  EXPECT_TRUE(station.supervisor->receiving());
  station.until_over();
  EXPECT_TRUE(station.printed("a: late"));
  EXPECT_FALSE(station.reported("a: It had not stopped 10 seconds after Stop, so Tarnwick ended it."));
}

TEST(Supervisor, RestartsACrashedEngineForEverWithItsOwnProfile) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver("a", "echo crashing; exit 1"), station.receiver("b", runs)}));
  test::run_until([&] {
    return station.supervisor->restart_attempts().count("a") > 0 && station.supervisor->restart_attempts().at("a") >= 7;
  });
  std::vector<std::string> expected;
  for (int n = 1; n <= 7; ++n) {
    expected.push_back(std::string("a: ") + starting);
    expected.push_back("a: Receiver exited with an error. Other receivers continue.");
    expected.push_back("a: Starting it again in 0 s (attempt " + std::to_string(n) + ").");
  }
  std::vector<std::string> about_a;
  for (const std::string& text : station.said)
    if (text.starts_with("a: ") && about_a.size() < expected.size()) about_a.push_back(text);
  EXPECT_EQ(about_a, expected);
  EXPECT_THAT(station.files(), ElementsAre("session-77-0.conf", "session-77-1.conf"));
  station.until_printed("b: up");
  EXPECT_EQ(station.sessions_ended, 0);
}

TEST(Supervisor, StopsWhileOneWaitsAndAnotherRuns) {
  Timing timing;
  timing.back_off.fill(50ms);
  Station station(timing);
  station.saving_fails = true;
  ASSERT_TRUE(station.start({station.receiver("a", "exit 1"), station.receiver("b", runs)}));
  test::run_until([&] { return station.supervisor->pending_restarts().count("a") > 0 && station.printed("b: up"); });
  station.said.clear();
  station.supervisor->stop_receivers();
  EXPECT_THAT(station.said, ElementsAre("Could not save session settings: read-only", "a: Automatic restart cancelled.",
                                        "b: Stopping receiver…"));
  EXPECT_THAT(station.supervisor->restart_attempts(), IsEmpty());
  station.until_over();
  test::run_for(80ms);
  EXPECT_THAT(station.said, Not(Contains(std::string("a: ") + starting)));
  EXPECT_THAT(station.files(), IsEmpty());
}

TEST(Supervisor, AWaitingRestartAloneIsASessionThatStopEnds) {
  Timing timing = quick_timing();
  timing.back_off[0] = 10s;
  Station station(timing);
  ASSERT_TRUE(station.start({station.receiver("a", "exit 1")}));
  test::run_until([&] { return station.supervisor->children().empty(); });
  EXPECT_TRUE(station.supervisor->receiving());
  EXPECT_EQ(station.sessions_ended, 0);
  station.supervisor->stop_receivers();
  EXPECT_FALSE(station.supervisor->receiving());
  EXPECT_EQ(station.sessions_ended, 1);
  EXPECT_THAT(station.files(), IsEmpty());
}

TEST(Supervisor, StopReachesACrashedEngineThatIsStillRead) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver("a", "{ sleep 0.1; echo last words; } & exit 1")}));
  test::run_until([&] { return station.supervisor->children().at(0)->exit_seen; });
  EXPECT_THAT(station.supervisor->pending_restarts(), IsEmpty());
  station.supervisor->stop_receivers();
  EXPECT_TRUE(station.supervisor->children().at(0)->stop_requested);
  station.until_over();
  EXPECT_THAT(station.said, ElementsAre(std::string("a: ") + starting, "a: Receiver stopped."));
  EXPECT_THAT(station.lines, ElementsAre("a: last words"));
}

TEST(Supervisor, MeasuresARunByItsExitOnTheClock) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver(
      "a",
      "n=$(cat $dir/n); n=$((n+1)); echo $n > $dir/n; echo up $n; while [ ! -e $dir/end$n ]; do sleep 0.003; done\n"
      "{ sleep 0.05; } & exit 1")}));
  const auto crash_after = [&](const std::string& n, std::chrono::nanoseconds run_time) {
    station.until_printed("a: up " + n);
    station.now += run_time;
    station.mark("end" + n);
    test::run_until([&] { return station.supervisor->children().at(0)->exit_seen; });
    station.now += 1h;  // its grandchild holds the pipe: no time of its own
    test::run_until([&] { return station.supervisor->children().empty(); });
    return station.said.back();
  };
  EXPECT_EQ(crash_after("1", 10s), "a: Starting it again in 0 s (attempt 1).");
  EXPECT_EQ(crash_after("2", 600s), "a: Starting it again in 0 s (attempt 2).");
  EXPECT_EQ(crash_after("3", 601s), "a: Starting it again in 0 s (attempt 1).");
}

TEST(Supervisor, KeepsTryingWhileTheEngineIsMissing) {
  Station station;
  ASSERT_TRUE(station.start(
      {station.receiver("a", "while [ ! -e $dir/go ]; do sleep 0.003; done; exit 1"), station.receiver("b", runs)}));
  station.until_printed("b: up");
  std::filesystem::remove(station.engine);
  station.mark("go");
  test::run_until([&] { return station.reported("a: Starting it again in 0 s (attempt 4)."); });
  EXPECT_THAT(station.said, Contains(HasSubstr("a: Could not start it again: ")).Times(3));
  station.plan.erase(station.plan.begin());  // and stops trying when the plan does not hold it any more
  test::run_until([&] { return station.supervisor->pending_restarts().empty(); });
  EXPECT_THAT(station.files(), ElementsAre("session-77-1.conf"));
}

TEST(Supervisor, AStartThatFailsLeavesNothing) {
  struct Row {
    const char* what;
    std::function<void(Station&)> arrange;
    const char* words;
    std::vector<std::string> left;
    int sessions;
  };
  const Row rows[]{
      {"no engine", [](Station& s) { s.supervisor->use_engine(s.directory / "absent"); }, "No such file", {}, 0},
      {"not executable",
       [](Station& s) { s.supervisor->use_engine(s.directory.write("plain", "")); },
       "Permission denied",
       {},
       0},
      {"second profile", [](Station& s) { s.refused_profile = "session-77-1.conf"; }, "disk full", {}, 0},
      {"second engine",
       [](Station& s) {
         s.on_report = [&s](const std::string& text) {
           if (text == std::string("b: ") + starting) s.supervisor->use_engine("/nonexistent");
         };
       },
       "No such file",
       {"session-77-0.conf"},
       1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Station station;
    row.arrange(station);
    EXPECT_FALSE(
        station.start({station.receiver("a", runs), station.receiver("b", runs), station.receiver("c", runs)}));
    EXPECT_THAT(station.error, HasSubstr(row.words));
    EXPECT_EQ(station.files_at_failure, row.left);
    station.until_over();
    EXPECT_THAT(station.files(), IsEmpty());
    EXPECT_EQ(station.sessions_ended, row.sessions);
  }
}

TEST(Supervisor, MakesTheDirectoriesOfDecodeFiles) {
  Station station;
  launcher::ReceiverLaunch launch = station.receiver("a", "exit 0");
  launch.writes_decodes = true;
  launch.decode_path = station.directory / "log/of/ALL.TXT";
  ASSERT_TRUE(station.start({launch}));
  EXPECT_TRUE(station.marked("log/of"));
  station.until_over();
}

TEST(Supervisor, LinesOfAnEarlierSessionDoNotCount) {
  Station station;
  const auto job =
      station.receiver("job", "trap '' TERM; echo early; while [ ! -e $dir/go ]; do sleep 0.003; done; echo late");
  const std::string conf = station.directory.write("config/job.conf", job.profile.at("run"));
  station.supervisor->spawn_child(station.supervisor->engine_command(conf), job, base::TemporaryPath(conf), true);
  EXPECT_FALSE(station.supervisor->receiving());
  station.until_printed("job: early");
  ASSERT_TRUE(station.start({station.receiver("a", "echo new")}));
  station.mark("go");
  station.until_over();
  EXPECT_THAT(station.lines, testing::UnorderedElementsAre("job: early", "job: late (late)", "a: new"));
  EXPECT_THAT(station.said, Not(Contains(HasSubstr("job: "))));
  EXPECT_THAT(station.files(), IsEmpty());
}

TEST(Supervisor, RestartsOneReceiverForChangedSettings) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver("a", runs), station.receiver("b", runs)}));
  station.until_printed("a: up");
  station.until_printed("b: up");
  const std::string other = station.pid(1);
  for (const std::string count : {"1", "2"}) {
    station.plan[0].profile["run"] = "echo new " + count + "; exec sleep 30";
    station.supervisor->restart_changed("a", "Antenna");
    EXPECT_THAT(station.supervisor->restart_names(), ElementsAre("a"));
    station.until_printed("a: new " + count);
    EXPECT_THAT(station.supervisor->restart_names(), IsEmpty());
    EXPECT_THAT(station.files(), ElementsAre("session-77-1.conf", "session-77-r" + count + ".conf"));
  }
  EXPECT_THAT(station.said, Contains("a: Restarting this receiver for its changed settings (changed: Antenna); the "
                                     "other receivers keep running."));
  EXPECT_EQ(station.pid(0), other);

  station.refused_profile = "session-77-r3.conf";
  station.supervisor->restart_changed("a", "Antenna");
  test::run_until([&] { return station.supervisor->children().size() == 1; });
  EXPECT_EQ(station.said.back(), "a: Could not start it again: disk full");
  EXPECT_EQ(station.pid(0), other);
  EXPECT_EQ(station.sessions_ended, 0);
}

TEST(Supervisor, StopOvertakesARestartForChangedSettings) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver("a", runs)}));
  station.until_printed("a: up");
  station.supervisor->restart_changed("a", "Antenna");
  station.supervisor->stop_receivers();
  station.supervisor->restart_changed("a", "Antenna");
  station.until_over();
  EXPECT_EQ(station.said.back(), "a: Receiver stopped.");
  EXPECT_EQ(station.sessions_ended, 1);
}

TEST(Supervisor, ChangedSettingsReachAReceiverThatWaits) {
  Timing timing = quick_timing();
  timing.back_off.fill(100ms);
  Station station(timing);
  ASSERT_TRUE(station.start({station.receiver("a", "exit 1")}));
  test::run_until([&] { return !station.supervisor->pending_restarts().empty(); });
  station.plan[0].profile["run"] = "echo changed; exec sleep 30";
  station.supervisor->restart_changed("a", "Antenna");
  EXPECT_THAT(station.supervisor->restart_names(), IsEmpty());
  station.until_printed("a: changed");
  EXPECT_THAT(station.files(), ElementsAre("session-77-0.conf"));
}

TEST(Supervisor, SaysWhenAWaitingProfileCannotBeChanged) {
  Timing timing = quick_timing();
  timing.back_off[0] = 10s;
  Station station(timing);
  ASSERT_TRUE(station.start({station.receiver("a", "exit 1")}));
  test::run_until([&] { return !station.supervisor->pending_restarts().empty(); });
  station.refused_profile = "session-77-0.conf";
  station.supervisor->restart_changed("a", "Antenna");
  EXPECT_EQ(station.said.back(), "a: Could not update the receiver's restart settings: disk full");
  EXPECT_THAT(station.files(), ElementsAre("session-77-0.conf"));
}

TEST(Supervisor, StartsAllAgainOnceTheLastHasStopped) {
  Timing timing = quick_timing();
  timing.back_off[0] = 10s;
  Station station(timing);
  ASSERT_TRUE(station.start({station.receiver("a", runs), station.receiver("b", "exit 1")}));
  test::run_until([&] { return !station.supervisor->pending_restarts().empty() && station.printed("a: up"); });
  station.supervisor->restart_all_receivers();
  EXPECT_EQ(station.starts_again, 0);
  test::run_until([&] { return station.starts_again > 0; });
  EXPECT_FALSE(station.supervisor->receiving() || station.supervisor->restart_all());

  // With nothing but a waiting restart there is no process whose end could be waited for.
  ASSERT_TRUE(station.start({station.receiver("b", "exit 1")}));
  test::run_until([&] { return station.supervisor->children().empty(); });
  station.supervisor->restart_all_receivers();
  EXPECT_TRUE(station.ended_to_start_again) << "nobody may begin something else in between";
  test::run_until([&] { return station.starts_again > 1; });

  ASSERT_TRUE(station.start({station.receiver("a", runs)}));
  station.supervisor->restart_all_receivers();
  station.supervisor->stop_receivers();  // the operator thinks again
  station.until_over();
  test::run_for(10ms);
  EXPECT_EQ(station.starts_again, 2);
}

TEST(Supervisor, ClosesAtOnceWithNothingToWaitFor) {
  Station station;
  station.supervisor->close();
  EXPECT_EQ(station.quits, 1);
  EXPECT_EQ(station.saved, 1);

  Timing timing = quick_timing();
  timing.back_off[0] = 10s;
  Station waiting(timing);
  ASSERT_TRUE(waiting.start({waiting.receiver("a", "exit 1")}));
  test::run_until([&] { return waiting.supervisor->children().empty(); });
  waiting.supervisor->close();
  EXPECT_EQ(waiting.quits, 1);
  EXPECT_EQ(waiting.said.back(), "a: Automatic restart cancelled.");
}

TEST(Supervisor, ClosesWhenTheLastHasStopped) {
  Station station;
  ASSERT_TRUE(station.start({station.receiver("a", runs),
                             station.receiver("b", "trap 'exit 1' TERM; echo up; while :; do sleep 0.003; done")}));
  const auto job = station.receiver("job", runs);
  const std::string conf = station.directory.write("config/job.conf", job.profile.at("run"));
  station.supervisor->spawn_child(station.supervisor->engine_command(conf), job, base::TemporaryPath(conf), true);
  for (const char* line : {"a: up", "b: up", "job: up"})
    station.until_printed(line);
  station.supervisor->close();
  EXPECT_EQ(station.quits, 0);
  test::run_until([&] { return station.quits > 0; });
  EXPECT_THAT(station.supervisor->children(), IsEmpty());
  EXPECT_THAT(station.files(), IsEmpty());
  EXPECT_EQ(station.quits, 1);
  EXPECT_EQ(station.sessions_ended, 1);
}

TEST(Supervisor, ClosesInTheEndWhateverStillRuns) {
  Timing timing = quick_timing();
  timing.closing_limit = 300ms;
  Station station(timing);
  ASSERT_TRUE(station.start({station.receiver("a", ignores_term), station.receiver("b", runs)}));
  station.until_printed("a: up");
  station.until_printed("b: up");
  station.supervisor->close();
  test::run_until([&] { return station.quits > 0; });
  EXPECT_EQ(station.said.back(), "a: The window was closing, so Tarnwick ended this receiver without waiting.");
  EXPECT_FALSE(station.reported("b: The window was closing, so Tarnwick ended this receiver without waiting."));
  station.supervisor.reset();
  EXPECT_THAT(station.files(), IsEmpty());
}

TEST(Supervisor, GoesWithoutAnotherWord) {
  Timing timing = quick_timing();
  timing.back_off[0] = 5ms;
  Station station(timing);
  ASSERT_TRUE(station.start(
      {station.receiver("a",
                        "trap 'touch $dir/ended; echo ended; exit 0' TERM; echo up; while :; do sleep 0.003; done"),
       station.receiver("b", "exit 1")}));
  test::run_until([&] { return station.printed("a: up") && !station.supervisor->pending_restarts().empty(); });
  station.supervisor.reset();
  const auto said = station.said;
  test::run_until([&] { return station.marked("ended"); });
  test::run_for(20ms);
  EXPECT_EQ(station.said, said);
  EXPECT_FALSE(station.printed("a: ended"));
  EXPECT_EQ(station.sessions_ended, 0);
  EXPECT_THAT(station.files(), IsEmpty());
}

}  // namespace
}  // namespace receiver
