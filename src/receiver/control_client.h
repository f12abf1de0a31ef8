// One request to a running engine: one packet there, one packet back, on a connection of its own.
#pragma once

#include <cstddef>
#include <string>

namespace receiver {

inline constexpr std::size_t longest_request = 4096;      ///< bytes
inline constexpr std::size_t longest_reply = 16384;       ///< bytes; the socket cuts what is longer
inline constexpr std::size_t longest_control_path = 107;  ///< bytes
inline constexpr int longest_control_timeout = 30000;     ///< ms

/// Sends the request to the socket at `path` and returns the reply. Blocks for at most `timeout_ms` (and half a second
/// to send), so it is never called on the main thread. Nothing is left behind by a failure, which is thrown as
/// std::runtime_error with the operator's words.
std::string control_request(const std::string& path, const std::string& request, int timeout_ms);

}  // namespace receiver
