// The list of settings that travels to a running engine and comes back as its confirmation: "key=value,key=value".
// Throws std::runtime_error with the operator's words. Any thread.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace receiver {

/// Settings by key.
using Settings = std::map<std::string, std::string>;

/// Reads and judges a list of hardware settings, as both ends of the socket do. Linear.
Settings parse_live_pairs(std::string_view list);
/// The list without judging it, in order of the keys.
std::string format_pairs(const Settings& settings);

}  // namespace receiver
