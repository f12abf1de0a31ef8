// Runs the receive engine once to learn which receivers are attached.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/gobject_ptr.h"
#include "base/timer.h"
#include "launcher/device_listing.h"
#include "receiver/line_reader.h"
#include "receiver/process.h"

namespace receiver {

/// Why nothing is known about the receivers.
struct DiscoveryFailure {
  std::string reason;   ///< "timed out"
  std::string message;  ///< the whole sentence for the operator
  std::string advice;   ///< a second one; may be empty
};

/// How a listing ended.
struct ListingEnd {
  std::string not_started;  ///< why the program could not be started; empty when it was
  bool timed_out = false;
  bool ended_abnormally = false;  ///< by a signal, or nobody knows how
  int exit_code = 0;
  std::optional<std::string> read_error;  ///< why its output could not be read to the end; may be empty
};

/// Nothing for a listing that worked. Pure.
std::optional<DiscoveryFailure> classify(const ListingEnd& end, const std::string& program, std::string_view output);

struct DiscoveryRequest {
  std::string engine;
  std::string api_library;                   ///< empty for the engine's own choice
  std::chrono::milliseconds timeout{10000};  ///< then the engine is ended by force
  int return_wait = 0;                       ///< seconds to wait for an RX-888 that is coming back, 0..30
};

struct DiscoveryResult {
  std::optional<DiscoveryFailure> failure;
  launcher::DeviceListing listing;  ///< empty after a failure
  std::string output;               ///< what was printed, both streams together, up to 4 MiB
};

/// Main thread only, on the main loop. Destroying it ends a listing that is under way, without a call.
class DeviceDiscovery {
 public:
  using Done = std::function<void(const DiscoveryResult&)>;

  DeviceDiscovery() = default;
  ~DeviceDiscovery();
  DeviceDiscovery(const DeviceDiscovery&) = delete;
  DeviceDiscovery& operator=(const DeviceDiscovery&) = delete;

  /// Starts a listing; `done` is called once, from the main loop, also when the program cannot be started. False, and
  /// nothing happens, while one runs. `done` may start the next one, but not destroy this.
  bool start(const DiscoveryRequest& request, Done done);
  [[nodiscard]] bool running() const { return static_cast<bool>(done_); }

 private:
  void attach();
  void take_line(std::string_view line);
  void exited(const std::string& wait_error);
  void finish_when_ended();
  void finish();

  std::string program_;
  Done done_;
  ListingEnd end_;
  bool exit_seen_ = false, output_ended_ = false;
  std::string output_;
  base::GObjectPtr<GSubprocess> process_;

  // These call back into the object, so they end before the rest of it.
  LinePump pump_;
  LineReader reader_;
  ExitWatch exit_watch_;
  base::Timer limit_;
};

}  // namespace receiver
