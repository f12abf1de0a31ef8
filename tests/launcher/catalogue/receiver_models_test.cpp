#include "launcher/catalogue/receiver_models.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "launcher/catalogue/rf_gain.h"
#include "refusal.h"

namespace launcher {
namespace {

using ::testing::ElementsAre;

/// The last state's attenuation and how many there are, as "43/4".
std::string table(const char* model, const char* antenna, double hz) {
  const auto found = rf_gain_table(model, antenna, hz);
  return found ? std::to_string(found->back()) + "/" + std::to_string(found->size()) : "none";
}

TEST(RfGain, TableFollowsModelAntennaAndFrequency) {
  struct Case {
    const char* model;
    const char* antenna;
    double mhz;
    const char* expected;
  };
  const Case cases[] = {
      {"RSP1", "", 14, "43/4"},       {"RSP1", "HiZ", 500, "26/4"},     {"RSP1", "", 1500, "24/4"},
      {"RSP2", "A", 14, "64/9"},      {"RSP2", "B", 420, "41/6"},       {"RSP2", "B", 1000, "34/6"},
      {"RSP2", "HiZ", 14, "37/5"},    {"RSP2", "HiZ", 100, "none"},     {"RSP2", "", 14, "none"},
      {"RSPduo", "", 14, "none"},     {"RSPduo", "HiZ", 59.9, "37/5"},  {"RSPduo", "HiZ", 60, "none"},
      {"RSPduo", "A", 14, "61/7"},    {"RSPduo", "A", 60, "62/10"},     {"RSP1A", "", 55, "61/7"},
      {"RSP1B", "", 55, "62/10"},     {"RSP1B", "", 49.9, "61/7"},      {"RSP1A", "", 500, "64/10"},
      {"RSP1A", "", 1000, "62/9"},    {"RSPdx", "A", 1.9, "none"},      {"RSPdx", "", 2, "60/19"},
      {"RSPdx", "", 12, "60/20"},     {"RSPdxR2", "C", 50, "80/25"},    {"RSPdx", "", 60, "84/27"},
      {"RSPdx", "", 250, "84/28"},    {"RSPdx", "", 420, "67/21"},      {"RSPdx", "", 1200, "65/19"},
      {"RSP1", "", 0.000999, "none"}, {"RSP1", "", 0.001, "43/4"},      {"RSP1", "", 2000, "24/4"},
      {"RSP1", "", 2000.1, "none"},   {"Unknown RSP", "A", 14, "none"}, {"", "A", 14, "none"},
      {"RX-888", "", 14, "none"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(table(c.model, c.antenna, c.mhz * 1e6), c.expected) << c.model << " " << c.antenna << " " << c.mhz;
  EXPECT_THAT(*rf_gain_table("RSP1", "", 14e6), ElementsAre(0, 24, 19, 43));
}

TEST(RfGain, StatesBeyondTheTableAreRefused) {
  const std::string words = " is not available with this antenna and frequency";
  struct Case {
    const char* model;
    int state;
    std::string words;
  };
  const Case cases[] = {{"RSP1", 3, "accepted"},
                        {"RSP1", 4, "RF gain state 4" + words + " (0-3)"},
                        {"RSP1", 300, "RF gain state 300" + words + " (0-3)"},
                        {"RSP2", 255, "accepted"},
                        {"RSP2", 256, "RF gain state 256" + words}};
  for (const auto& c : cases)
    EXPECT_EQ(refusal([&] { check_rf_gain_state(c.model, "", 14e6, c.state); }), c.words) << c.model << c.state;
}

TEST(RfGain, LookupStandsBesideTheCaptureCentre) {
  EXPECT_EQ(rf_gain_frequency(14.1e6), 14.092e6);
  EXPECT_EQ(rf_gain_frequency(9000), 1000);
  EXPECT_EQ(rf_gain_frequency(8999), 16999);
  EXPECT_EQ(rf_gain_frequency(2.1e9), 2e9);
}

TEST(ReceiverModels, WhatAModelLacksIsRefused) {
  const std::pair<const char*, const char*> lacking[] = {
      {"RSP1A", "A"}, {"RSP2", "C"}, {"RSPduo", "B"}, {"RSPdx", "HiZ"}};
  for (const auto& [model, antenna] : lacking)
    EXPECT_EQ(refusal([&] { check_antenna(model, antenna); }), std::string("Antenna is unavailable on ") + model);
  const std::pair<const char*, const char*> good[] = {{"RSP2", "HiZ"}, {"RSPduo", "A"},      {"RSPdxR2", "C"},
                                                      {"", "B"},       {"Unknown RSP", "C"}, {"RSP1A", ""}};
  for (const auto& [model, antenna] : good)
    EXPECT_NO_THROW(check_antenna(model, antenna)) << model;

  const std::string words = "Selected hardware notch is unavailable on RSP";
  EXPECT_EQ(refusal([] { check_notches("RSP1", true, false); }), words + "1; turn it off in SDR Config");
  EXPECT_EQ(refusal([] { check_notches("RSPdx", true, true); }), words + "dx; turn it off in SDR Config");
  EXPECT_NO_THROW(check_notches("RSPduo", true, true));
  EXPECT_NO_THROW(check_notches("RSP1", false, false));
  EXPECT_NO_THROW(check_notches("Unknown RSP", true, true));
}

TEST(ReceiverModels, LabelFallsBackToTheSerial) {
  EXPECT_EQ(model_label("RSP2", "ONE"), "RSP2 · ONE");
  EXPECT_EQ(model_label(" ", "ONE"), "ONE");
}

}  // namespace
}  // namespace launcher
