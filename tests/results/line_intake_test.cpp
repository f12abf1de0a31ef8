#include "results/line_intake.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace {

using results::ActivityModel;
using results::LineIntake;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double noon = 1791028800;
constexpr auto label = "RSPdx · 7";
constexpr auto spots_line = "FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC,W9XYZ";

// An intake whose sinks write down what they were told.
class LineIntakeTest : public testing::Test {
 protected:
  LineIntakeTest() {
    launcher::ReceiverLaunch launch;
    launch.name = "7";
    launch.model = "RSPdx";
    launch.channels = {{"FT8", 14074000}};
    activity.begin_session({launch});
    log.open(directory / "gui.log");
  }

  results::IntakeSinks sinks() {
    results::IntakeSinks all;
    all.statistics = [this](auto line, auto from) { told.push_back(fmt::format("statistics {}|{}", line, from)); };
    all.text_modes = [this](auto line, auto from) { told.push_back(fmt::format("text {}|{}", line, from)); };
    all.images = [this](const auto& line, auto from) { told.push_back(fmt::format("image {}|{}", line.kind, from)); };
    all.pane = [this](auto pane, auto tag, auto text) {
      told.push_back(fmt::format("pane {} {} {}", pane_name(pane), tag_name(tag), text));
    };
    all.diagnostics = [this](auto line, auto from) { told.push_back(fmt::format("diagnostics {}|{}", line, from)); };
    all.rate = [this](const results::RateObservation& seen) {
      told.push_back(fmt::format("rate {} {} {} {} {} {} {}", static_cast<int>(seen.family), seen.now - noon,
                                 seen.capture_time - noon, seen.cycle_seconds, seen.frequency, seen.key, seen.spots));
      EXPECT_EQ(activity.total_decodes(), counted_before_) << "the rate store comes before the counters";
    };
    all.new_channel = [this] { told.push_back("new channel"); };
    all.refresh = [this] { told.push_back("refresh"); };
    return all;
  }

  std::vector<std::string> take(std::string_view line, bool counts = true, std::string_view from = label) {
    told.clear();
    counted_before_ = activity.total_decodes();
    intake.take(line, counts, from);
    return told;
  }
  std::string logged() { return test::content(directory / "gui.log"); }

  test::TemporaryDirectory directory;
  ActivityModel activity;
  results::GuiLog log;
  double now = noon + 16;
  std::vector<std::string> told;
  LineIntake intake{activity, log, [this] { return now; }, sinks()};

 private:
  std::uint64_t counted_before_ = 0;
};

TEST_F(LineIntakeTest, ASummaryIsToldShownLoggedAndCountedInOrder) {
  EXPECT_THAT(
      take(spots_line),
      ElementsAre(fmt::format("statistics {}|{}", spots_line, label), fmt::format("text {}|{}", spots_line, label),
                  "pane FT8 good 12:00:16Z [RSPdx · 7] FT8 261003_120000 14.074000 MHz: 12 spots\n",
                  "rate 0 16 0 15 14074000 FT8:14.074000 12", "refresh"));
  EXPECT_EQ(logged(), fmt::format("2026-10-03 12:00:16Z [{}] {}\n", label, spots_line)) << "the list is kept here";
  EXPECT_EQ(activity.total_spots(), 12u);
  EXPECT_EQ(activity.total_decodes(), 1u);
  EXPECT_EQ(activity.record("FT8:14.074000")->recent.begin()->first, noon);
}

TEST_F(LineIntakeTest, EachModeGoesToItsFamilyWithItsCycle) {
  const std::pair<const char*, const char*> cases[] = {
      {"FT4 261003_120007 14.080000 MHz: 2 spots", "rate 0 16 7 7.5 14080000 FT4:14.080000 2"},
      {"JS8 261003_120000 14.078000 MHz: 2 spots", "rate 1 16 0 15 14078000 JS8:14.078000 2"},
      {"JS8-FAST 261003_120000 14.078000 MHz: 2 spots", "rate 1 16 0 10 14078000 JS8-FAST:14.078000 2"},
      {"JS8-TURBO 261003_120000 14.078000 MHz: 2 spots", "rate 1 16 0 6 14078000 JS8-TURBO:14.078000 2"},
      {"JS8-SLOW 261003_120000 14.078000 MHz: 2 spots", "rate 1 16 0 30 14078000 JS8-SLOW:14.078000 2"},
      {"WSPR 261003_115800 14.095600 MHz: 2 spots", "rate 2 16 -120 120 14095600 WSPR:14.095600 2"},
  };
  for (const auto& [line, rate] : cases) {
    const auto seen = take(line);
    EXPECT_THAT(seen, testing::Contains(rate)) << line;
    EXPECT_EQ(seen.back(), "new channel") << "instead of a refresh";
    EXPECT_EQ(take(line).back(), "refresh");
  }
}

TEST_F(LineIntakeTest, AnEmptyCycleCountsUnseen) {
  const auto line = "FT8 261003_120000 14.074000 MHz: 0 spots; callsigns=";
  EXPECT_THAT(take(line), ElementsAre(testing::StartsWith("statistics"), testing::StartsWith("text"),
                                      "rate 0 16 0 15 14074000 FT8:14.074000 0", "refresh"));
  EXPECT_EQ(logged(), "");
  EXPECT_EQ(activity.total_decodes(), 1u);
  EXPECT_EQ(activity.total_spots(), 0u);
}

TEST_F(LineIntakeTest, ABadDateCountsWithoutATime) {
  EXPECT_THAT(take("FT8 261345_120000 14.074000 MHz: 2 spots"),
              testing::Not(testing::Contains(testing::StartsWith("rate"))));
  EXPECT_EQ(told.back(), "refresh");
  EXPECT_EQ(activity.total_spots(), 2u);
  EXPECT_TRUE(activity.record("FT8:14.074000")->recent.empty());
}

TEST_F(LineIntakeTest, WhatIsNoResultOfThisSessionCountsNothing) {
  take(spots_line, false);
  take("FT8 261003_120000 14.074000 MHz: 3 spots; callsigns=failed");
  take("FT8 261003_120000 14.074000 MHz: 3 spots ");
  take("FT8 261003_120000 14.074000 MHz: 3 spots\t");
  take("FT8 jobs: completed=5, spots=21");
  take("");
  EXPECT_EQ(activity.total_decodes(), 0u);
  EXPECT_EQ(activity.record("FT8:14.074000")->decodes, 0u);
}

TEST_F(LineIntakeTest, ProgramLinesGoToDiagnostics) {
  EXPECT_THAT(take("Receiver exited with an error", false, ""),
              ElementsAre("statistics Receiver exited with an error|", "text Receiver exited with an error|",
                          "pane program error 12:00:16Z Receiver exited with an error\n",
                          "diagnostics Receiver exited with an error|launcher"));
  EXPECT_EQ(take("Clipped").back(), fmt::format("diagnostics Clipped|{}", label));
  EXPECT_EQ(logged(), "2026-10-03 12:00:16Z Receiver exited with an error\n2026-10-03 12:00:16Z [RSPdx · 7] Clipped\n");
}

TEST_F(LineIntakeTest, PicturesAreHandedOnParsed) {
  const std::pair<const char*, const char*> cases[] = {
      {"SIG WEFAX-120/576 261013_181530 8.503900 MHz: wefax-start ch=faxnmg8", "image wefax-start|RSPdx · 7"},
      {"SIG SSTV-M1 261013_181530 14.230000 MHz: wefax-stop ch=sstv20", "image wefax-stop|RSPdx · 7"},
      {"SIG WEFAX-120/576 261013_181530 8.503900 MHz: wefax-start track=1", ""},
      {"SIG WEFAX-120/576 261013 8.503900 MHz: wefax-start ch=faxnmg8", ""},
      {"SIG HAM SSTV-M1 261013_181530 14.230000 MHz: wefax-stop ch=sstv20", ""},
      {"SIG PSK31 261013_181530 14.070000 MHz: text ch=psk20", ""},
  };
  for (const auto& [line, image] : cases) {
    const auto seen = take(line);
    const auto found =
        std::find_if(seen.begin(), seen.end(), [](const auto& each) { return each.starts_with("image"); });
    EXPECT_EQ(found == seen.end() ? "" : *found, image) << line;
    EXPECT_THAT(seen, testing::Contains(testing::StartsWith("pane Signals normal"))) << line;
  }
}

TEST_F(LineIntakeTest, LinesAreStampedWithTheirOwnSecond) {
  const auto clock_of = [this](double time) {
    now = time;
    return take("x").at(2).substr(std::string("pane program normal ").size(), 9);
  };
  EXPECT_EQ(clock_of(noon + 59.99), "12:00:59Z");
  EXPECT_EQ(clock_of(noon + 60), "12:01:00Z");
  EXPECT_EQ(clock_of(noon - 1), "11:59:59Z") << "a clock that was set back";
}

TEST_F(LineIntakeTest, WorksWithoutAnySink) {
  LineIntake bare(activity, log, [] { return noon; }, {});
  bare.take(spots_line, true, label);
  bare.take("SIG SSTV-M1 261013_181530 14.230000 MHz: wefax-stop ch=sstv20", true, label);
  EXPECT_EQ(activity.total_spots(), 12u);
}

}  // namespace
