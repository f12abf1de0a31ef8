#include <thread>

#include <gtest/gtest.h>

#include "generated_station.h"
#include "launcher/placement/memory.h"
#include "launcher/planner.h"
#include "options/receiver_options.h"

namespace launcher {
namespace {

using options::Profile;
using options::Station;

std::string written(const std::vector<ReceiverLaunch>& launches) {
  std::string text;
  for (const ReceiverLaunch& launch : launches) {
    text += fmt::format("[{}] {} {:.6f}\n", launch.label(), base::join(launch.groups, " "), launch.capture.center);
    for (const auto& [key, value] : launch.profile)
      text += fmt::format("{} = {}\n", key, value);
  }
  return text;
}

Station two_families() {
  Station station;
  station.common = {{"mode", "hybrid"},
                    {"modes", "FT8,WSPR"},
                    {"bands", "40,20,6"},
                    {"known-channels", "true"},
                    {"known-band-modes", "20:cw,6:msk144"},
                    {"pskreporter", "true"},
                    {"callsign", "K1ABC"},
                    {"grid", "FN42"},
                    {"lna-state", "2"},
                    {"audio.voice", "id=voice,frequency=50.15M"},
                    {"audio.off", "id=off,frequency=144.3M,enabled=off"}};
  station.receivers = {{"DX", "RSPdx", {{"antenna", "A"}}, true, true, true, false},
                       {"RX", "RX-888 MKII", {{"backend", "rx888"}, {"rx888-rate", "half"}}, true, true, false, true},
                       {"OFF", "RSP2", {}, false, false}};
  station.assignments = {{"6", "DX"}, {"@voice", "DX"}, {"20", "RX"}};
  return station;
}

TEST(Plan, EachReceiverGetsItsOwnProfile) {
  const auto launches = plan_uncached(two_families());
  ASSERT_EQ(launches.size(), 2U);
  const ReceiverLaunch &dx = launches[0], &rx = launches[1];
  EXPECT_EQ(dx.groups, (std::vector<std::string>{"@voice", "6"}));
  EXPECT_EQ(rx.groups, (std::vector<std::string>{"40", "20"}));

  EXPECT_EQ(dx.profile.at("serial"), "DX");
  EXPECT_EQ(dx.profile.at("share"), "off");
  EXPECT_EQ(dx.profile.at("known-band-modes"), "6:msk144");
  EXPECT_TRUE(dx.profile.contains("audio.voice"));
  EXPECT_FALSE(dx.profile.contains("audio.off"));
  // From the channel's lower edge to 5 kHz above the band's highest dial.
  EXPECT_EQ(dx.profile.at("center-frequency"), "50242000.000000");
  EXPECT_EQ(dx.channels.size(), 2U);

  for (const char* foreign : {"serial", "antenna", "sample-rate", "lna-state", "agc", "audio.voice"})
    EXPECT_FALSE(rx.profile.contains(foreign)) << foreign;
  EXPECT_EQ(rx.profile.at("spot"), "off");
  EXPECT_TRUE(rx.channels.empty());
  EXPECT_EQ(rx.capture.sample_rate, 8e6);
}

TEST(Plan, AReceiverWithoutBandsListensOnly) {
  Station station = two_families();
  station.assignments["6"] = "RX";
  station.receivers[1].settings["rx888-rate"] = "full";
  station.common["bands"] = "6";
  const auto launches = plan_uncached(station);
  ASSERT_EQ(launches.size(), 2U);
  EXPECT_EQ(launches[0].profile.at("mode"), "receivers");
  EXPECT_EQ(launches[0].profile.at("pskreporter"), "false");
  EXPECT_FALSE(launches[0].profile.contains("bands"));
  EXPECT_FALSE(launches[0].profile.contains("modes"));
}

TEST(Plan, AnIdleReceiverRunsWhereItWasFixed) {
  Station station;
  station.common = {{"mode", "decoder"}, {"modes", "FT8"}, {"bands", "20"}};
  station.receivers = {{"A", "RSP2", {}, true, true},
                       {"B", "RSP2", {{"center-frequency", "7.1M"}}, true, true},
                       {"C", "RSP2", {{"center-frequency", "5"}}, true, true},
                       {"D", "RSP2", {}, true, true}};
  const auto launches = plan_uncached(station);
  ASSERT_EQ(launches.size(), 2U);
  EXPECT_EQ(launches[1].name, "B");
  EXPECT_TRUE(launches[1].groups.empty());
  EXPECT_EQ(launches[1].capture.center, 7100000);
}

TEST(Plan, DirectSamplingFollowsTheDongleAndTheBand) {
  const struct {
    const char *model, *setting, *bands, *expected;
  } cases[] = {
      {"RTL-SDR Blog V4", "auto", "20", "off"}, {"RTL-SDR Blog V3", "auto", "20", "q"},
      {"RTL-SDR Blog V3", "auto", "2", "off"},  {"Generic dongle", "auto", "20", "q-check"},
      {"Generic dongle", "off", "20", nullptr},
  };
  for (const auto& example : cases) {
    Station station;
    station.common = {{"mode", "decoder"}, {"modes", "FT8"}, {"bands", example.bands}};
    station.receivers = {
        {"T", example.model, {{"backend", "rtl-sdr"}, {"direct-sampling", example.setting}}, true, true}};
    std::string result = "refused";
    try {
      result = plan_uncached(station).at(0).profile.at("direct-sampling");
    } catch (const PlanError&) {
    }
    EXPECT_EQ(result, example.expected == nullptr ? "refused" : example.expected) << example.model;
  }
}

TEST(Plan, WhatNoPlacementCouldCureIsAPlainFailure) {
  const struct {
    const char* text;
    void (*spoil)(Station&);
  } cases[] = {
      {"The launcher supports live SDRplay profiles only", [](Station& s) { s.common["backend"] = "rx888"; }},
      {"The launcher supports live SDRplay profiles only", [](Station& s) { s.common["iq-rate"] = "64000"; }},
      {"Invalid or duplicate receiver serial", [](Station& s) { s.receivers[2].serial = "a b"; }},
      {"Invalid or duplicate receiver serial", [](Station& s) { s.receivers[2].serial = "RX"; }},
      {"A band may be selected only once", [](Station& s) { s.common["bands"] = "20,20m"; }},
      {"Audio profile key and ID differ", [](Station& s) { s.common["audio.voice"] = "id=other,frequency=7M"; }},
      {"At most 16 receivers may be ticked",
       [](Station& s) {
         for (int i = 0; i < 16; ++i)
           s.receivers.push_back({fmt::format("X{}", i), "RSP2", {}, true, true});
       }},
  };
  for (const auto& example : cases) {
    Station station = two_families();
    example.spoil(station);
    std::string text;
    try {
      (void)plan_uncached(station);
    } catch (const PlanError& error) {
      text = "plan error: " + error.text();
    } catch (const std::exception& error) {
      text = error.what();
    }
    EXPECT_EQ(text, example.text);
  }
  // A receiver of its own fails, not the program.
  Station station = two_families();
  station.receivers[0].settings["history-days"] = "3";
  EXPECT_THROW((void)plan_uncached(station), PlanError);
}

TEST(Plan, TwoThreadsGetTheSameLaunches) {
  const Station station = two_families();
  const std::string expected = written(plan_uncached(station));
  std::vector<std::string> found(2);
  std::vector<std::thread> threads;
  for (std::string& text : found)
    threads.emplace_back([&text, &station] {
      for (int turn = 0; turn < 20; ++turn) {
        text = written(plan_uncached(station));
        if (text != written(plan(station))) text = "remembered differently";
      }
    });
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(found, (std::vector<std::string>{expected, expected}));
}

TEST(Memory, KeepsAnswersAndErrorsForAMinute) {
  Memory<int>::Clock::time_point now{};
  Memory<int> memory(2, [&now] { return now; });
  int computed = 0;
  const auto ask = [&](const char* serial, bool available, bool fails = false) {
    Station station;
    station.receivers = {{serial, "RSP2", {}, true, available}};
    try {
      return memory.get(station, [&](const Station&) {
        ++computed;
        if (fails) throw PlanError(PlanCode::capacity, "full");
        return computed;
      });
    } catch (const PlanError&) {
      return -1;
    }
  };
  EXPECT_EQ(ask("A", true), 1);
  EXPECT_EQ(ask("A", true), 1);
  EXPECT_EQ(ask("A", false, true), -1);
  EXPECT_EQ(ask("A", false), -1);
  now += std::chrono::seconds(60);
  EXPECT_EQ(ask("A", true), 1);
  EXPECT_EQ(ask("B", true), 3);  // drops the one that was asked for longest ago
  EXPECT_EQ(ask("A", false), 4);
  now += std::chrono::milliseconds(60001);
  EXPECT_EQ(ask("A", false), 5);
}

}  // namespace
}  // namespace launcher
