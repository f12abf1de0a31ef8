#include "own_station.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace own_station {

Directory::Directory() : path_("/tmp/tarnwick-bench-XXXXXX") {
  if (!::mkdtemp(path_.data())) std::abort();
}

Directory::~Directory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

gui::App::Setup Directory::setup(const std::string& engine, const std::string& profile) const {
  gui::App::Setup setup;
  setup.tuner = path_ + "/engine";
  setup.config_directory = path_ + "/config";
  setup.state_directory = state();
  setup.autostart_directory = path_ + "/autostart";
  setup.config_path = path_ + "/station.conf";
  std::ofstream(setup.tuner) << engine;
  std::filesystem::permissions(setup.tuner, std::filesystem::perms::owner_all);
  std::ofstream(setup.config_path) << profile;
  return setup;
}

void turn_until(const std::function<bool()>& done) {
  const base::Timer wake = base::Timer::repeating(std::chrono::milliseconds(50), [] {});
  while (!done())
    g_main_context_iteration(nullptr, TRUE);
}

// With one wake-up, so that the waiting itself costs nothing.
void turn_for(double seconds) {
  const gint64 end = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
  const base::Timer wake = base::Timer::once(std::chrono::milliseconds(static_cast<int>(seconds * 1000) + 1), [] {});
  while (g_get_monotonic_time() < end)
    g_main_context_iteration(nullptr, TRUE);
}

double resident_megabytes() {
  std::ifstream status("/proc/self/status");
  std::string word;
  double kilobytes = 0;
  while (status >> word)
    if (word == "VmRSS:") status >> kilobytes;
  return kilobytes / 1024;
}

}  // namespace own_station
