#include "results/health_line.h"

#include <string>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace {

struct Words {
  std::string operator()(const results::LastHour& hour) const {
    return fmt::format("hour {} {} {}", hour.dropped_intervals, hour.restarts, hour.deepest_backlog);
  }
  std::string operator()(results::Discontinuity) const { return "discontinuity"; }
  std::string operator()(results::OverloadStart) const { return "overload"; }
  std::string operator()(results::OverloadEnd) const { return "cleared"; }
  std::string operator()(const results::ReportsSent& sent) const { return fmt::format("sent {}", sent.spots); }
  std::string operator()(results::ReportsFailed) const { return "reports failed"; }
  std::string operator()(results::WsprUploadFailed) const { return "upload failed"; }
};

TEST(HealthLineTest, ReadsWhatAnEngineSaysOfItself) {
  const std::string hour = " interval(s) dropped for gaps, 2 restart(s) of all intervals, deepest backlog ";
  const std::pair<std::string, std::string> cases[] = {
      {"Last hour: 13" + hour + "0.75 s", "hour 13 2 0.75"},
      {"Last hour: 13" + hour + "4 s, and more", "hour 13 2 4"},
      {"Last hour: " + hour + "4 s", "-"},
      {"Last hour: 13" + hour + "0.7.5 s", "-"},
      {"Last hour: 13" + hour + "4s", "-"},
      {"Last hour: 99999999999999999999" + hour + "4 s", "-"},
      {" Last hour: 13" + hour + "4 s", "-"},
      {"IQ discontinuity: discarded incomplete decoder intervals (resets=1, driver reset)", "discontinuity"},
      {"an IQ discontinuity", "-"},
      {"RF Overload detected", "overload"},
      {"ADC overload", "overload"},
      {"Overload cleared after 3 s", "cleared"},
      {"OVERLOAD", "-"},
      {"PSK Reporter: sent 42 spots", "sent 42"},
      {"PSK Reporter: sent no spots", "-"},
      {"PSK Reporter packet exceeds 1400 bytes", "reports failed"},
      {"PSK Reporter stopped", "reports failed"},
      {"WSPRnet upload failed or expired; reception continues", "upload failed"},
      {"FT8 jobs: completed=5, spots=21", "-"},
      {"", "-"},
  };
  for (const auto& [line, reading] : cases) {
    const auto parsed = results::parse_health_line(line);
    EXPECT_EQ(parsed ? std::visit(Words(), *parsed) : "-", reading) << line;
  }
}

}  // namespace
