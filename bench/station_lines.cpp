#include "station_lines.h"

#include <array>
#include <cmath>
#include <random>

#include <fmt/format.h>

#include "base/time_text.h"
#include "results/mode_table.h"

namespace bench {
namespace {

constexpr std::array receivers{"240501", "240502", "00000001", "240503"};
constexpr std::array dial_hz{1840000.0,  3573000.0,  5357000.0,  7074000.0,  10136000.0, 14074000.0,
                             18100000.0, 21074000.0, 24915000.0, 28074000.0, 50313000.0};
constexpr double start = 1791028800;  // 2026-10-03 12:00 UTC
constexpr std::size_t line_count = 100000;
constexpr std::size_t stations = 4000;
constexpr std::size_t heard_on_a_channel = 600;
// The most spots of a cycle, by mode.
constexpr std::array<std::size_t, results::decode_modes.size()> most_spots{40, 15, 4, 4, 4, 4, 20};

using Random = std::mt19937;

std::size_t below(Random& random, std::size_t limit) {
  return random() % limit;
}

std::string callsign(std::size_t station) {
  const auto letter = [](std::size_t n) { return static_cast<char>('A' + n % 26); };
  return fmt::format("{}{}{}{}{}{}", letter(station), letter(station / 7), station % 10, letter(station / 26),
                     letter(station / 3), letter(station / 676));
}

std::string summary(Random& random, double time, bool empty) {
  const std::size_t mode = below(random, results::decode_modes.size());
  const std::size_t dial = below(random, dial_hz.size());
  const std::size_t spots = empty ? 0 : 1 + below(random, most_spots.at(mode));
  std::string line = fmt::format("{} {} {:.6f} MHz: {} spots; callsigns=", results::decode_modes.at(mode).text,
                                 base::stamp_time(time), dial_hz.at(dial) / 1e6, spots);
  for (std::size_t i = 0; i < spots; ++i)
    line += fmt::format("{}{}", i ? "," : "", callsign(dial * 340 + mode * 17 + below(random, heard_on_a_channel)));
  return line;
}

std::string text_line(Random& random, double time) {
  return fmt::format(R"(SIG PSK31 {} 14.070912 MHz: text track={} ch=psk20 snr=14.2 text="cq cq de {} k")",
                     base::stamp_time(time), below(random, 1000), callsign(below(random, stations)));
}

}  // namespace

std::vector<launcher::ReceiverLaunch> busy_plan() {
  std::vector<launcher::ReceiverLaunch> plan;
  for (const char* serial : receivers) {
    auto& launch = plan.emplace_back();
    launch.name = serial;
    launch.model = "RSPdx";
    for (const auto& mode : results::decode_modes)
      for (const double hz : dial_hz)
        launch.channels.push_back({std::string(mode.text), hz});
  }
  return plan;
}

LineSource::LineSource(double line_seconds) : line_seconds_(line_seconds), now_(start) {
  Random random(1);
  const auto plan = busy_plan();
  for (std::size_t i = 0; i < line_count; ++i) {
    const std::size_t kind = i % 20;
    std::string line;
    if (kind < 17)
      line = summary(random, start, kind >= 14);
    else if (kind < 19)
      line = text_line(random, start);
    else
      line = fmt::format("FT8 jobs: completed={}, spots={}", below(random, 90), below(random, 900));
    const auto stamp_at = line.find(base::stamp_time(start));
    lines_.push_back({std::move(line), plan.at(below(random, plan.size())).label(), stamp_at});
  }
}

const StationLine& LineSource::next() {
  now_ += line_seconds_;
  if (now_ >= stamped_second_ + 1) {
    stamped_second_ = std::floor(now_);
    stamp_ = base::stamp_time(now_);
  }
  StationLine& line = lines_[place_++ % lines_.size()];
  if (line.stamp_at != std::string::npos) line.line.replace(line.stamp_at, stamp_.size(), stamp_);
  return line;
}

}  // namespace bench
