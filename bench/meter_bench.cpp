// What it costs the launcher to ask running engines for their levels, with nothing painted.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <glib.h>

#include "receiver/meter_poller.h"
#include "stand_in_engines.h"

namespace {

constexpr std::size_t engine_count = 16;

/// Runs a poller for that long. Returns how many answers each target came to.
std::map<std::string, int> poll_for(std::int64_t microseconds, const std::vector<receiver::MeterTarget>& targets,
                                    bool shown) {
  std::map<std::string, int> answers;
  receiver::MeterPoller poller({[&] { return targets; }, [shown] { return shown; },
                                [&](const std::string& name) { ++answers[name]; },
                                [] { return g_get_monotonic_time(); }});
  poller.start();
  const std::int64_t end = g_get_monotonic_time() + microseconds;
  const base::Timer wake = base::Timer::once(std::chrono::milliseconds(microseconds / 1000), [] {});
  while (g_get_monotonic_time() < end)
    g_main_context_iteration(nullptr, TRUE);
  return answers;
}

// Arguments: how many of the sixteen engines hang, and whether a meter is on the screen.
void polls(benchmark::State& state) {
  constexpr std::int64_t lasts = 10000000;  // us
  constexpr double seconds = 1e-6 * lasts;
  const auto hung = static_cast<std::size_t>(state.range(0));
  std::array<char, 32> directory{"/tmp/meter-bench-XXXXXX"};
  if (!::mkdtemp(directory.data())) std::abort();
  std::vector<receiver::MeterTarget> targets;
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < engine_count; ++i) {
    paths.push_back(fmt::format("{}/{}", directory.data(), i));
    targets.push_back({fmt::format("receiver {}", i), paths.back()});
  }
  {
    const stand_in::Engines engines(paths, hung);
    for (auto _ : state) {
      const double before = stand_in::processor_seconds();
      auto answers = poll_for(lasts, targets, state.range(1) != 0);
      state.counters["core_percent"] = 100 * (stand_in::processor_seconds() - before) / seconds;
      std::vector<int> answering;
      for (std::size_t i = hung; i < engine_count; ++i)
        answering.push_back(answers[targets[i].name]);
      const auto [slowest, fastest] = std::minmax_element(answering.begin(), answering.end());
      state.counters["slowest_polls_per_s"] = *slowest / seconds;
      state.counters["fastest_polls_per_s"] = *fastest / seconds;
    }
  }
  ::rmdir(directory.data());
}

BENCHMARK(polls)
    ->ArgNames({"hung", "shown"})
    ->Args({0, 1})
    ->Args({1, 1})
    ->Args({12, 1})
    ->Args({0, 0})
    ->Iterations(1)
    ->UseRealTime();

}  // namespace
