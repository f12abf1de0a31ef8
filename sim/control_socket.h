// The engine's control socket, served by a thread of its own: one packet there, one packet back for each connection.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "sim/radio_desk.h"
#include "sim/scenario.h"

namespace sim {

class ControlSocket {
 public:
  /// Listens at the options' `audio-control` path; without one nothing happens. Throws std::runtime_error when it
  /// cannot be had.
  ControlSocket(const options::ReceiverOptions& options, const ControlFaults& faults);
  ~ControlSocket();
  ControlSocket(const ControlSocket&) = delete;
  ControlSocket& operator=(const ControlSocket&) = delete;

  /// The channels of a retune that was applied, once. Any thread.
  std::optional<std::vector<Channel>> take_retune();

 private:
  void serve();
  void serve(int connection);
  [[nodiscard]] std::string reply_to(const std::string& request);
  void write_journal(const std::string& request, const std::string& reply) const;
  /// Sleeps unless the engine ends meanwhile.
  void wait(double seconds) const;

  ControlFaults faults_;
  std::string path_;
  std::mutex lock_;  ///< of desk_
  RadioDesk desk_;
  int listener_ = -1;
  int wake_ = -1;  ///< readable when the engine ends
  std::thread server_;
};

}  // namespace sim
