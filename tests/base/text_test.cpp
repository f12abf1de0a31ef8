#include "base/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/numbers.h"
#include "base/time_text.h"

namespace {

using testing::ElementsAre;

TEST(TextTest, ValidUtf8ReplacesOnlyWhatIsBroken) {
  const std::string mark = "\xEF\xBF\xBD";
  const std::pair<std::string, std::string> cases[] = {
      {"plain", "plain"},
      {"caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xBB", "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x93\xBB"},
      {"cut \xE2\x82", "cut " + mark + mark},
      {"cut \xF0\x9F\x93 on", "cut " + mark + mark + mark + " on"},
      {"\xC0\xAF", mark + mark},             // an overlong slash
      {"\xED\xA0\x80", mark + mark + mark},  // a surrogate
      {std::string("a\0b", 3), "a" + mark + "b"},
      {"\xFF\xFE", mark + mark},
      {"", ""},
  };
  for (const auto& [bytes, text] : cases)
    EXPECT_EQ(base::valid_utf8(bytes), text);
}

TEST(TextTest, Pieces) {
  EXPECT_THAT(base::split("a,,b", ','), ElementsAre("a", "", "b"));
  EXPECT_THAT(base::split("a,", ','), ElementsAre("a", ""));
  EXPECT_THAT(base::split("", ','), ElementsAre(""));
  EXPECT_THAT(base::words(" \tone  two\t"), ElementsAre("one", "two"));
  EXPECT_THAT(base::words(" \t"), ElementsAre());
  EXPECT_EQ(base::trim(" \r\n\t "), "");
  EXPECT_EQ(base::trim("\t a b \r\n"), "a b");
  EXPECT_EQ(base::join({"", "b", ""}, ", "), ", b, ");
  EXPECT_EQ(base::upper("caf\xC3\xA9 z"), "CAF\xC3\xA9 Z") << "letters are ASCII letters";
}

TEST(NumbersTest, OnlyWholePlainDecimalsAreRead) {
  const std::pair<std::string_view, double> good[] = {
      {"14.074", 14.074}, {"-0.5", -0.5}, {".5", 0.5}, {"1e3", 1000}, {"007", 7}};
  for (const auto& [text, value] : good)
    EXPECT_EQ(base::parse_double(text), value) << text;
  for (const std::string_view text :
       {"", "-", ".", "+1", " 1", "1 ", "1,5", "0x10", "inf", "-inf", "nan", "1e999", "1e", "--1", "1.2.3", "14074k"})
    EXPECT_EQ(base::parse_double(text), std::nullopt) << text;
  for (const std::string_view text : {"", "-", "+1", "1.0", " 1", "9223372036854775808", "0x1"})
    EXPECT_EQ(base::parse_int(text), std::nullopt) << text;
  EXPECT_EQ(base::parse_int("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(base::parse_unsigned("18446744073709551615"), UINT64_MAX);
  for (const std::string_view text : {"", "-1", "+1", "18446744073709551616"})
    EXPECT_EQ(base::parse_unsigned(text), std::nullopt) << text;
}

TEST(TimeTextTest, TimesAreUtcWithEveryFieldPadded) {
  const double time = 1759478402.999;  // 2025-10-03 08:00:02.999
  EXPECT_EQ(base::journal_time(time), "2025-10-03 08:00:02Z");
  EXPECT_EQ(base::clock_time(time), "08:00:02Z");
  EXPECT_EQ(base::stamp_time(time), "251003_080002");
  EXPECT_EQ(base::journal_time(951782400), "2000-02-29 00:00:00Z");
}

TEST(TimeTextTest, SecondsOfADateRefuseWhatIsNoDate) {
  EXPECT_EQ(base::utc_seconds(2025, 10, 3, 8, 0, 2), 1759478402);
  EXPECT_EQ(base::utc_seconds(1970, 1, 1, 0, 0, 0), 0);
  EXPECT_EQ(base::utc_seconds(2000, 2, 29, 0, 0, 0), 951782400);
  const int bad[][6] = {{2025, 13, 1, 0, 0, 0},  {2025, 0, 1, 0, 0, 0},   {2025, 2, 31, 0, 0, 0},
                        {1900, 2, 29, 0, 0, 0},  {2025, 1, 0, 0, 0, 0},   {2025, 1, 1, 24, 0, 0},
                        {2025, 1, 1, 0, 60, 0},  {2025, 1, 1, 0, 0, 60},  {2025, 1, 1, -1, 0, 0},
                        {1969, 12, 31, 0, 0, 0}, {2025, 257, 1, 0, 0, 0}, {2025, 1, 257, 0, 0, 0},
                        {67561, 1, 1, 0, 0, 0},  {2025, -255, 1, 0, 0, 0}};
  for (const auto& t : bad)
    EXPECT_EQ(base::utc_seconds(t[0], t[1], t[2], t[3], t[4], t[5]), std::nullopt)
        << t[0] << '-' << t[1] << '-' << t[2];
}

}  // namespace
