#include "sim/scenario.h"

#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace {

using testing::HasSubstr;

class ScenarioTest : public testing::Test {
 protected:
  [[nodiscard]] sim::Scenario load(const std::string& text) const {
    return sim::load_scenario(files_.write("s.ini", text));
  }
  test::TemporaryDirectory files_;
};

TEST_F(ScenarioTest, AReceiversOwnSectionOverridesWhatHoldsForAll) {
  // The common group counts wherever it stands.
  const auto scenario = load(
      "[receiver 1706026B40]\nexit-status=9\n[receiver NEW]\nmodel=RSP2\nactivity=silent\n"
      "[station]\nreceivers=2\n[faults]\nexit-after=5\nexit-status=3\nactivity=busy\n");
  ASSERT_EQ(scenario.receivers.size(), 3U);
  EXPECT_EQ(scenario.receivers[0].faults.exit_status, 9);
  EXPECT_EQ(scenario.receivers[0].faults.exit_after, 5);
  EXPECT_EQ(scenario.receivers[1].faults.exit_status, 3);
  EXPECT_EQ(scenario.receivers[2].model, "RSP2");
  EXPECT_EQ(scenario.receivers[2].activity, 0);
  EXPECT_EQ(scenario.receivers[2].faults.exit_after, 5);
}

TEST_F(ScenarioTest, AProfileFindsItsReceiver) {
  const auto scenario = load("[faults]\nignore-term=true\n");
  EXPECT_EQ(scenario.receiver_for("00000001", "rtl-sdr").model, "RTL-SDR Blog V4");
  EXPECT_EQ(scenario.receiver_for("", "rx888").serial, "009028E61B4A1F2C");
  const auto stranger = scenario.receiver_for("ONE", "sdrplay");
  EXPECT_EQ(stranger.serial, "ONE");
  EXPECT_TRUE(stranger.faults.ignore_term);
}

TEST_F(ScenarioTest, UpToSixteenDifferentReceiversCanBeAttached) {
  EXPECT_TRUE(load("[station]\nreceivers=none\n").receivers.empty());
  std::set<std::string> serials;
  for (const auto& receiver : load("[station]\nreceivers=16\n").receivers)
    serials.insert(receiver.serial);
  EXPECT_EQ(serials.size(), 16U);
}

TEST_F(ScenarioTest, WhatItDoesNotKnowIsRefusedByPlace) {
  const std::pair<const char*, const char*> cases[] = {
      {"[station]\nrecievers=3\n", "[station] has no key \"recievers\""},
      {"[fault]\nexit-after=3\n", "there is no group [fault]"},
      {"[faults]\nexit-after=soon\n", "[faults] exit-after: cannot read \"soon\""},
      {"[faults]\nexit-after=-1\n", "[faults] exit-after: cannot read \"-1\""},
      {"[receiver X]\npresence=lost\n", "[receiver X] presence: cannot read \"lost\""},
      {"[station]\nlisting-fault=explode\n", "[station] listing-fault: cannot read \"explode\""},
      {"no group\n", "s.ini: "},
  };
  for (const auto& [text, reason] : cases) {
    try {
      static_cast<void>(load(text));
      ADD_FAILURE() << text;
    } catch (const std::runtime_error& error) {
      EXPECT_THAT(error.what(), HasSubstr(reason));
    }
  }
  EXPECT_THROW(sim::load_scenario("/nonexistent.ini"), std::runtime_error);
}

TEST(Scenarios, ThoseThatComeWithTheSourcesLoad) {
  for (const auto& entry : std::filesystem::directory_iterator(SCENARIOS)) {
    EXPECT_NO_THROW(sim::load_scenario(entry.path())) << entry.path();
  }
}

}  // namespace
