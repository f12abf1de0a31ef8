// The one text format of the system: a profile of "key = value" lines, in memory an ordered map. A single-receiver
// profile is what the engine reads with --config; a multi-receiver one, marked by `gui-format`, describes a station
// (options/station.h). Any thread. Every failure is a std::runtime_error with the operator's words.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace options {

/// Keys are option names without their dashes; values are bytes without NUL and line breaks, not necessarily UTF-8.
using Profile = std::map<std::string, std::string>;

inline constexpr std::size_t profile_line_limit = 4096;     ///< bytes of one line, without its end
inline constexpr std::size_t profile_size_limit = 1048576;  ///< bytes of a file, line ends included

/// Reads a profile of either kind.
Profile read_profile(const std::string& path);
/// The same reader; the multi-receiver keys are refused as unknown unless `allow_multi`.
Profile parse_config(const std::string& path, bool allow_multi);
/// Reads a profile from memory; `path` is only named in failures, as "{path} line {n}: {message}".
Profile parse_config_text(std::string_view text, const std::string& path, bool allow_multi);

/// Whether the profile describes a whole station.
bool is_multi_receiver(const Profile& profile);

/// The whole file text. What would not load again is never rendered: a multi-receiver profile must pass parse_station,
/// a single-receiver one the option check (in whose words it then fails), and every line must read back as it stands.
std::string render_profile(const Profile& profile);
/// Renders, then replaces the file atomically (base::replace_file). On failure the old file is as it was.
void write_config(const std::string& path, const Profile& profile);

}  // namespace options
