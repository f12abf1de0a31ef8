#include "sim/signals.h"

#include <map>

#include <gtest/gtest.h>

#include "base/callsign.h"
#include "base/text.h"
#include "base/time_text.h"
#include "results/sig_line.h"

namespace {

const double noon = static_cast<double>(*base::utc_seconds(2026, 10, 3, 12, 0, 0));

class SignalsTest : public testing::Test {
 protected:
  /// Six hours of lines, as the launcher reads them.
  [[nodiscard]] std::vector<sig::ParsedSigLine> listen(sim::KnownPlace place) const {
    const sim::KnownSignals signals(1, {std::move(place)}, population_);
    std::vector<sig::ParsedSigLine> read;
    for (double time = noon; time < noon + 6 * 3600; time += sim::KnownSignals::step) {
      for (const std::string& line : signals.lines(time)) {
        const auto parsed = sig::parse_sig_line(line);
        if (parsed)
          read.push_back(*parsed);
        else
          ADD_FAILURE() << line;
      }
    }
    return read;
  }
  std::vector<sim::Station> population_ = sim::make_population(1, 100);
};

TEST_F(SignalsTest, ACallIsSpottedOnceItsTextHasBeenRead) {
  std::map<std::string, std::string> texts;
  int spots = 0;
  for (const auto& line : listen({"psk20", "PSK31", 14070100, 14073000})) {
    EXPECT_EQ(*line.field("ch"), "psk20");
    EXPECT_TRUE(line.frequency >= 14.0701 && line.frequency <= 14.073);
    const std::string& track = *line.field("track");
    if (line.kind == "text") texts[track] += *line.field("text");
    if (line.kind != "spot") continue;
    ++spots;
    EXPECT_TRUE(base::is_callsign(*line.field("call"))) << *line.field("call");
    EXPECT_NE(texts[track].find(*line.field("call")), std::string::npos) << texts[track];
  }
  EXPECT_GT(spots, 10);
}

TEST_F(SignalsTest, AChartStartsGrowsAndStops) {
  int lines = -1;
  int charts = 0;
  for (const auto& line : listen({"faxnmg8", "WEFAX-120/576", 8503900, 8503900})) {
    if (line.kind == "wefax-start") {
      EXPECT_EQ(lines, -1) << "a chart within a chart";
      lines = 0;
    } else if (line.kind == "wefax-progress") {
      const int now = std::stoi(*line.field("lines"));
      EXPECT_GT(now, lines);
      lines = now;
    } else {
      EXPECT_EQ(line.kind, "wefax-stop");
      EXPECT_GT(lines, 1000);
      lines = -1;
      ++charts;
    }
  }
  EXPECT_GT(charts, 3);
}

}  // namespace
