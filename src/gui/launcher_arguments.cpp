#include "gui/launcher_arguments.h"

#include <filesystem>
#include <stdexcept>

#include <fmt/format.h>

namespace gui {
namespace {

std::string absolute(const std::string& path) {
  return std::filesystem::absolute(path);
}

}  // namespace

LauncherArguments parse_arguments(const std::vector<std::string>& arguments) {
  LauncherArguments result;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const std::size_t following = arguments.size() - i - 1;
    if (argument == "--help") {
      result.help = true;
      return result;
    }
    if (argument == "--config" && following >= 1) {
      result.config_path = absolute(arguments[++i]);
    } else if (argument == "--tuner" && following >= 1) {
      result.tuner = absolute(arguments[++i]);
    } else {
      throw std::runtime_error(fmt::format("Unknown or incomplete option: {}", argument));
    }
  }
  return result;
}

std::string engine_beside_launcher() {
  return std::filesystem::canonical("/proc/self/exe").parent_path() / "tarnwick";
}

}  // namespace gui
