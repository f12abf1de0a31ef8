#include "sim/faults.h"

#include <algorithm>
#include <csignal>
#include <memory>
#include <string>
#include <unistd.h>

#include <fmt/format.h>

#include "sim/lines.h"

namespace sim {
namespace {

constexpr double flood_period = 0.02;       ///< seconds between the portions of a flood with a rate
constexpr std::uint64_t flood_batch = 500;  ///< lines of a portion without one

class FloodSource {
 public:
  FloodSource(const Flood& flood, std::vector<Channel> channels, Output& output)
      : flood_(flood), channels_(std::move(channels)), output_(output) {}

  double operator()(double now) {
    const double began = began_ == 0 ? (began_ = now) : began_;
    const auto allowed = static_cast<std::uint64_t>(flood_.rate * (now + flood_period - began));
    const auto target = std::min(flood_.lines, flood_.rate > 0 ? std::max(allowed, sent_) : sent_ + flood_batch);
    std::string block;
    for (; sent_ < target; ++sent_)
      block += text(now) + '\n';
    output_.raw(block);
    if (sent_ >= flood_.lines) return never;
    return flood_.rate > 0 ? now + flood_period : now;
  }

 private:
  [[nodiscard]] std::string text(double now) const {
    if (!flood_.summaries || channels_.empty())
      return fmt::format("Simulated flood, line {} of {}", sent_ + 1, flood_.lines);
    const Channel& channel = channels_[sent_ % channels_.size()];
    const double cycle = mode_timing(channel.mode).cycle;
    const auto number = last_complete_cycle(now, cycle) - static_cast<std::int64_t>(sent_ / channels_.size() % 200);
    const std::vector<Decode> decodes{{-10, 0.1, 1000, {}, "K1ABC"},
                                      {-3, 0.2, 1500, {}, fmt::format("W{}XYZ", sent_ % 10)}};
    return summary_line(channel, static_cast<double>(number) * cycle, decodes);
  }

  Flood flood_;
  std::vector<Channel> channels_;
  Output& output_;
  double began_ = 0;
  std::uint64_t sent_ = 0;
};

}  // namespace

void plan_faults(Timeline& timeline, const Faults& faults, const std::vector<Channel>& channels, double start,
                 Output& output) {
  if (faults.exit_after) timeline.add(start + *faults.exit_after, [](double) -> double { throw FaultyEnd(); });
  if (faults.flood.lines > 0) timeline.add(start + faults.flood.after, FloodSource(faults.flood, channels, output));
  if (faults.long_line_after) {
    timeline.add(start + *faults.long_line_after, [&output, bytes = faults.long_line_bytes](double) {
      output.line(std::string(bytes, 'x'));
      return never;
    });
  }
  if (faults.invalid_utf8_after) {
    timeline.add(start + *faults.invalid_utf8_after, [&output](double) {
      output.line("Simulated noise: \xff\xfe caf\xe9 \xc3( \xed\xa0\x80 end");
      return never;
    });
  }
}

void end_badly(const Faults& faults) {
  if (faults.exit_signal != 0) {
    std::signal(faults.exit_signal, SIG_DFL);
    std::raise(faults.exit_signal);
  }
  _exit(faults.exit_status);
}

void leave_pipe_holder(double seconds) {
  if (seconds <= 0 || fork() != 0) return;
  usleep(static_cast<useconds_t>(seconds * 1e6));
  _exit(0);
}

}  // namespace sim
