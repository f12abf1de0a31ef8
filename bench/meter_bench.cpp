// What it costs the launcher to ask running engines for their levels. The engines are stand-ins in a process of their
// own, so that the processor time told is the launcher's alone; nothing is painted.
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <poll.h>
#include <string>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <glib.h>

#include "base/file_write.h"
#include "receiver/meter_poller.h"

namespace {

constexpr std::string_view reply =
    "OK LEVELS state=ready,peak=-30.25,rms=-42.5,hold=-28.75,age=0.08,samples=123456789,max=-28.5\n"
    "OK OVERLOAD state=clear,events=3\nOK IFGAIN state=ready,reduction=42\nOK STRONGEST 14074000.5 -31.25\n";

int listen_at(const std::string& path) {
  const int listener = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the socket interface is made that way.
  if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 || ::listen(listener, 64) != 0)
    std::abort();
  return listener;
}

void answer(int listener) {
  std::array<char, 64> request{};
  const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
  if (::recv(connection, request.data(), request.size(), 0) > 0)
    (void)::send(connection, reply.data(), reply.size(), MSG_NOSIGNAL);
  ::close(connection);
}

/// Sixteen sockets; those of the first `hung` engines are never answered.
class Engines {
 public:
  Engines(std::size_t count, std::size_t hung) {
    std::array<char, 32> pattern{"/tmp/meter-bench-XXXXXX"};
    directory_ = ::mkdtemp(pattern.data());
    std::vector<pollfd> answered;
    std::vector<int> all;
    for (std::size_t i = 0; i < count; ++i) {
      targets.push_back({fmt::format("receiver {}", i), fmt::format("{}/{}", directory_, i)});
      all.push_back(listen_at(targets.back().path));
      if (i >= hung) answered.push_back({all.back(), POLLIN, 0});
    }
    process_ = ::fork();
    if (process_ == 0) serve(answered);
    for (const int listener : all)
      ::close(listener);
  }
  ~Engines() {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
    for (const receiver::MeterTarget& target : targets)
      const base::TemporaryPath unlinked(target.path);
    ::rmdir(directory_.c_str());
  }
  Engines(const Engines&) = delete;
  Engines& operator=(const Engines&) = delete;

  std::vector<receiver::MeterTarget> targets;

 private:
  [[noreturn]] static void serve(std::vector<pollfd>& listeners) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) {
      ::poll(listeners.data(), listeners.size(), -1);
      for (const pollfd& listener : listeners)
        if ((listener.revents & POLLIN) != 0) answer(listener.fd);
    }
  }

  std::string directory_;
  pid_t process_ = -1;
};

double processor_seconds() {
  timespec time{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Arguments: how many of the sixteen engines hang, and whether a meter is on the screen.
void polls(benchmark::State& state) {
  constexpr std::int64_t lasts = 10000000;  // us
  const auto hung = static_cast<std::size_t>(state.range(0));
  Engines engines(16, hung);
  std::vector<std::size_t> counts(engines.targets.size());
  double used = 0;
  for (auto _ : state) {
    receiver::MeterPoller poller({[&] { return engines.targets; }, [&state] { return state.range(1) != 0; },
                                  [&](const std::string& name) {
                                    const auto target =
                                        std::find_if(engines.targets.begin(), engines.targets.end(),
                                                     [&](const auto& each) { return each.name == name; });
                                    ++counts[static_cast<std::size_t>(target - engines.targets.begin())];
                                  },
                                  [] { return g_get_monotonic_time(); }});
    poller.start();
    const std::int64_t end = g_get_monotonic_time() + lasts;
    const base::Timer wake = base::Timer::once(std::chrono::milliseconds(lasts / 1000), [] {});
    const double before = processor_seconds();
    while (g_get_monotonic_time() < end)
      g_main_context_iteration(nullptr, TRUE);
    used = processor_seconds() - before;
  }
  const auto answered = counts.begin() + static_cast<std::ptrdiff_t>(hung);
  const double seconds = 1e-6 * static_cast<double>(lasts);
  state.counters["core_percent"] = 100 * used / seconds;
  state.counters["slowest_polls_per_s"] = static_cast<double>(*std::min_element(answered, counts.end())) / seconds;
  state.counters["fastest_polls_per_s"] = static_cast<double>(*std::max_element(answered, counts.end())) / seconds;
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
