#include "launcher/pinned_plan.h"

#include <gtest/gtest.h>

namespace launcher {
namespace {

options::Profile station() {
  return {{"gui-format", "multi-receiver-v1"},
          {"mode", "decoder"},
          {"modes", "FT8"},
          {"bands", "40,20,10"},
          {"gain-reduction", "40"},
          {"all-txt", "/tmp/ALL.TXT"},
          {"receiver.A1.enabled", "true"},
          {"receiver.A1.model", "RSPdx"},
          {"receiver.B2.enabled", "true"},
          {"receiver.B2.model", "RX-888"},
          {"receiver.B2.backend", "rx888"},
          {"receiver.C3.enabled", "false"},
          {"receiver.C3.model", "RTL-SDR"},
          {"receiver.C3.backend", "rtl-sdr"}};
}

std::string bands_of(const std::vector<ReceiverLaunch>& plan) {
  std::string text;
  for (const auto& launch : plan)
    text += fmt::format("{}:{} ", launch.name, launch.profile.at("bands"));
  return text;
}

TEST(PinnedPlan, BandsGoWhereTheyArePinned) {
  const struct {
    const char* what;
    options::Profile changes;
    std::string expected;
  } cases[] = {
      {"nothing pinned", {}, "A1:40,20,10 "},
      {"one pinned away", {{"band.20.receiver", "B2"}}, "A1:40,10 B2:20 "},
      {"pinned to an unticked receiver", {{"band.20.receiver", "C3"}}, "A1:40,20,10 "},
      {"pinned to one that is not there", {{"band.20.receiver", "Z9"}}, "A1:40,20,10 "},
      {"a third receiver ticked", {{"receiver.C3.enabled", "true"}, {"band.10.receiver", "C3"}}, "A1:40,20 C3:10 "},
  };
  for (const auto& example : cases) {
    auto profile = station();
    for (const auto& [key, value] : example.changes)
      profile[key] = value;
    EXPECT_EQ(bands_of(pinned_plan(profile)), example.expected) << example.what;
  }
}

TEST(PinnedPlan, AnEngineGetsOnlyTheKeysOfItsFamily) {
  auto profile = station();
  profile["band.20.receiver"] = "B2";
  profile["known-channels"] = "true";
  profile["known-band-modes"] = "20m:cw,40:psk31";
  profile["receiver.A1.lna-state"] = "3";
  profile["receiver.A1.remote-note"] = "roof";
  profile["receiver.B2.rx888-gain"] = "4";
  const auto plan = pinned_plan(profile);
  ASSERT_EQ(plan.size(), 2U);
  const auto& rsp = plan[0].profile;
  const auto& rx888 = plan[1].profile;
  EXPECT_EQ(rsp.at("serial"), "A1");
  EXPECT_EQ(rsp.at("lna-state"), "3");
  EXPECT_EQ(rsp.at("known-band-modes"), "40:psk31");
  EXPECT_EQ(rsp.count("remote-note"), 0U);
  EXPECT_EQ(rx888.at("known-band-modes"), "20m:cw");
  EXPECT_EQ(rx888.at("rx888-gain"), "4");
  for (const char* key : {"serial", "gain-reduction", "gui-format", "receiver.A1.lna-state"})
    EXPECT_EQ(rx888.count(key), 0U) << key;
}

TEST(PinnedPlan, ChannelsFollowTheModesOfEachBand) {
  auto profile = station();
  profile["bands"] = "20,60";
  profile["modes"] = "FT8,JS8-SLOW";
  profile["band-modes"] = "20:FT4+WSPR";
  const auto channels = pinned_plan(profile).at(0).channels;
  const std::vector<LaunchChannel> expected{{"FT4", 14080000}, {"WSPR", 14095600}, {"FT8", 5357000}};
  EXPECT_EQ(channels, expected) << "60 m has no JS8 frequency";
  profile["receiver.A1.spot"] = "false";
  EXPECT_TRUE(pinned_plan(profile).at(0).channels.empty());
}

TEST(PinnedPlan, AListeningChannelGoesToOneReceiver) {
  auto profile = station();
  profile["audio.voice1"] = "14.2M,USB";
  profile["audio.voice2"] = "7.1M,LSB";
  profile["band.@voice2.receiver"] = "B2";
  const auto plan = pinned_plan(profile);
  ASSERT_EQ(plan.size(), 2U);
  EXPECT_EQ(plan[0].profile.count("audio.voice1"), 1U);
  EXPECT_EQ(plan[0].profile.count("audio.voice2"), 0U);
  EXPECT_EQ(plan[1].profile.at("audio.voice2"), "7.1M,LSB");
  EXPECT_EQ(plan[1].profile.at("mode"), "receivers") << "no band, so nothing to decode";
  EXPECT_EQ(plan[1].profile.count("bands"), 0U);
}

TEST(PinnedPlan, SaysWhyNothingCanStart) {
  auto none_ticked = station();
  none_ticked["receiver.A1.enabled"] = none_ticked["receiver.B2.enabled"] = "false";
  auto no_band = station();
  no_band.erase("bands");
  const struct {
    options::Profile profile;
    const char* words;
  } cases[] = {{none_ticked, "Tick at least one receiver."}, {no_band, "Tick at least one band."}};
  for (const auto& example : cases) {
    try {
      pinned_plan(example.profile);
      ADD_FAILURE() << "no refusal: " << example.words;
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), example.words);
    }
  }
}

TEST(PinnedPlan, AProfileWithoutReceiversIsLaunchedAsItStands) {
  const options::Profile profile{{"mode", "decoder"}, {"bands", "20"}, {"workers", "2"}};
  const auto plan = pinned_plan(profile);
  ASSERT_EQ(plan.size(), 1U);
  EXPECT_EQ(plan[0].profile, profile);
  EXPECT_EQ(plan[0].channels, (std::vector<LaunchChannel>{{"FT8", 14074000}}));
}

}  // namespace
}  // namespace launcher
