// What living engines cost the main loop when they print as fast as they can, with nobody making anything of the lines.
#include <algorithm>
#include <ctime>
#include <string>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "receiver/supervisor.h"

namespace {

// The longest time that the main loop was away from its poll: by the clock, and in processor time of this thread, which
// is what remains of it on a machine that has nothing else to do.
class LongestIteration {
 public:
  LongestIteration() {
    wall = cpu = 0;
    left_poll = cpu_at = {};
    g_main_context_set_poll_func(nullptr, poll);
  }
  ~LongestIteration() { g_main_context_set_poll_func(nullptr, g_poll); }
  static inline double wall = 0;  // ms
  static inline double cpu = 0;   // ms

 private:
  static double now(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
  }
  static gint poll(GPollFD* descriptors, guint count, gint timeout) {
    if (left_poll > 0) {
      wall = std::max(wall, now(CLOCK_MONOTONIC) - left_poll);
      cpu = std::max(cpu, now(CLOCK_THREAD_CPUTIME_ID) - cpu_at);
    }
    const gint ready = g_poll(descriptors, count, timeout);
    left_poll = now(CLOCK_MONOTONIC);
    cpu_at = now(CLOCK_THREAD_CPUTIME_ID);
    return ready;
  }
  static inline double left_poll = 0;
  static inline double cpu_at = 0;
};

std::string printer(long lines) {
  return fmt::format("yes 'FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC,W9XYZ,JA1XYZ' | head -n {}",
                     lines);
}

receiver::SupervisorHooks hooks(long& lines) {
  receiver::SupervisorHooks hooks;
  hooks.report = [](const std::string&, const std::string&) {};
  hooks.line = [&lines](std::string_view, bool, const std::string&) { ++lines; };
  hooks.write_profile = [](const std::string&, const std::map<std::string, std::string>&) {};
  hooks.save_session = hooks.session_ended = hooks.changed = hooks.start_again = hooks.quit = [] {};
  hooks.find_launch = [](const std::string&) { return nullptr; };
  return hooks;
}

// Arguments: how many engines, how many lines of each.
void engines_print(benchmark::State& state) {
  const long engines = state.range(0);
  long lines = 0;
  double wall = 0;
  double cpu = 0;
  for (auto _ : state) {
    receiver::Supervisor supervisor(hooks(lines), receiver::SessionFiles("/nonexistent", "/nonexistent", 1));
    for (long i = 0; i < engines; ++i)
      supervisor.spawn_child({"/bin/sh", "-c", printer(state.range(1))}, {}, {}, false);
    const LongestIteration watch;
    while (supervisor.receiving())
      g_main_context_iteration(nullptr, TRUE);
    wall = std::max(wall, LongestIteration::wall);
    cpu = std::max(cpu, LongestIteration::cpu);
  }
  if (lines != static_cast<long>(state.iterations()) * engines * state.range(1)) state.SkipWithError("lines were lost");
  state.SetItemsProcessed(lines);
  state.counters["longest_iteration_ms"] = wall;
  state.counters["longest_iteration_cpu_ms"] = cpu;
}
BENCHMARK(engines_print)
    ->Args({16, 1250})
    ->Args({1, 1'000'000})
    ->Args({16, 100'000})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// For comparison: the obvious reader, one asynchronous call per line.
struct OneCallPerLine {
  GDataInputStream* stream;
  long lines = 0;
  bool ended = false;
  void next() { g_data_input_stream_read_line_async(stream, G_PRIORITY_DEFAULT_IDLE, nullptr, read, this); }
  static void read(GObject*, GAsyncResult* result, gpointer data) {
    auto& self = *static_cast<OneCallPerLine*>(data);
    const base::GStringPtr line(g_data_input_stream_read_line_finish(self.stream, result, nullptr, nullptr));
    if (!line) {
      self.ended = true;
      return;
    }
    ++self.lines;
    self.next();
  }
};

void one_call_per_line(benchmark::State& state) {
  long lines = 0;
  for (auto _ : state) {
    const auto process = receiver::spawn({"/bin/sh", "-c", printer(state.range(0))});
    const auto stream =
        base::GObjectPtr<GDataInputStream>::adopt(g_data_input_stream_new(g_subprocess_get_stdout_pipe(process.get())));
    OneCallPerLine reader{stream.get()};
    reader.next();
    while (!reader.ended)
      g_main_context_iteration(nullptr, TRUE);
    lines += reader.lines;
  }
  state.SetItemsProcessed(lines);
}
BENCHMARK(one_call_per_line)->Arg(1'000'000)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
