// One request to a running engine: one packet there, one packet back, on a connection of its own.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "base/background.h"
#include "base/descriptor_watch.h"

namespace receiver {

inline constexpr std::size_t longest_request = 4096;      ///< bytes
inline constexpr std::size_t longest_reply = 16384;       ///< bytes; the socket cuts what is longer
inline constexpr std::size_t longest_control_path = 107;  ///< bytes
inline constexpr int longest_control_timeout = 30000;     ///< ms

/// Sends the request to the socket at `path` and returns the reply. Blocks for at most `timeout_ms` (and half a second
/// to send), so it is never called on the main thread. Nothing is left behind by a failure, which is thrown as
/// std::runtime_error with the operator's words.
std::string control_request(const std::string& path, const std::string& request, int timeout_ms);

class ControlConnection;

/// The same without a thread that waits: for short requests that are made many times a second. Destroying it hangs up,
/// and nothing is told any more. Main thread only.
class ControlCall {
 public:
  using Answered = std::function<void(const base::Outcome<std::string>& reply)>;

  /// Sends the request; what fails at once is thrown. `answered` follows once on the main loop, with the reply or the
  /// words of control_request. It may destroy the call.
  ControlCall(const std::string& path, const std::string& request, int timeout_ms, Answered answered);
  ~ControlCall();
  ControlCall(const ControlCall&) = delete;
  ControlCall& operator=(const ControlCall&) = delete;

 private:
  std::unique_ptr<ControlConnection> connection_;
  base::DescriptorWatch watch_;  // ends before the connection does
};

}  // namespace receiver
