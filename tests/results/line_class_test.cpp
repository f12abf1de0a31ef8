#include "results/line_class.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

std::string shown(std::string_view line, std::string_view label = "") {
  std::string text;
  results::append_display_text(text, line, label);
  return text;
}

TEST(LineClassTest, FindsPaneColourAndWhetherALineIsShown) {
  // pane, tag, and marks for a summary and for an empty cycle
  const std::pair<const char*, const char*> cases[] = {
      {"FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC", "FT8 good summary"},
      {"FT4 261003_120000 14.080000 MHz: 12 spots", "FT8 good summary"},
      {"JS8-TURBO 261003_120000 14.078000 MHz: 1 spots; callsigns=K2XYZ", "JS8 good summary"},
      {"JS8CALL at 7.078 MHz: whatever", "JS8 normal summary"},
      {"WSPR 261003_120000 14.095600 MHz: 0 spots; callsigns=", "WSPR good summary hidden"},
      {"FT8 261003_120000 14.074000 MHz: 0 spots, 4 dropped", "FT8 warning summary hidden"},
      {"FT8 261003_120000 14.074000 MHz: 10 spots", "FT8 good summary"},
      {"FT8 261003_120000 14.074000 MHz: 0 spots failed", "program error"},
      {"FT8 261003_120000 14.074000 MHz: 3 spots; callsigns=failed", "program error"},
      {"FT8 jobs: completed=5, spots=21", "program good"},
      {"FT5 261003_120000 14.074000 MHz: 0 spots", "program good"},
      {" FT8 261003_120000 14.074000 MHz: 0 spots", "program good"},
      {"WSPR-15 14.0 MHz: x", "program normal"},
      {"SIG HAM CW 261013_181540 14.100000 MHz: text text=\"e\"", "Signals normal"},
      {"SIG nonsense: Error, 3 dropped", "Signals error"},
      {"SIGNAL lost", "program normal"},
      {"Receiver exited with an error", "program error"},
      {"upload failed: 3 spots dropped", "program error"},
      {"error, in lower case", "program normal"},
      {"Clipped samples", "program warning"},
      {"IQ discontinuity", "program warning"},
      {"RF Overload", "program warning"},
      {"RF overload", "program normal"},
      {"", "program normal"},
  };
  for (const auto& [line, expected] : cases) {
    const auto found = results::classify_line(line);
    EXPECT_EQ(fmt::format("{} {}{}{}", results::pane_name(found.pane), results::tag_name(found.tag),
                          found.summary ? " summary" : "", found.hidden ? " hidden" : ""),
              expected)
        << line;
  }
}

TEST(LineClassTest, ShowsNoCallsignListsAndOnlyValidText) {
  EXPECT_EQ(shown("FT8 261003_120000 14.074000 MHz: 3 spots; callsigns=K1ABC,W9XYZ,K1A", "RSPdx · 7"),
            "[RSPdx · 7] FT8 261003_120000 14.074000 MHz: 3 spots");
  EXPECT_EQ(shown("JS8 any spots; callsigns=K1ABC spots; callsigns="), "JS8 any spots");
  EXPECT_EQ(shown("SIG 3 spots; callsigns=K1ABC"), "SIG 3 spots; callsigns=K1ABC");
  EXPECT_EQ(shown("caf\xC3\xA9 \xFF"), "caf\xC3\xA9 \xEF\xBF\xBD");
  EXPECT_EQ(shown("", "A · 1"), "[A · 1] ");
}

TEST(LineClassTest, KnowsResultsFromOtherLines) {
  const std::pair<const char*, bool> cases[] = {
      {"FT8 261003_120000 14.074000 MHz: 12 spots", true},
      {"JS8-SLOW x MHz:", true},
      {"FT8 261003_120000 14.074000 MHz: failed", false},
      {"FT8 decode failed; callsigns=K1ABC", true},
      {"SIG ", true},
      {"SIG", false},
      {"FT8 jobs: completed=5", false},
      {"audio: listener 17 joined from 192.0.2.1", true},
      {"listener listener 3 joined from ", true},
      {"listener  joined from here", false},
      {"listener 17 left", false},
      {"listener 17 joined from", false},
      {"", false},
  };
  for (const auto& [line, result] : cases)
    EXPECT_EQ(results::is_result_line(line), result) << line;
}

}  // namespace
