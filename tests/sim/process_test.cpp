#include <algorithm>
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text.h"
#include "results/spot_summary.h"
#include "run_engine.h"
#include "sim/replay.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

/// Holds once the output has a text so many times.
auto after(const std::string& text, int times = 1) {
  return [text, times](const std::string& output) {
    std::size_t at = 0;
    for (int left = times; left > 0; --left, ++at) {
      at = output.find(text, at);
      if (at == std::string::npos) return false;
    }
    return true;
  };
}

class EngineTest : public testing::Test {
 protected:
  /// A profile of one RSPdx on 20 m.
  EngineRun receive(const EngineSetup& setup, const std::string& more = {}) {
    const std::string profile =
        files_.write("p.conf", "mode = decoder\nserial = 1706026B40\nbands = 20\nmodes = FT8,FT4\nall-txt = '" +
                                   (files_ / "ALL.TXT") + "'\n" + more);
    return run_engine(files_, {"--config", profile, "--no-daemon"}, setup);
  }
  EngineRun list(const std::string& scenario, double kill_after = 30) {
    EngineSetup setup{.scenario = "[station]\nlisting-delay=0\n" + scenario, .enough = {}, .kill_after = kill_after};
    return run_engine(files_, {"--config", "/dev/null", "--list-devices", "--api-library", "/nonexistent.so"}, setup);
  }

  test::TemporaryDirectory files_;
};

TEST_F(EngineTest, TellsCyclesAndLogsTheirDecodes) {
  const auto run = receive({"[station]\nrewind=1200\ntime-scale=1200\n", after(" spots; ", 60)});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.output, EndsWith("Receiver stopping.\n"));
  std::size_t cycles = 0;
  std::size_t spots = 0;
  for (const auto line : base::split(run.output, '\n')) {
    const auto summary = results::parse_spot_summary(line);
    if (!summary) continue;
    ++cycles;
    spots += summary->spots;
  }
  EXPECT_GE(cycles, 60U);
  EXPECT_GT(spots, 60U);
  const std::string log = test::content(files_ / "ALL.TXT");
  EXPECT_EQ(static_cast<std::size_t>(std::count(log.begin(), log.end(), '\n')), spots);
  for (const auto line : base::split(std::string_view(log).substr(0, log.size() - 1), '\n'))
    EXPECT_TRUE(sim::parse_logged(line)) << line;
}

TEST_F(EngineTest, ABurstTellsTheLastCyclesAtOnce) {
  const auto both = [](const std::string& output) { return after("\nFT8 ")(output) && after("\nFT4 ")(output); };
  // Without it the first summary of FT8 comes after a whole cycle.
  EXPECT_LT(receive({"[station]\nstart-burst=true\n", both}).seconds, 10);
}

TEST_F(EngineTest, KnownFrequenciesAreHeardWhenTheProfileWantsThem) {
  const auto run =
      receive({"[station]\nrewind=3600\ntime-scale=3600\n", after(" ch=psk20 ")}, "known-channels = true\n");
  EXPECT_THAT(run.output, HasSubstr(" ch=psk20 "));
  EXPECT_THAT(run.output, Not(HasSubstr(" ch=psk40 ")));
}

TEST_F(EngineTest, AReplayIsWhatIsHeard) {
  const std::string log = files_.write("old.txt", "231009_190145    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74\n");
  const std::string summary = "14.074000 MHz: 1 spots; callsigns=MI0OBR\n";
  const auto run = receive({"[station]\nrewind=120\ntime-scale=240\nreplay=" + log + "\n", after(summary)});
  EXPECT_THAT(run.output, HasSubstr(summary));
  EXPECT_THAT(test::content(files_ / "ALL.TXT"), HasSubstr("    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74\n"));
}

TEST_F(EngineTest, ALogThatCannotBeWrittenIsSaidOnce) {
  std::filesystem::create_directory(files_ / "ALL.TXT");
  const auto run = receive({"[station]\nrewind=600\ntime-scale=600\n", after(" spots; ", 10)});
  EXPECT_TRUE(after("failed: Is a directory")(run.output));
  EXPECT_FALSE(after("failed: Is a directory", 2)(run.output));
}

TEST_F(EngineTest, EndsAsTheScenarioHasIt) {
  EXPECT_EQ(receive({.scenario = "[faults]\nexit-after=0.1\nexit-status=7\n", .enough = {}}).status, 7);
  EXPECT_EQ(receive({.scenario = "[faults]\nexit-after=0\nexit-signal=9\n", .enough = {}}).signal, SIGKILL);
  const auto stubborn = receive({"[faults]\nignore-term=true\n", after("Decoder channels"), 20, 1});
  EXPECT_EQ(stubborn.signal, SIGKILL);
  const auto held = receive({.scenario = "[faults]\nexit-after=0\nhold-pipe=0.5\n", .enough = {}});
  EXPECT_EQ(held.status, 1);
  EXPECT_GE(held.pipe_seconds, held.seconds + 0.2);
}

TEST_F(EngineTest, PrintsWhatNoParserLikes) {
  const auto run =
      receive({"[faults]\nlong-line-after=0\nlong-line-bytes=300000\ninvalid-utf8-after=0\nno-line-feed=true\n",
               after(" end\n")});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.output, HasSubstr(std::string(300000, 'x') + "\n"));
  EXPECT_NE(base::valid_utf8(run.output), run.output);
  EXPECT_THAT(run.output, EndsWith("Receiver stopping."));
}

TEST_F(EngineTest, AFloodIsWholeAndKeepsItsRate) {
  const auto fast = receive({"[faults]\nflood-lines=50000\n", after("Simulated flood, line 50000 of 50000\n")});
  EXPECT_GE(std::count(fast.output.begin(), fast.output.end(), '\n'), 50000);
  const auto steady =
      receive({"[faults]\nflood-lines=300\nflood-rate=500\nflood-of=summaries\n", after(" spots; ", 300)});
  EXPECT_TRUE(after(" spots; ", 300)(steady.output));
  EXPECT_GT(steady.seconds, 0.5);
}

TEST_F(EngineTest, StopsThoughNobodyReads) {
  const std::string flood = "[faults]\nflood-lines=100000000\n";
  const auto blocked = receive({flood, {}, 0.5, 30, Reader::reads_nothing});
  EXPECT_EQ(blocked.status, 0);
  EXPECT_LT(blocked.seconds, 5);
  const auto orphan = receive({flood, {}, 20, 30, Reader::goes_away});
  EXPECT_EQ(orphan.status, 0);
  EXPECT_LT(orphan.seconds, 10);
}

TEST_F(EngineTest, RefusesWhatCannotBeReceived) {
  struct Case {
    const char* scenario;
    const char* more;
    std::string words;
  };
  const Case cases[] = {
      {"", "bands = 40\n", (files_ / "p.conf") + " line 6: Duplicate configuration option: bands"},
      {"", "frequencies = 14.074M\n", "Choose --bands or --frequencies, not both"},
      {"[receiver 1706026B40]\npresence=busy\n", "", "RSPdx 1706026B40 is in use by another program"},
      {"[station]\nreceivers=none\n", "", "No receiver is attached"},
      {"[nonsense]\n", "", (files_ / "scenario.ini") + ": there is no group [nonsense]"},
  };
  for (const Case& c : cases) {
    const auto run = receive({.scenario = c.scenario, .enough = {}}, c.more);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "tarnwick: " + c.words + "\n");
  }
  EXPECT_EQ(run_engine(files_, {"--nonsense"}, {}).output, "tarnwick: Unknown option: --nonsense\n");
}

TEST_F(EngineTest, ListsItsReceivers) {
  const auto normal = list("");
  EXPECT_EQ(normal.status, 0);
  EXPECT_THAT(normal.output, HasSubstr("0: RSPdx serial=1706026B40 available=1\n"));
  EXPECT_EQ(list("receivers=none\n").output, "");
  EXPECT_EQ(list("listing-fault=exit\nlisting-status=5\n").status, 5);
  EXPECT_EQ(list("listing-fault=die\n").signal, SIGKILL);
  EXPECT_THAT(list("listing-fault=rubbish\n").output, Not(HasSubstr("1706026B40")));
  EXPECT_EQ(list("listing-fault=hang\n", 0.5).signal, SIGKILL);
}

}  // namespace
