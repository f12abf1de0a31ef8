// Where the launcher's files are: two directories of the user, found by the XDG rules.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace options {

/// An environment to look things up in, so that a test needs no setenv. Empty means "not set".
using Environment = std::function<std::optional<std::string>(const char* name)>;
Environment process_environment();

/// The base directory of one XDG variable: its value when that is an absolute path, else `fallback` under the home
/// directory. Throws std::runtime_error("Cannot determine your home directory").
std::string base_directory(const char* variable, const char* fallback, const Environment& environment);
/// HOME if absolute, else the password database entry of the real user; empty when there is neither.
std::optional<std::string> home_directory(const Environment& environment);

/// "{config base}/tarnwick" and "{state base}/tarnwick".
std::string config_directory();
std::string state_directory();
/// A file in the config or state directory. Nothing is created.
std::string config_file(const std::string& name);
std::string state_file(const std::string& name);

}  // namespace options
