#include "results/sig_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using Fields = std::map<std::string, std::string, std::less<>>;

const std::string head = "SIG PSK31 261013_181530 14.070912 MHz: text ";

Fields fields_of(const std::string& tail) {
  const auto parsed = sig::parse_sig_line(head + tail);
  return parsed ? parsed->fields : Fields{{"(no line)", tail}};
}

TEST(SigLineTest, TakesALineApart) {
  const auto known = sig::parse_sig_line(
      "SIG WEFAX-120/576 261013_182530 8.503900 MHz: wefax-image track=2147483648 ch=faxnmg8 lines=1200 "
      "path=\"/nonexistent/fax.png\"\r\n");
  ASSERT_TRUE(known);
  EXPECT_EQ(known->scope, "");
  EXPECT_EQ(known->mode, "WEFAX-120/576");
  EXPECT_EQ(known->stamp, "261013_182530");
  EXPECT_EQ(known->frequency, 8.5039);
  EXPECT_EQ(known->kind, "wefax-image");
  EXPECT_EQ(known->fields,
            (Fields{{"track", "2147483648"}, {"ch", "faxnmg8"}, {"lines", "1200"}, {"path", "/nonexistent/fax.png"}}));

  for (const std::string scope : {"HAM", "OTHER"}) {
    const auto survey = sig::parse_sig_line("SIG  " + scope + "   CW  999999_999999 -1e1   MHz:  spot");
    ASSERT_TRUE(survey) << scope;
    EXPECT_EQ(survey->scope, scope);
    EXPECT_EQ(survey->mode, "CW");
    EXPECT_EQ(survey->frequency, -10);
    EXPECT_EQ(survey->kind, "spot");
    EXPECT_TRUE(survey->fields.empty());
  }
}

TEST(SigLineTest, RefusesOtherLines) {
  for (const char* line : {
           "",
           "SIG",
           "SIG   ",
           " SIG PSK31 261013_181530 14.0 MHz: text",
           "SIGPSK31 261013_181530 14.0 MHz: text",
           "SIG PSK31 261013_181530 14.0 MHz:",
           "SIG HAM 261013_181530 14.0 MHz: text",
           "SIG PSK31 261013_18153 14.0 MHz: text",
           "SIG PSK31 261013-181530 14.0 MHz: text",
           "SIG PSK31 261013_181530 14.0 MHz text",
           "SIG PSK31 261013_181530 14.0MHz: text",
           "SIG PSK31 261013_181530 14.0x MHz: text",
           "SIG PSK31 261013_181530 +14.0 MHz: text",
           "SIG PSK31 261013_181530 0x1p3 MHz: text",
           "SIG PSK31 261013_181530 inf MHz: text",
           "SIG PSK31 261013_181530 nan MHz: text",
           "SIG PSK31 261013_181530 1e999 MHz: text",
           "SIG PSK31 261013_181530 MHz: text ch=a",
           "SIG PSK31\t261013_181530 14.0 MHz: text",
       })
    EXPECT_FALSE(sig::parse_sig_line(line)) << line;
}

TEST(SigLineTest, ReadsFields) {
  const std::pair<const char*, Fields> cases[] = {
      {"a=1   b=2 a=3  ", {{"a", "3"}, {"b", "2"}}},
      {"flag a= b", {{"flag", ""}, {"a", ""}, {"b", ""}}},
      {"=5 a=b=c", {{"", "5"}, {"a", "b=c"}}},
      {"a=x\"y z", {{"a", "x\"y"}, {"z", ""}}},
      {"a=\"one two\"b=3 c=\"\"", {{"a", "one two"}, {"b", "3"}, {"c", ""}}},
      {"a=\"to the end b=3  ", {{"a", "to the end b=3"}}},
      {"a=\"", {{"a", ""}}},
      {"a=b\tc=d", {{"a", "b\tc=d"}}},
      {"a=\\n", {{"a", "\\n"}}},
  };
  for (const auto& [tail, fields] : cases)
    EXPECT_EQ(fields_of(tail), fields) << tail;
}

TEST(SigLineTest, ReadsEscapesInQuotedValues) {
  const std::pair<const char*, std::string> cases[] = {
      {R"("say \"73\" k")", "say \"73\" k"},
      {R"("back\\")", "back\\"},
      {R"("a\nb\rc\td")", "a\nb\rc\td"},
      {R"("\x41\xfF\x00.")", std::string("A\xFF\0.", 4)},
      {R"("\x4")", "x4"},
      {R"("\xg1 \x")", "xg1 x"},
      {R"("\q\ \=")", "q ="},
      {R"("open\)", "open\\"},
      {R"("open\")", "open\""},
      {R"("open\x4)", "openx4"},
  };
  for (const auto& [value, text] : cases)
    EXPECT_EQ(fields_of(std::string("v=") + value), (Fields{{"v", text}})) << value;
}

}  // namespace
