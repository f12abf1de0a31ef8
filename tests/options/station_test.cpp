#include "options/station.h"

#include <gmock/gmock.h>

#include "options/option_table.h"
#include "options_text.h"

namespace {

using options::parse_station;
using options::Profile;
using options::Station;
using options_test::refusal;
using testing::ElementsAre;
using testing::Pair;

Profile with_format(Profile profile) {
  profile["gui-format"] = "multi-receiver-v1";
  return profile;
}

TEST(StationProfile, SortsKeysByWhomTheyBelongTo) {
  const Station station = parse_station(with_format({{"mode", "decoder"},
                                                     {"audio.voice1", "id=voice1"},
                                                     {"receiver.B-2.enabled", "true"},
                                                     {"receiver.B-2.model", "RSP2"},
                                                     {"receiver.B-2.remote-x", "1"},
                                                     {"receiver.B-2.center-frequency", "7.1M"},
                                                     {"receiver.B.spot", "false"},
                                                     {"receiver.B.share", "false"},
                                                     {"band.20.receiver", "B-2"},
                                                     {"band.70cm.receiver", "odd serial"},
                                                     {"band.@voice1.receiver", "B"}}));
  EXPECT_THAT(station.common, ElementsAre(Pair("audio.voice1", "id=voice1"), Pair("mode", "decoder")));
  EXPECT_THAT(station.assignments, ElementsAre(Pair("20", "B-2"), Pair("70cm", "odd serial"), Pair("@voice1", "B")));
  ASSERT_EQ(station.receivers.size(), 2U);
  EXPECT_EQ(station.receivers[0].serial, "B");
  EXPECT_EQ(station.receivers[0].label(), "B");
  EXPECT_FALSE(station.receivers[0].enabled || station.receivers[0].spot || station.receivers[0].share);
  EXPECT_EQ(station.receivers[1].label(), "RSP2 · B-2");
  EXPECT_TRUE(station.receivers[1].enabled && station.receivers[1].spot && station.receivers[1].share);
  EXPECT_THAT(station.receivers[1].settings, ElementsAre(Pair("center-frequency", "7.1M"), Pair("remote-x", "1")));
}

TEST(StationProfile, RefusesKeysAndValues) {
  struct Case {
    const char *key, *value, *words;
  };
  const Case cases[] = {
      {"gui-format", "multi-receiver-v2", "Unsupported GUI profile format"},
      {"gui-format", "", "Unsupported GUI profile format"},
      {"band.", "A", "Malformed band assignment key"},
      {"band.receiver", "A", "Malformed band assignment key"},
      {"band.20.receivers", "A", "Malformed band assignment key"},
      {"band.20", "A", "Malformed band assignment key"},
      {"band.11.receiver", "A", "Unsupported assigned band"},
      {"band.20m.receiver", "A", "Unsupported assigned band"},
      {"band..receiver", "A", "Unsupported assigned band"},
      {"band.@.receiver", "A", "Unsupported assigned band"},
      {"band.@a.b.receiver", "A", "Unsupported assigned band"},
      {"band.@abcdefghijabcdefghijabcdefghijabc.receiver", "A", "Unsupported assigned band"},
      {"band.20.receiver", "", "Invalid assigned receiver serial"},
      {"band.20.receiver", "A.B", "Invalid assigned receiver serial"},
      {"receiver.", "x", "Malformed receiver profile key"},
      {"receiver.A", "x", "Malformed receiver profile key"},
      {"receiver..enabled", "true", "Invalid receiver serial in profile"},
      {"receiver.A.enabled", "yes", "Receiver enabled must be true or false"},
      {"receiver.A.spot", "on", "Receiver spot must be true or false"},
      {"receiver.A.share", "", "Receiver share must be true or false"},
      {"receiver.A.model", "RSP\t2", "Receiver model in profile is not plain text"},
      {"receiver.A.model", "RSP\x7f", "Receiver model in profile is not plain text"},
      {"receiver.A.bias-t", "on", "Unsupported receiver profile option: bias-t"},
      {"receiver.A.foo", "1", "Unsupported receiver profile option: foo"},
      {"receiver.A.", "1", "Unsupported receiver profile option: "},
      {"receiver.A.B.enabled", "true", "Unsupported receiver profile option: B.enabled"},
  };
  for (const Case& c : cases) {
    Profile profile = with_format({});
    profile[c.key] = c.value;
    EXPECT_EQ(refusal([&] { (void)parse_station(profile); }), c.words) << c.key << " = " << c.value;
  }
}

TEST(StationProfile, WritesWhatItReads) {
  Station station;
  station.common = {{"mode", "decoder"}, {"bands", "20,40"}};
  options::ReceiverProfile receiver;
  receiver.serial = "A";
  receiver.settings = {{"sample-rate", "2M"}, {"remote-host", "x"}};
  receiver.share = false;
  station.receivers.push_back(receiver);
  station.assignments = {{"20", "A"}};
  EXPECT_EQ(parse_station(render_station(station)), station);
  station.assignments["40"] = "";
  EXPECT_FALSE(render_station(station).contains("band.40.receiver"));
}

TEST(StationProfile, TakesASingleReceiversProfileAsOneTickedReceiver) {
  const Profile profile{{"serial", "X1"}, {"mode", "decoder"}, {"lna-state", "3"}, {"bias-t", "on"}};
  const Station station = parse_station(profile);
  EXPECT_EQ(station.common, profile);
  ASSERT_EQ(station.receivers.size(), 1U);
  EXPECT_TRUE(station.receivers[0].enabled);
  EXPECT_EQ(station.receivers[0].serial, "X1");
  EXPECT_THAT(station.receivers[0].settings, ElementsAre(Pair("lna-state", "3")));
  EXPECT_TRUE(parse_station({{"backend", "rx888"}}).receivers.empty());
}

TEST(OptionTable, HoldsTheKeysOfProfiles) {
  int values = 0, flags = 0, per_receiver = 0;
  for (const options::Option& option : options::option_table) {
    if (option.per_receiver) ++per_receiver;
    if (!option.in_profile) continue;
    ++(option.takes == options::Takes::flag ? flags : values);
  }
  EXPECT_EQ(values, 85);
  EXPECT_EQ(flags, 8);
  EXPECT_EQ(per_receiver, 25);
}

}  // namespace
