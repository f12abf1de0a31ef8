#include "launcher/device_merge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "options/profile.h"

namespace launcher {
namespace {

using options::Profile;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class DeviceMerge : public ::testing::Test {
 protected:
  // Merges a listing into what the merges before have left.
  MergedDevices merge(const std::string& listing) {
    auto merged = merge_devices(inventory_, parse_device_listing(listing), {saved_, running_, 8});
    inventory_ = merged.inventory;
    return merged;
  }
  options::ReceiverProfile& receiver(const std::string& serial) {
    for (auto& each : inventory_.station.receivers)
      if (each.serial == serial) return each;
    throw std::runtime_error("no receiver " + serial);
  }
  std::string word(const std::string& serial) {
    return std::string(device_status_word(inventory_.statuses.at(serial)));
  }

  Inventory inventory_;
  options::ReceiverStore saved_;
  std::set<std::string> running_;
};

TEST_F(DeviceMerge, KeepsWhatVanishesAndSaysWhenItIsBack) {
  const std::string one = "0: RSP2 serial=ONE available=1\n";
  EXPECT_THAT(merge(one).log, ElementsAre("RSP2 · ONE: listed for the first time; created with the defaults"));
  EXPECT_FALSE(receiver("ONE").enabled);
  EXPECT_TRUE(receiver("ONE").available);
  receiver("ONE").enabled = true;
  receiver("ONE").settings["gain-reduction"] = "33";
  inventory_.station.assignments["20"] = "ONE";
  const auto before = inventory_.station;

  const auto gone = merge("");
  EXPECT_THAT(gone.log, IsEmpty());
  EXPECT_EQ(gone.checked, 0U);
  EXPECT_EQ(word("ONE"), "missing");
  EXPECT_FALSE(receiver("ONE").available);
  EXPECT_THAT(merge("0: RSP2 serial=ONE available=0\n").log,
              ElementsAre("RSP2 · ONE: listed again with its saved settings."));
  EXPECT_EQ(word("ONE"), "busy");
  EXPECT_FALSE(receiver("ONE").available);
  EXPECT_THAT(merge(one).log, IsEmpty());
  EXPECT_EQ(inventory_.station, before);
}

TEST_F(DeviceMerge, AReceiverThatRunsHereIsAvailableWhateverTheListingSays) {
  merge("0: RSP2 serial=ONE available=1\n1: RSP2 serial=TWO available=1\n");
  running_ = {"ONE", "TWO"};
  merge("0: RSP2 serial=ONE available=0\n");
  for (const char* serial : {"ONE", "TWO"}) {
    EXPECT_TRUE(receiver(serial).available) << serial;
    EXPECT_EQ(inventory_.statuses.at(serial), DeviceStatus::running) << serial;
  }
  EXPECT_EQ(with_sharing(inventory_.statuses, {"ONE"}).at("ONE"), DeviceStatus::running);
  running_.clear();
  merge("0: RSP2 serial=ONE available=1\n");
  EXPECT_EQ(device_status_word(with_sharing(inventory_.statuses, {"ONE"}).at("ONE")), "used by Corvane");
  EXPECT_EQ(word("TWO"), "missing");
}

TEST_F(DeviceMerge, ARemovedReceiverComesBackUntickedWithItsSettings) {
  (void)saved_.update({{"gui-format", "multi-receiver-v1"},
                       {"receiver.ONE.enabled", "true"},
                       {"receiver.ONE.model", "RSP2"},
                       {"receiver.ONE.share", "false"},
                       {"receiver.ONE.gain-reduction", "33"},
                       {"receiver.ONE.lna-state", "2"}});
  EXPECT_THAT(merge("0: RSP2 serial=ONE available=1\n").log,
              ElementsAre("RSP2 · ONE: listed without a session profile; restored gain-reduction=33, lna-state=2"));
  EXPECT_FALSE(receiver("ONE").enabled);
  EXPECT_FALSE(receiver("ONE").share);
  EXPECT_THAT(receiver("ONE").settings, ElementsAre(Pair("gain-reduction", "33"), Pair("lna-state", "2")));
}

TEST_F(DeviceMerge, ResetsOnlyASampleRateThatIsNone) {
  merge("0: RSP2 serial=ONE available=1\n1: R serial=TWO available=1 backend=rtl-sdr\n");
  const struct {
    const char* serial;
    const char* rate;
    const char* left;
  } cases[] = {{"ONE", "2.048M", "2.048M"}, {"ONE", "900000", nullptr}, {"ONE", "fast", nullptr},
               {"TWO", "250k", "250k"},     {"TWO", "500000", nullptr}, {"TWO", "3.2M", "3.2M"}};
  for (const auto& example : cases) {
    receiver(example.serial).settings["sample-rate"] = example.rate;
    const auto merged = merge("");
    const auto rate = receiver(example.serial).settings.find("sample-rate");
    EXPECT_EQ(rate != receiver(example.serial).settings.end(), example.left != nullptr) << example.rate;
    EXPECT_EQ(merged.log.size(), example.left ? 0U : 1U) << example.rate;
  }
  receiver("ONE").settings["sample-rate"] = "11M";
  EXPECT_THAT(merge("").log,
              ElementsAre("RSP2 · ONE: saved sample rate '11M' is not valid and was reset to Automatic."));
  inventory_.station.common["sample-rate"] = "5M";
  receiver("ONE").settings["sample-rate"] = "11M";
  merge("");
  EXPECT_EQ(receiver("ONE").settings.at("sample-rate"), "") << "or the common rate would take its place";
}

TEST_F(DeviceMerge, LeavesOutWhatNoProfileCanHold) {
  const auto merged =
      merge("0: RSP2 serial=a.b available=1\n1: RSP2 serial=" + std::string(65, 'x') +
            " available=1\n2: R serial=OK available=1 backend=other\n3: R\x01\xff\"' serial=FINE available=1\n");
  EXPECT_EQ(merged.checked, 1U);
  EXPECT_THAT(merged.log, ::testing::Contains("Listed but left out: 3, for its serial, its backend or their number."));
  ASSERT_EQ(inventory_.station.receivers.size(), 1U);
  const std::string file = options::render_profile(options::render_station(inventory_.station));
  EXPECT_EQ(options::parse_station(options::parse_config_text(file, "file", true)).receivers.at(0).model,
            "R\xEF\xBF\xBD'");
}

TEST_F(DeviceMerge, ReportsAnRx888WithoutMakingItAReceiver) {
  merge("0: RX-888 serial=0090 available=1 backend=rx888\n");
  const auto merged = merge("0: RX-888 (needs firmware) serial=usb-2-1 available=0 backend=rx888\n");
  EXPECT_THAT(merged.reports, ElementsAre("RX-888 on 2-1 needs firmware."));
  EXPECT_EQ(inventory_.station.receivers.size(), 1U);
  EXPECT_EQ(word("0090"), "needs firmware");
}

TEST(NewReceiver, StartsWithTheDefaultsOfItsFamily) {
  const Profile common{
      {"agc", "off"},     {"antenna", "B"}, {"bandwidth", "6k"}, {"gain-reduction", "40"},   {"rx888-gain", "12"},
      {"rtl-gain", "30"}, {"ppm", "0.5"},   {"modes", "FT8"},    {"center-frequency", "7M"}, {"sample-rate", "5M"}};
  const auto settings = [&](const char* model, const char* backend, unsigned processors = 8) {
    return new_receiver_settings(common, {"X", model, backend, true, DeviceStatus::ready}, processors);
  };
  const Profile rsp2{{"agc", "off"},           {"antenna", "B"}, {"bandwidth", ""},  {"center-frequency", ""},
                     {"gain-reduction", "40"}, {"ppm", "0.5"},   {"sample-rate", ""}};
  EXPECT_EQ(settings("RSP2", "sdrplay"), rsp2);
  for (const char* model : {"RSP1", "RSP1A", "RSP1B"})
    EXPECT_EQ(settings(model, "sdrplay").at("antenna"), "") << model;
  const Profile rx888{{"backend", "rx888"}, {"bandwidth", ""},    {"center-frequency", ""},
                      {"ppm", "0.5"},       {"rx888-gain", "12"}, {"rx888-rate", "full"}};
  EXPECT_EQ(settings("RX-888", "rx888"), rx888);
  EXPECT_EQ(settings("RX-888", "rx888", 4).at("rx888-rate"), "half");
  const Profile dongle{{"agc", "on"}, {"backend", "rtl-sdr"}, {"bandwidth", ""},  {"center-frequency", ""},
                       {"ppm", "0"},  {"rtl-gain", "30"},     {"sample-rate", ""}};
  EXPECT_EQ(settings("Nano", "rtl-sdr"), dongle);
}

}  // namespace
}  // namespace launcher
