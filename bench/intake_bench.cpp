// How many lines a second the intake takes on one core, without a window and without the disk.
#include <memory>
#include <regex>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "base/file_write.h"
#include "results/line_intake.h"
#include "results/spot_summary.h"
#include "station_lines.h"

namespace {

constexpr double line_seconds = 2e-6;
constexpr int lines_per_refresh = 125000;

// A station whose panes take the text and keep none of it, and whose rate stores only look.
class Station {
 public:
  Station() {
    activity_.begin_session(bench::busy_plan());
    results::IntakeSinks sinks;
    sinks.pane = [this](results::Pane, results::Tag, std::string_view text) { seen_ += text.size(); };
    sinks.rate = [this](const results::RateObservation& observation) { seen_ += observation.spots; };
    intake_ = std::make_unique<results::LineIntake>(
        activity_, log_, [this] { return source_.now(); }, std::move(sinks));
  }

  results::GuiLog& log() { return log_; }

  // As in the window, the labels are refreshed every 250 ms of a flood.
  void take_lines(benchmark::State& state) {
    std::int64_t taken = 0;
    std::size_t bytes = 0;
    for (auto _ : state) {
      const auto& [line, label, stamp_at] = source_.next();
      intake_->take(line, true, label);
      bytes += line.size();
      if (++taken % lines_per_refresh == 0) activity_.refresh(source_.now());
    }
    benchmark::DoNotOptimize(seen_);
    state.SetItemsProcessed(taken);
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
  }

 private:
  bench::LineSource source_{line_seconds};
  results::ActivityModel activity_;
  results::GuiLog log_;
  std::unique_ptr<results::LineIntake> intake_;
  std::uint64_t seen_ = 0;
};

void take_lines(benchmark::State& state) {
  Station().take_lines(state);
}
BENCHMARK(take_lines);

// One write to a file in memory for each line.
void take_lines_and_log(benchmark::State& state) {
  const base::TemporaryPath path("/dev/shm/tarnwick-intake-bench.log");
  Station station;
  station.log().open(path.path());
  station.take_lines(state);
}
BENCHMARK(take_lines_and_log);

template <typename Step>
void each_line(benchmark::State& state, Step step) {
  bench::LineSource source(line_seconds);
  for (auto _ : state)
    benchmark::DoNotOptimize(step(source.next().line));
  state.SetItemsProcessed(state.iterations());
}

void classify(benchmark::State& state) {
  each_line(state, results::classify_line);
}
BENCHMARK(classify);

void parse_summary(benchmark::State& state) {
  each_line(state, results::parse_spot_summary);
}
BENCHMARK(parse_summary);

// What the hand-written parser stands in for.
void match_expression(benchmark::State& state) {
  const std::regex expression(
      "^(FT[48]|JS8(?:-FAST|-TURBO|-SLOW)?|WSPR) ([0-9]{6}_[0-9]{6}) ([0-9]+\\.[0-9]+) MHz: ([0-9]+) spots(?:; "
      "callsigns=([A-Za-z0-9/,]*))?$");
  each_line(state, [&expression](const std::string& line) {
    std::smatch match;
    return std::regex_match(line, match, expression);
  });
}
BENCHMARK(match_expression);

// The share of the source in each figure above.
void restamp_alone(benchmark::State& state) {
  each_line(state, [](const std::string& line) { return line.size(); });
}
BENCHMARK(restamp_alone);

}  // namespace
