#include "options/paths.h"

#include <cstdlib>
#include <pwd.h>
#include <stdexcept>
#include <unistd.h>

namespace options {

Environment process_environment() {
  return [](const char* name) -> std::optional<std::string> {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
  };
}

std::optional<std::string> home_directory(const Environment& environment) {
  if (auto home = environment("HOME"); home && home->starts_with('/')) return home;
  if (const passwd* entry = ::getpwuid(::getuid()); entry && entry->pw_dir && entry->pw_dir[0] == '/')
    return std::string(entry->pw_dir);
  return std::nullopt;
}

std::string base_directory(const char* variable, const char* fallback, const Environment& environment) {
  if (auto base = environment(variable); base && base->starts_with('/')) return *base;
  const auto home = home_directory(environment);
  if (!home) throw std::runtime_error("Cannot determine your home directory");
  return *home + "/" + fallback;
}

std::string config_directory() {
  return base_directory("XDG_CONFIG_HOME", ".config", process_environment()) + "/tarnwick";
}

std::string state_directory() {
  return base_directory("XDG_STATE_HOME", ".local/state", process_environment()) + "/tarnwick";
}

std::string config_file(const std::string& name) {
  return config_directory() + "/" + name;
}
std::string state_file(const std::string& name) {
  return state_directory() + "/" + name;
}

}  // namespace options
