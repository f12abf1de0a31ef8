#include "sim/stop_signal.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <poll.h>
#include <stdexcept>
#include <sys/signalfd.h>
#include <unistd.h>

#include "base/time_text.h"

namespace sim {
namespace {

timespec span(double seconds) {
  const double whole = std::clamp(seconds, 0.0, 3600.0);
  const auto full = static_cast<time_t>(whole);
  return {full, static_cast<long>((whole - static_cast<double>(full)) * 1e9)};
}

}  // namespace

StopSignal::StopSignal() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGTERM);
  sigaddset(&set, SIGINT);
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
  signals_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
  if (signals_ < 0) throw std::runtime_error("cannot watch for signals");
}

StopSignal::~StopSignal() {
  close(signals_);
}

void StopSignal::read_signal() {
  signalfd_siginfo info;
  while (read(signals_, &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
    if (!(ignores_term_ && info.ssi_signo == SIGTERM)) throw StopAsked();
  }
}

void StopSignal::sleep_until(double when) {
  const auto now = base::system_clock();
  read_signal();
  for (double left = when - now(); left > 0; left = when - now()) {
    pollfd watched{signals_, POLLIN, 0};
    const timespec limit = span(left);
    ppoll(&watched, 1, &limit, nullptr);
    read_signal();
  }
}

bool StopSignal::wait_writable(int descriptor, double seconds) {
  const auto now = base::system_clock();
  const double deadline = now() + seconds;
  for (;;) {
    std::array<pollfd, 2> watched{{{descriptor, POLLOUT, 0}, {signals_, POLLIN, 0}}};
    const timespec limit = span(deadline - now());
    ppoll(watched.data(), watched.size(), &limit, nullptr);
    if (watched[1].revents != 0) read_signal();
    if (watched[0].revents != 0) return true;
    if (now() >= deadline) return false;
  }
}

}  // namespace sim
