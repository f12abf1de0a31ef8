#include "receiver/session_files.h"

#include <utility>

#include <fmt/format.h>

namespace receiver {

SessionFiles::SessionFiles(std::string config_directory, std::string state_directory, pid_t pid)
    : config_directory_(std::move(config_directory)), state_directory_(std::move(state_directory)), pid_(pid) {}

std::string SessionFiles::first_profile(size_t index) const {
  return fmt::format("{}/session-{}-{}.conf", config_directory_, pid_, index);
}

std::string SessionFiles::next_profile() {
  return fmt::format("{}/session-{}-r{}.conf", config_directory_, pid_, ++count_);
}

std::string SessionFiles::control_socket(size_t index) const {
  return fmt::format("{}/audio-control/audio-{}-{}.sock", state_directory_, pid_, index);
}

}  // namespace receiver
