#include "results/activity_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using results::ActivityModel;
using results::Family;
using testing::ElementsAre;

constexpr double noon = 1791028800;

launcher::ReceiverLaunch receiver(const std::string& serial, std::vector<launcher::LaunchChannel> channels) {
  launcher::ReceiverLaunch launch;
  launch.name = serial;
  launch.model = "RSPdx";
  launch.channels = std::move(channels);
  return launch;
}

class ActivityModelTest : public testing::Test {
 protected:
  ActivityModelTest() { model.begin_session({receiver("1", {{"FT8", 14074000}}), receiver("2", {{"WSPR", 7038600}})}); }

  // Counts a cycle of FT8 on 20 m; true when the line made a row.
  bool count(std::uint64_t spots, std::optional<std::string_view> callsigns, std::optional<double> time = noon,
             std::string_view key = "FT8:14.074000", std::string_view label = "RSPdx · 1") {
    results::SpotSummary summary;
    summary.spots = spots;
    summary.callsigns = callsigns;
    return model.count(summary, key, time, label);
  }

  std::vector<std::string> row(std::string_view key = "FT8:14.074000") {
    const auto texts = model.row_texts(key);
    return {texts.spots, texts.decodes, texts.callsigns, texts.average};
  }

  // The keys of each card's rows, under its label.
  std::vector<std::string> cards(Family family) {
    std::vector<std::string> found;
    for (const auto& card : model.cards(family)) {
      found.push_back(card.label);
      for (const auto& each : card.rows)
        found.back() += " " + each.key;
    }
    return found;
  }

  ActivityModel model;
};

TEST_F(ActivityModelTest, RowsFollowTheirCycles) {
  model.refresh(noon);
  EXPECT_THAT(row(), ElementsAre("0", "0", "—", "—"));

  count(12, "K1ABC,W9XYZ,K1ABC", noon);
  count(3, "k1abc,N0NEW,,failed,TOOLONGFORACALLSIGN/TOOLONGFORACALL", noon + 15);
  model.refresh(noon + 20);
  EXPECT_THAT(row(), ElementsAre("15", "2", "3", "7.50"));
  EXPECT_EQ(model.totals_text(), "15 spots  /  180 spots/hr  /  PSKR24: —");

  // The first cycle leaves the window 300 seconds after it was captured.
  model.refresh(noon + 299);
  EXPECT_THAT(row(), ElementsAre("15", "2", "3", "7.50"));
  model.refresh(noon + 300);
  EXPECT_THAT(row(), ElementsAre("15", "2", "3", "3.00"));
  model.refresh(noon + 315);
  EXPECT_THAT(row(), ElementsAre("15", "2", "3", "—"));
  EXPECT_EQ(model.totals_text(), "15 spots  /  0 spots/hr  /  PSKR24: —");
}

TEST_F(ActivityModelTest, CountsUniqueSendersAsFarAsListsTell) {
  count(4, std::nullopt);
  model.refresh(noon);
  EXPECT_THAT(row(), ElementsAre("4", "1", "—", "4.00")) << "no list was ever seen";
  count(0, "");
  model.refresh(noon);
  EXPECT_THAT(row(), ElementsAre("4", "2", "≥0", "2.00"));
  count(1, "K1ABC");
  EXPECT_EQ(row()[2], "≥1");
  EXPECT_EQ(row("WSPR:7.038600")[2], "—");
  count(1, "K1ABC", noon, "WSPR:7.038600", "RSPdx · 2");
  EXPECT_EQ(row("WSPR:7.038600")[2], "1") << "a callsign counts on each of its channels";
}

TEST_F(ActivityModelTest, LifetimeCountersTakeWhatTheWindowCannot) {
  count(5, "", noon + 60);     // from a clock ahead of ours
  count(7, "", std::nullopt);  // a bad date
  model.refresh(noon);
  EXPECT_THAT(row(), ElementsAre("12", "2", "0", "—"));
  EXPECT_EQ(model.totals_text(), "12 spots  /  0 spots/hr  /  PSKR24: —");
  model.refresh(noon + 60);
  EXPECT_EQ(row()[3], "5.00") << "its time has come";
  count(0, "", noon + 61);
  count(0, "", noon + 62);
  model.refresh(noon + 400);
  EXPECT_EQ(row()[3], "—");
  EXPECT_TRUE(model.record("FT8:14.074000")->recent.empty());
}

TEST_F(ActivityModelTest, EmptyCyclesAverageToZero) {
  count(0, "");
  model.refresh(noon);
  EXPECT_THAT(row(), ElementsAre("0", "1", "0", "0.00"));
}

TEST_F(ActivityModelTest, TotalsShowTheReportsOfADayUntilReadingThemFails) {
  count(144, "");
  model.refresh(noon);
  EXPECT_TRUE(model.begin_psk_total());
  EXPECT_FALSE(model.begin_psk_total()) << "one reading at a time";
  model.finish_psk_total(0);
  EXPECT_EQ(model.totals_text(), "144 spots  /  1728 spots/hr  /  PSKR24: 0");
  EXPECT_TRUE(model.begin_psk_total());
  model.finish_psk_total(-3);
  model.begin_session({});
  EXPECT_EQ(model.totals_text(), "0 spots  /  0 spots/hr  /  PSKR24: -3") << "a new start leaves the file's figure";
  model.finish_psk_total(std::nullopt);
  EXPECT_EQ(model.totals_text(), "0 spots  /  0 spots/hr  /  PSKR24: —");
}

TEST_F(ActivityModelTest, OnlyAChannelNeverSeenGetsARow) {
  EXPECT_FALSE(count(1, "")) << "planned";
  EXPECT_FALSE(count(1, "", noon, "FT8:14.074000", "RSPdx · 2")) << "planned, though for another receiver";
  EXPECT_TRUE(count(1, "", noon, "FT4:14.080000", "RSPdx · 2"));
  EXPECT_FALSE(count(1, "", noon, "FT4:14.080000", "RSPdx · 1")) << "it stays with its first receiver";
  EXPECT_TRUE(count(1, "", noon, "FT8:7.074000", "")) << "without a label";
  EXPECT_FALSE(count(1, "", noon, "FT8:3.573000", "RSPdx · 9")) << "a receiver that is not in the plan";
  EXPECT_THAT(cards(Family::ft),
              ElementsAre("RSPdx · 1 FT8:14.074000", "RSPdx · 2 FT4:14.080000", "Unattributed receiver FT8:7.074000"));
  EXPECT_THAT(cards(Family::wspr), ElementsAre("RSPdx · 1", "RSPdx · 2 WSPR:7.038600"));
  EXPECT_EQ(model.total_decodes(), 6u) << "every line counts";
  EXPECT_EQ(model.record("FT8:3.573000")->spots, 1u);
}

TEST_F(ActivityModelTest, ARetuneTakesRowsAndLeavesCounters) {
  count(10, "K1ABC");
  count(2, "", noon, "FT4:14.080000");
  model.change_plan({receiver("1", {{"FT8", 7074000}}), receiver("2", {{"WSPR", 7038600}})});
  EXPECT_THAT(cards(Family::ft), ElementsAre("RSPdx · 1 FT8:7.074000 FT4:14.080000", "RSPdx · 2"))
      << "what no plan asked for stays";

  EXPECT_FALSE(count(5, "", noon + 15)) << "a late line of 20 m";
  model.refresh(noon + 15);
  EXPECT_THAT(row(), ElementsAre("15", "2", "1", "7.50"));
  EXPECT_EQ(model.totals_text(), "17 spots  /  204 spots/hr  /  PSKR24: —");
  EXPECT_EQ(cards(Family::ft).front(), "RSPdx · 1 FT8:7.074000 FT4:14.080000");

  model.change_plan({receiver("1", {{"FT8", 14074000}})});
  EXPECT_FALSE(count(1, "", noon, "FT8:7.074000")) << "left the plan without ever being heard";
  EXPECT_THAT(cards(Family::ft), ElementsAre("RSPdx · 1 FT8:14.074000 FT4:14.080000"));
  EXPECT_EQ(row()[0], "15") << "back with its counters";
}

TEST_F(ActivityModelTest, CardsSumTheRowsThatTheyShow) {
  count(10, "");
  count(0, "");
  count(2, "", noon, "FT4:14.080000");
  count(7, "", noon, "WSPR:7.038600", "RSPdx · 1");
  EXPECT_EQ(model.sum_text(model.cards(Family::ft).at(0)), "12 spots · 3 decodes");
  EXPECT_EQ(model.sum_text(model.cards(Family::ft).at(1)), "0 spots · 0 decodes");
  EXPECT_EQ(model.sum_text(model.cards(Family::wspr).at(1)), "7 spots · 1 decodes");
}

TEST_F(ActivityModelTest, ANewStartForgetsEverything) {
  count(10, "K1ABC");
  count(2, "", noon, "FT4:14.080000");
  model.refresh(noon);
  model.begin_session({receiver("1", {{"FT8", 14074000}})});
  EXPECT_THAT(cards(Family::ft), ElementsAre("RSPdx · 1 FT8:14.074000"));
  EXPECT_THAT(row(), ElementsAre("0", "0", "—", "—"));
  EXPECT_EQ(model.totals_text(), "0 spots  /  0 spots/hr  /  PSKR24: —");
  EXPECT_TRUE(count(2, "", noon, "FT4:14.080000")) << "new again";
}

}  // namespace
