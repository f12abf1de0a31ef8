// The one judge of a receiver's settings: a command line or a profile is scanned into the options record and checked,
// in the engine's own words. Failures are std::runtime_error; channels that do not fit the capture are a
// CaptureFitError. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "options/profile.h"
#include "options/receiver_options.h"

namespace options {

/// Reads a command line; argv[0] is the program. Each `--config` file is read first, so that an option of the command
/// line wins over the same one in a file. With `--help` or `--version` nothing is judged beyond the scan.
ReceiverOptions parse(int argc, const char* const* argv);
/// The same without the program.
ReceiverOptions parse(const std::vector<std::string_view>& arguments);

/// Judges a single-receiver profile as if each of its lines stood on the command line, in map order.
ReceiverOptions check_profile(const Profile& profile);

/// The same, but nothing is judged beyond the scan of each value.
ReceiverOptions scan_profile(const Profile& profile);

/// What `--help` prints, ended by a line feed.
std::string help_text(std::string_view program);

}  // namespace options
