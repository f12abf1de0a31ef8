#include "gui/modes/coverage_chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace modes_gui {
namespace {

using options::Station;
using Pins = std::map<std::string, std::string>;

constexpr std::size_t row80 = 1, row40 = 3, row20 = 5, row10 = 9, row6 = 10;

Station station_of(const Pins& pins = {}) {
  Station station;
  for (const char* serial : {"ONE", "SPARE", "TWO"})
    station.receivers.push_back({serial, "RSP2", {}, std::string(serial) != "SPARE", true});
  station.assignments = pins;
  return station;
}

/// 80 and 20 m on ONE, 40 and 10 m on TWO.
launcher::BandChoices choices_of() {
  launcher::BandChoices choices;
  for (std::size_t row = 0; row < choices.bands.size(); ++row)
    choices.bands[row].band = launcher::band_presets[row].name;
  for (const auto& [row, serial] : {std::pair(row80, "ONE"), {row20, "ONE"}, {row40, "TWO"}, {row10, "TWO"}}) {
    choices.bands[row].ticked = true;
    choices.bands[row].carrier = serial;
  }
  return choices;
}

TEST(CoverageChart, DrawsEachTickedReceiverFromItsFirstToItsLastBand) {
  auto choices = choices_of();
  const auto bars = chart_bars(station_of(), choices);
  ASSERT_EQ(bars.size(), 2u);
  EXPECT_EQ(bars[1].number, 3) << "numbered as the whole list";
  EXPECT_EQ(bars[1].first(), row40);
  EXPECT_EQ(bars[1].last(), row10);
  EXPECT_EQ(bar_at(bars, 1, row20), 1u) << "the bar spans the bands between";
  EXPECT_EQ(bar_at(bars, 1, row80), std::nullopt);
  EXPECT_EQ(bar_at(bars, 2, row20), std::nullopt);
  choices.bands[row40].carrier = choices.bands[row10].carrier = "ONE";
  const auto idle = chart_bars(station_of(), choices);
  EXPECT_EQ(bar_at(idle, 1, all_bands_row), 1u);
  Drag drag;
  drag.take("TWO", all_bands_row);
  drag.step(-1);
  EXPECT_EQ(chart_description(idle, drag),
            "1 · RSP2 · ONE: 80m, 40m, 20m and 10m. 3 · RSP2 · TWO: waits under All bands. Held, aimed at 70cm.");
}

TEST(Drag, DropsOnlyWhereItWasCarried) {
  Drag drag;
  drag.aim(row20);
  EXPECT_FALSE(drag.drop()) << "nothing is held";
  drag.take("ONE", row80);
  EXPECT_FALSE(drag.drop()) << "dropped where it started";
  drag.take("ONE", row80);
  drag.aim(std::nullopt);
  EXPECT_TRUE(drag.holds()) << "leaving the chart is no letting go";
  drag.aim(row20);
  const auto drop = drag.drop();
  ASSERT_TRUE(drop);
  EXPECT_EQ(drop->serial, "ONE");
  EXPECT_EQ(drop->row, row20);
  EXPECT_FALSE(drag.holds());
  drag.take("ONE", 0);
  drag.step(-1);
  EXPECT_EQ(drag.aimed(), 0u);
  drag.let_go();
  EXPECT_FALSE(drag.drop());
}

TEST(MoveReceiver, PinsWhatStillFitsAndLeavesTheRestToThePlanner) {
  const auto choices = choices_of();
  struct Case {
    const char* name;
    Pins before;
    std::size_t row;
    std::function<bool(const Pins&)> fits;
    std::optional<Pins> after;
    std::string note;
  };
  const auto always = [](const Pins&) { return true; };
  const Case cases[] = {
      {"all bands are kept", {}, row20, always, Pins{{"20", "TWO"}, {"40", "TWO"}, {"10", "TWO"}}, ""},
      {"a pin of a band that is not ticked stays",
       {{"6", "TWO"}, {"2", "ONE"}},
       row20,
       [](const Pins& pins) { return !pins.contains("80"); },
       Pins{{"20", "TWO"}, {"40", "TWO"}, {"10", "TWO"}, {"6", "TWO"}, {"2", "ONE"}},
       ""},
      {"another's pin of the band is replaced",
       {{"20", "ONE"}, {"80", "ONE"}},
       row20,
       always,
       Pins{{"20", "TWO"}, {"40", "TWO"}, {"10", "TWO"}, {"80", "ONE"}},
       ""},
      {"the former holder is placed again",
       {{"20", "ONE"}, {"80", "ONE"}},
       row20,
       [](const Pins& pins) { return !pins.contains("80"); },
       Pins{{"20", "TWO"}, {"40", "TWO"}, {"10", "TWO"}},
       ""},
      {"a band that no longer fits is let go",
       {{"10", "TWO"}, {"@voice", "TWO"}},
       row20,
       [](const Pins& pins) { return !pins.contains("10"); },
       Pins{{"20", "TWO"}, {"40", "TWO"}, {"@voice", "TWO"}},
       ""},
      {"nothing fits", {}, row20, [](const Pins&) { return false; }, std::nullopt, "20m does not fit on RSP2 · TWO"},
      {"not ticked", {}, row6, always, std::nullopt, "6m is not ticked"},
      {"All bands",
       {{"40", "TWO"}, {"80", "ONE"}, {"@voice", "TWO"}},
       all_bands_row,
       always,
       Pins{{"80", "ONE"}, {"@voice", "TWO"}},
       ""},
  };
  for (const Case& c : cases) {
    const Move move = move_receiver(station_of(c.before), choices, {"TWO", c.row},
                                    [&](const Station& station) { return c.fits(station.assignments); });
    EXPECT_EQ(move.pins, c.after) << c.name;
    EXPECT_EQ(move.note, c.note) << c.name;
  }
}

}  // namespace
}  // namespace modes_gui
