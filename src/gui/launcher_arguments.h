// The launcher's own command line.
#pragma once

#include <string>
#include <vector>

namespace gui {

/// What the command line asks for. Paths are absolute.
struct LauncherArguments {
  bool help = false;        ///< print usage_text and end
  std::string config_path;  ///< the profile to open; empty restores the session
  std::string tuner;        ///< the receive engine; empty is the one beside the launcher
};

inline constexpr const char* usage_text =
    "Tarnwick graphical launcher\nUsage: tarnwick-gui [--config FILE] [--tuner EXECUTABLE]\n";

/// Reads the arguments behind the program's name, left to right. Throws
/// std::runtime_error("Unknown or incomplete option: {argument}").
LauncherArguments parse_arguments(const std::vector<std::string>& arguments);

/// The engine in the folder of the running executable.
std::string engine_beside_launcher();

}  // namespace gui
