#include "results/spot_summary.h"

#include <random>
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "results/stamp.h"

namespace {

using results::parse_spot_summary;
using testing::Eq;
using testing::Optional;

TEST(SpotSummaryTest, TakesALineApart) {
  const auto full =
      parse_spot_summary("JS8-TURBO 261003_120000 14.070912 MHz: 12 spots; callsigns=K1ABC,w9xyz/P,K1ABC");
  ASSERT_TRUE(full);
  EXPECT_EQ(full->mode, "JS8-TURBO");
  EXPECT_EQ(full->stamp, "261003_120000");
  EXPECT_EQ(full->frequency, 14070912) << "whole Hz, though 14.070912 times a million is not";
  EXPECT_EQ(full->spots, 12u);
  EXPECT_THAT(full->callsigns, Optional(Eq("K1ABC,w9xyz/P,K1ABC")));

  const auto empty = parse_spot_summary("FT4 261003_120007 14.080000 MHz: 0 spots; callsigns=");
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->spots, 0u);
  EXPECT_THAT(empty->callsigns, Optional(Eq("")));

  const auto older = parse_spot_summary("WSPR 261345_120000 0.1365 MHz: 18446744073709551615 spots");
  ASSERT_TRUE(older) << "a bad date is for the stamp conversion to find";
  EXPECT_EQ(older->frequency, 136500);
  EXPECT_EQ(older->spots, UINT64_MAX);
  EXPECT_EQ(older->callsigns, std::nullopt);
}

TEST(SpotSummaryTest, RefusesNumbersThatDoNotFit) {
  EXPECT_FALSE(parse_spot_summary("FT8 261003_120000 14.074000 MHz: 18446744073709551616 spots"));
  EXPECT_FALSE(parse_spot_summary("FT8 261003_120000 " + std::string(400, '9') + ".0 MHz: 1 spots"));
  EXPECT_FALSE(parse_spot_summary("FT8 261003_120000 " + std::string(306, '9') + ".0 MHz: 1 spots"))
      << "finite in MHz, but not in Hz";
}

// Lines that are nearly summaries: valid ones with bytes dropped, doubled, swapped for others, or cut.
class Mutations {
 public:
  std::string next() {
    std::string line = seeds_[below(std::size(seeds_))];
    for (std::size_t changes = below(4); changes > 0 && !line.empty(); --changes)
      change(line);
    return line;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  void change(std::string& line) {
    static constexpr std::string_view bytes = "09Aa/,.;:-_ =\tFTJSW\n\r\0\x80x";
    const std::size_t at = below(line.size());
    switch (below(5)) {
      case 0:
        line.erase(at, 1 + below(3));
        break;
      case 1:
        line.insert(at, 1, bytes[below(bytes.size())]);
        break;
      case 2:
        line[at] = bytes[below(bytes.size())];
        break;
      case 3:
        line.insert(at, line.substr(at, 1 + below(8)));
        break;
      default:
        line.resize(at);
    }
  }

  std::mt19937 random_{7};
  static constexpr const char* seeds_[] = {
      "FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC,W9XYZ,K1ABC",
      "FT4 261003_120007 14.080000 MHz: 0 spots; callsigns=",
      "JS8 261003_120000 7.078 MHz: 7 spots",
      "JS8-FAST 261003_120000 7.078000 MHz: 7 spots",
      "JS8-SLOW 999999_999999 0.0 MHz: 1 spots; callsigns=a/B,,",
      "WSPR 261003_120000 14.095600 MHz: 3 spots; callsigns=PJ4/K1ABC",
  };
};

TEST(SpotSummaryTest, AcceptsWhatItsExpressionAccepts) {
  const std::regex expression(
      "^(FT[48]|JS8(?:-FAST|-TURBO|-SLOW)?|WSPR) ([0-9]{6}_[0-9]{6}) ([0-9]+\\.[0-9]+) MHz: ([0-9]+) spots(?:; "
      "callsigns=([A-Za-z0-9/,]*))?$");
  Mutations mutations;
  int accepted = 0;
  for (int i = 0; i < 30000; ++i) {
    const std::string line = mutations.next();
    std::smatch match;
    const bool expected = std::regex_match(line, match, expression);
    const auto summary = parse_spot_summary(line);
    ASSERT_EQ(summary.has_value(), expected) << testing::PrintToString(line);
    if (!expected) continue;
    ++accepted;
    ASSERT_EQ(summary->mode, match[1].str());
    ASSERT_EQ(summary->stamp, match[2].str());
    ASSERT_DOUBLE_EQ(summary->frequency, std::stod(match[3]) * 1e6);
    ASSERT_EQ(summary->spots, std::stoull(match[4]));
    ASSERT_EQ(summary->callsigns.has_value(), match[5].matched);
    ASSERT_EQ(summary->callsigns.value_or(""), match[5].str());
  }
  EXPECT_GT(accepted, 5000);
  EXPECT_LT(accepted, 25000);
}

TEST(StampTest, IsSecondsOfADateThatExists) {
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"261003_120000", 1791028800},   {"000101_000000", 946684800},    {"991231_235959", 4102444799},
      {"240229_000000", 1709164800},   {"250229_000000", std::nullopt}, {"261345_120000", std::nullopt},
      {"260231_120000", std::nullopt}, {"260001_120000", std::nullopt}, {"260100_120000", std::nullopt},
      {"261003_240000", std::nullopt}, {"261003_126000", std::nullopt}, {"261003_120060", std::nullopt},
      {"261003-120000", std::nullopt}, {"261003_12000", std::nullopt},  {"261003_1200000", std::nullopt},
      {"26100 _120000", std::nullopt}, {"+61003_120000", std::nullopt}, {"", std::nullopt},
  };
  for (const auto& [stamp, seconds] : cases)
    EXPECT_EQ(results::stamp_seconds(stamp), seconds) << stamp;
}

}  // namespace
