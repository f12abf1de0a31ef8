#include "sim/traffic.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "base/callsign.h"
#include "base/time_text.h"
#include "sim/activity.h"
#include "sim/replay.h"

namespace {

using sim::Mode;

const double noon = static_cast<double>(*base::utc_seconds(2026, 10, 3, 12, 0, 0));
const sim::Channel twenty{14074000, Mode::ft8};

/// Every decode of `hours` of a channel.
std::vector<sim::Decode> listen(const sim::Traffic& traffic, const sim::Channel& channel, double hours) {
  std::vector<sim::Decode> all;
  const double cycle = sim::mode_timing(channel.mode).cycle;
  for (double start = noon; start < noon + hours * 3600; start += cycle) {
    const auto decodes = traffic.cycle(channel, start);
    all.insert(all.end(), decodes.begin(), decodes.end());
  }
  return all;
}

TEST(Population, HasTheCallsAndSharesOfARealSite) {
  const auto stations = sim::make_population(1);
  std::set<std::string> calls;
  std::size_t american = 0;
  for (const auto& station : stations) {
    EXPECT_TRUE(base::is_callsign(station.call)) << station.call;
    calls.insert(station.call);
    american += std::string("KNWA").find(station.call[0]) != std::string::npos ? 1 : 0;
  }
  EXPECT_EQ(calls.size(), 5400U);
  EXPECT_GT(american, stations.size() / 5);
  EXPECT_LT(american, stations.size() / 2);
}

TEST(Traffic, ACycleIsTheSameWheneverItIsAskedFor) {
  const sim::Traffic traffic(7, 1, 0);
  const auto once = traffic.cycle(twenty, noon);
  const auto again = sim::Traffic(7, 1, 0).cycle(twenty, noon);
  ASSERT_FALSE(once.empty());
  ASSERT_EQ(once.size(), again.size());
  for (std::size_t i = 0; i < once.size(); ++i)
    EXPECT_EQ(once[i].message, again[i].message);
  EXPECT_NE(once.front().message, sim::Traffic(8, 1, 0).cycle(twenty, noon).front().message);
}

TEST(Traffic, MessagesNameTheSenderOfTheSummary) {
  const sim::Traffic traffic(1, 1, 0);
  for (int mode = 0; mode < static_cast<int>(launcher::digital_mode_count); ++mode) {
    const sim::Channel channel{14078000, static_cast<Mode>(mode)};
    const auto decodes = listen(traffic, channel, 3);
    EXPECT_FALSE(decodes.empty()) << mode;
    for (const auto& decode : decodes)
      EXPECT_EQ(sim::sender_of(channel.mode, decode.message), decode.sender) << decode.message;
  }
}

TEST(Traffic, IsAsBusyAsRealBandsAre) {
  const auto decodes = listen(sim::Traffic(1, 1, 0), twenty, 24);
  const double per_cycle = static_cast<double>(decodes.size()) / (24 * 240);
  EXPECT_GT(per_cycle, 14);
  EXPECT_LT(per_cycle, 34);
  const auto calls =
      std::count_if(decodes.begin(), decodes.end(), [](const auto& d) { return d.message.starts_with("CQ "); });
  EXPECT_NEAR(static_cast<double>(calls) / static_cast<double>(decodes.size()), 0.28, 0.02);
  std::vector<int> snr;
  for (const auto& decode : decodes) {
    snr.push_back(decode.snr);
    EXPECT_TRUE(decode.snr >= -24 && decode.snr <= 58 && decode.audio >= 100 && decode.audio <= 3000);
    EXPECT_TRUE(decode.dt > -2.5 && decode.dt < 2.5);
  }
  std::sort(snr.begin(), snr.end());
  EXPECT_NEAR(snr[snr.size() / 2], -6, 2);
  EXPECT_NEAR(snr[snr.size() * 9 / 10], 12, 3);
  EXPECT_NEAR(snr[snr.size() * 99 / 100], 26, 6);
  EXPECT_LT(listen(sim::Traffic(1, 0.05, 0), twenty, 2).size() * 8, listen(sim::Traffic(1, 1, 0), twenty, 2).size());
  EXPECT_TRUE(listen(sim::Traffic(1, 0, 0), twenty, 2).empty());
}

TEST(Traffic, StationsStayForSomeMinutesAndOthersComeLater) {
  const sim::Traffic traffic(1, 1, 0);
  const auto calls = [&](double start, int cycles) {
    std::set<std::string> heard;
    for (int i = 0; i < cycles; ++i) {
      for (const auto& decode : traffic.cycle(twenty, start + i * 15))
        heard.insert(decode.sender);
    }
    return heard;
  };
  const auto first = calls(noon, 20);
  const auto next = calls(noon + 300, 20);
  const auto evening = calls(noon + 6 * 3600, 20);
  const auto common = [&](const std::set<std::string>& other) {
    return std::count_if(first.begin(), first.end(), [&](const auto& call) { return other.contains(call); });
  };
  EXPECT_GT(common(next), static_cast<long>(first.size()) / 2);
  EXPECT_LT(common(evening), static_cast<long>(first.size()) / 3);
}

TEST(Activity, LowBandsLiveByNightAndHighBandsByDay) {
  for (const double low : {1840000.0, 3573000.0, 7074000.0})
    EXPECT_GT(sim::busy_decodes({low, Mode::ft8}, 0), 2 * sim::busy_decodes({low, Mode::ft8}, 12)) << low;
  for (const double high : {18100000.0, 21074000.0, 28074000.0})
    EXPECT_LT(4 * sim::busy_decodes({high, Mode::ft8}, 2), sim::busy_decodes({high, Mode::ft8}, 14)) << high;
}

}  // namespace
