// One simulated receiver, from its profile to its last line.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "options/receiver_options.h"
#include "sim/control_socket.h"
#include "sim/decode_log.h"
#include "sim/health.h"
#include "sim/output.h"
#include "sim/recordings.h"
#include "sim/replay.h"
#include "sim/scenario.h"
#include "sim/signals.h"
#include "sim/timeline.h"
#include "sim/traffic.h"

namespace sim {

class Engine {
 public:
  /// Opens the receiver that the options, as checked, mean. Throws std::runtime_error with the reason why it cannot be
  /// had. All arguments must outlive this.
  Engine(const Scenario& scenario, const options::ReceiverOptions& options, StopSignal& stop, Output& output);

  /// Receives until asked to end, or until the scenario ends it; the exit status.
  int run();

 private:
  /// The decodes of a channel's cycle; empty when they are not ready yet.
  using Feed = std::function<std::optional<std::vector<Decode>>(const Channel&, double start)>;

  void introduce();
  void plan_reception(double start);
  void plan_channel(const Channel& channel, double start);
  void plan_signals(double start);
  void plan_retunes(double start);
  [[nodiscard]] Feed feed_for(const Channel& channel);
  void open_recordings();
  void open_replay(double start);
  void tell(const Channel& channel, double start, const std::vector<Decode>& decodes);

  const Scenario& scenario_;
  const options::ReceiverOptions& options_;
  std::vector<Channel> channels_;
  unsigned tuning_ = 0;  ///< how often the channels have changed
  Receiver receiver_;
  StopSignal& stop_;
  Output& output_;
  StationClock clock_;
  Traffic traffic_;
  DecodeLog decode_log_;
  Health health_;
  std::unique_ptr<Replay> replay_;
  std::unique_ptr<Recordings> recordings_;
  std::unique_ptr<KnownSignals> signals_;
  Timeline timeline_;
  ControlSocket control_;
};

}  // namespace sim
