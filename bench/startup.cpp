// From exec to a mapped window, and what an idle launcher costs. Run it as an ordinary user under a display:
//
//   startup LAUNCHER RUNS [IDLE_SECONDS]
//
// Prints the time from fork to the MapNotify of the launcher's window for each run; in the last run, resident memory
// after two seconds and the processor's share over IDLE_SECONDS with the window unmapped.
#include <X11/Xlib.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <signal.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <fmt/format.h>

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration time) {
  return std::chrono::duration<double, std::milli>(time).count();
}

pid_t start(const char* launcher) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::execl(launcher, launcher, static_cast<char*>(nullptr));
    ::_exit(127);
  }
  return child;
}

bool is_launcher(Display* display, Window window) {
  char* name = nullptr;
  XFetchName(display, window, &name);
  const bool found = name && std::string(name).starts_with("Tarnwick");
  if (name) XFree(name);
  return found;
}

Window wait_for_window(Display* display) {
  for (;;) {
    XEvent event;
    XNextEvent(display, &event);
    if (event.type == MapNotify && is_launcher(display, event.xmap.window)) return event.xmap.window;
  }
}

double resident_megabytes(pid_t pid) {
  std::ifstream status(fmt::format("/proc/{}/status", pid));
  std::string word;
  double kilobytes = 0;
  while (status >> word)
    if (word == "VmRSS:") status >> kilobytes;
  return kilobytes / 1024;
}

double processor_seconds(pid_t pid) {
  std::ifstream stat(fmt::format("/proc/{}/stat", pid));
  std::string word;
  double ticks = 0;
  for (int field = 1; stat >> word; ++field)
    if (field == 14 || field == 15) ticks += std::atof(word.c_str());
  return ticks / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

void measure_idle(Display* display, Window window, pid_t pid, int seconds) {
  std::this_thread::sleep_for(std::chrono::seconds(2));
  fmt::print("resident memory {:.1f} MB\n", resident_megabytes(pid));
  XUnmapWindow(display, window);
  XFlush(display);
  std::this_thread::sleep_for(std::chrono::seconds(1));
  const double before = processor_seconds(pid);
  std::this_thread::sleep_for(std::chrono::seconds(seconds));
  fmt::print("idle, window unmapped: {:.3f} % of one processor\n", (processor_seconds(pid) - before) / seconds * 100);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const int runs = std::atoi(argv[2]);
  const int idle = argc > 3 ? std::atoi(argv[3]) : 0;
  Display* display = XOpenDisplay(nullptr);
  if (!display) return 1;
  XSelectInput(display, DefaultRootWindow(display), SubstructureNotifyMask);
  // Windows of a launcher that has just been killed vanish while they are asked for their name.
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
  for (int run = 0; run < runs; ++run) {
    const auto begin = Clock::now();
    const pid_t pid = start(argv[1]);
    const Window window = wait_for_window(display);
    fmt::print("mapped after {:.0f} ms\n", milliseconds(Clock::now() - begin));
    if (run + 1 == runs && idle > 0) measure_idle(display, window, pid, idle);
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
  }
  XCloseDisplay(display);
}
