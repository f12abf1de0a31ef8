#include "stand_in_engines.h"

#include <array>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <new>
#include <poll.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/format.h>

#include "base/file_write.h"

namespace stand_in {
namespace {

using Shared = Engines::Shared;

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

double seconds_of(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

std::int64_t now() {
  return static_cast<std::int64_t>(1e6 * seconds_of(CLOCK_MONOTONIC));
}

std::string levels(std::size_t engine, unsigned poll) {
  constexpr unsigned polls_in_a_second = 20;
  const double rms = -45 + 12 * std::sin(0.15 * poll + static_cast<double>(engine));
  const unsigned second = poll / polls_in_a_second;
  return fmt::format(
      "OK LEVELS state=ready,peak={0:.2f},rms={1:.2f},hold={2:.2f},age=0.08,samples={3},max={2:.2f}\n"
      "OK OVERLOAD state={4},events={5}\nOK IFGAIN state=ready,reduction={6}\nOK STRONGEST 14074000.5 -31.25\n"
      "OK TUNER state=ready,gain={7:.1f}\n",
      rms + 9, rms, rms + 10 + second % 3, 100000 * poll, second % 20 == 0 ? "detected" : "clear", second / 20,
      30 + second % 20, 20 + 0.1 * (second % 50));
}

constexpr std::string_view change = "RADIO SET ";

std::string changed(std::string_view request, Shared& shared) {
  shared.asked = now();
  ++shared.changes;
  if (shared.refuses) return "The hardware does not take this";
  return "OK RADIO " + std::string(request.substr(change.size()));
}

void answer(int listener, std::size_t engine, unsigned poll, Shared& shared) {
  std::array<char, 4096> buffer{};
  const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
  const ssize_t length = ::recv(connection, buffer.data(), buffer.size(), 0);
  if (length > 0) {
    const std::string_view request(buffer.data(), static_cast<std::size_t>(length));
    const bool changes = request.starts_with(change);
    const std::string reply = changes ? changed(request, shared) : levels(engine, poll);
    if (!changes) ++shared.polls;
    (void)::send(connection, reply.data(), reply.size(), MSG_NOSIGNAL);
    if (changes) shared.told = now();
  }
  ::close(connection);
}

[[noreturn]] void serve(const std::vector<int>& listeners, Shared& shared) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::vector<pollfd> waiting;
  waiting.reserve(listeners.size());
  for (const int listener : listeners)
    waiting.push_back({listener, POLLIN, 0});
  std::vector<unsigned> polls(listeners.size());
  for (;;) {
    ::poll(waiting.data(), waiting.size(), -1);
    for (std::size_t i = 0; i < waiting.size(); ++i)
      if ((waiting[i].revents & POLLIN) != 0) answer(waiting[i].fd, i, polls[i]++, shared);
  }
}

Shared* new_shared() {
  void* memory = ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) std::abort();
  return new (memory) Shared;
}

}  // namespace

Engines::Engines(std::vector<std::string> paths, std::size_t hung) : paths_(std::move(paths)), shared_(new_shared()) {
  std::vector<int> all;
  for (const std::string& path : paths_)
    all.push_back(listen_at(path));
  process_ = ::fork();
  // The hung ones stay open and unread.
  if (process_ == 0) serve({all.begin() + static_cast<std::ptrdiff_t>(hung), all.end()}, *shared_);
  for (const int listener : all)
    ::close(listener);
}

Engines::~Engines() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
  ::munmap(shared_, sizeof(Shared));
  for (const std::string& path : paths_)
    const base::TemporaryPath unlinked(path);
}

double processor_seconds() {
  return seconds_of(CLOCK_PROCESS_CPUTIME_ID);
}

}  // namespace stand_in
