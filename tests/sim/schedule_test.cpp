#include "sim/schedule.h"

#include <gtest/gtest.h>

#include "base/time_text.h"

namespace {

using sim::Mode;

const double noon = static_cast<double>(*base::utc_seconds(2026, 10, 3, 12, 0, 0));

TEST(Schedule, CyclesAreAlignedToTheHour) {
  struct Case {
    Mode mode;
    double time;  ///< seconds after noon
    const char* first;
    const char* last_complete;
  };
  const Case cases[] = {
      {Mode::ft8, 0, "261003_120000", "261003_115945"},       {Mode::ft8, 0.1, "261003_120015", "261003_115945"},
      {Mode::ft8, 14.9, "261003_120015", "261003_115945"},    {Mode::ft8, 15, "261003_120015", "261003_120000"},
      {Mode::ft4, 1, "261003_120007", "261003_115952"},       {Mode::ft4, 22.5, "261003_120022", "261003_120015"},
      {Mode::js8_fast, 11, "261003_120020", "261003_120000"}, {Mode::js8_turbo, 59, "261003_120100", "261003_120048"},
      {Mode::js8_slow, 31, "261003_120100", "261003_120000"}, {Mode::wspr, 1, "261003_120200", "261003_115800"},
  };
  for (const Case& c : cases) {
    const double cycle = sim::mode_timing(c.mode).cycle;
    const auto stamp = [&](std::int64_t number) { return base::stamp_time(static_cast<double>(number) * cycle); };
    SCOPED_TRACE(testing::Message() << launcher::digital_mode_text(c.mode) << " at " << c.time);
    EXPECT_EQ(stamp(sim::first_cycle_from(noon + c.time, cycle)), c.first);
    EXPECT_EQ(stamp(sim::last_complete_cycle(noon + c.time, cycle)), c.last_complete);
  }
}

TEST(StationClock, RunsFastFromThePastUntilItHasCaughtUp) {
  const sim::StationClock clock(noon, 3600, 61);
  EXPECT_DOUBLE_EQ(clock.at(noon), noon - 3600);
  EXPECT_DOUBLE_EQ(clock.at(noon + 1), noon - 3539);
  EXPECT_DOUBLE_EQ(clock.at(noon + 60), noon + 60);
  EXPECT_DOUBLE_EQ(clock.at(noon + 500), noon + 500);
  for (const double real : {0.0, 0.5, 30.0, 59.9, 60.0, 60.1, 1000.0}) {
    EXPECT_LE(clock.at(noon + real), noon + real);
    EXPECT_NEAR(clock.when(clock.at(noon + real)), noon + real, 1e-5) << real;
  }
}

TEST(StationClock, IsTheTrueOneWithoutRewindOrHaste) {
  for (const sim::StationClock& clock :
       {sim::StationClock(), sim::StationClock(noon, 0, 100), sim::StationClock(noon, 600, 1)}) {
    EXPECT_EQ(clock.at(noon + 7), noon + 7);
    EXPECT_EQ(clock.when(noon + 7), noon + 7);
  }
}

}  // namespace
