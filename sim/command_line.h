// What this engine was started for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

enum class Task { receive, list_devices, help, version };

struct Command {
  Task task = Task::help;
  std::string config;  ///< the profile's path
};

/// Reads the arguments behind the program's name. Throws std::runtime_error with the words for the operator.
Command parse_command_line(const std::vector<std::string_view>& arguments);

std::string_view help_text();

}  // namespace sim
