#include "sim/lines.h"

#include <gtest/gtest.h>

#include "base/time_text.h"
#include "results/sig_line.h"
#include "results/spot_summary.h"

namespace {

using sim::Mode;

const double noon = static_cast<double>(*base::utc_seconds(2026, 10, 3, 12, 0, 0));

sim::Decode heard(std::string sender) {
  return {-12, 0.2, 1234, "CQ " + sender + " FN42", std::move(sender)};
}

TEST(SummaryLine, CountsEveryDecodeAndNamesEverySenderOnce) {
  const std::vector<sim::Decode> decodes{heard("K1ABC"), heard("EA8/W9XYZ"), heard(""), heard("K1ABC")};
  EXPECT_EQ(sim::summary_line({14074000, Mode::ft8}, noon, decodes),
            "FT8 261003_120000 14.074000 MHz: 4 spots; callsigns=K1ABC,EA8/W9XYZ");
  EXPECT_EQ(sim::summary_line({14080000, Mode::ft4}, noon + 7.5, {}),
            "FT4 261003_120007 14.080000 MHz: 0 spots; callsigns=");
}

TEST(SummaryLine, IsReadBackByTheLauncherInEveryMode) {
  for (int mode = 0; mode < static_cast<int>(launcher::digital_mode_count); ++mode) {
    const sim::Channel channel{7047500.5, static_cast<Mode>(mode)};
    const std::string line = sim::summary_line(channel, noon, {heard("K1ABC")});
    const auto summary = results::parse_spot_summary(line);
    ASSERT_TRUE(summary) << line;
    EXPECT_EQ(summary->mode, launcher::digital_mode_text(channel.mode));
    EXPECT_EQ(summary->stamp, "261003_120000");
    EXPECT_NEAR(summary->frequency, channel.frequency, 0.6);
    EXPECT_EQ(summary->spots, 1U);
    EXPECT_EQ(summary->callsigns, "K1ABC");
  }
}

TEST(DecodeLogLine, StandsInTheColumnsOfRealLogs) {
  EXPECT_EQ(sim::decode_log_line({14074000, Mode::ft8}, noon, {15, 0.5, 480, "CQ MI0OBR IO74", "MI0OBR"}),
            "261003_120000    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74\n");
  EXPECT_EQ(sim::decode_log_line({144489000, Mode::wspr}, noon, {-24, -1.1, 1500, "K1ABC FN42 37", "K1ABC"}),
            "261003_120000   144.489 Rx WSPR   -24 -1.1 1500 K1ABC FN42 37\n");
}

TEST(QuotedValue, IsReadBackByTheLauncher) {
  for (const std::string text : {"cq cq de ", "a \"b\" \\ c", "line\nfeed\ttab", "\x01\x7f end", "caf\xc3\xa9", ""}) {
    const auto line =
        sig::parse_sig_line("SIG CW 261003_120000 14.100000 MHz: text ch=x text=" + sim::quoted(text) + " snr=3");
    ASSERT_TRUE(line);
    EXPECT_EQ(*line->field("text"), text);
    EXPECT_EQ(*line->field("snr"), "3");
  }
}

}  // namespace
