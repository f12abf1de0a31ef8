// The receiver's hardware as its control socket shows it: gains that move the levels, an overload that comes and
// clears. A plain model of a strong evening; levels in dBFS, frequencies in Hz, times in seconds since the epoch. Not
// for more than one thread at a time.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "options/receiver_options.h"

namespace sim {

class FrontEnd {
 public:
  explicit FrontEnd(const options::ReceiverOptions& options);

  /// Settings by their profile keys, judged before.
  void set(const std::map<std::string, std::string>& settings);
  /// The engine captures elsewhere.
  void tune(double center, double strongest);

  /// The answer to "RADIO METER", lines ended by line feeds.
  std::string meter(double now);

 private:
  /// Signal and noise at the converter for the gains as they are.
  [[nodiscard]] double input_level(double now) const;
  [[nodiscard]] double gain() const;
  void follow_agc(double level);
  void notice_overload(double level);

  launcher::Family family_;
  double if_reduction_, lna_state_, attenuation_, vga_gain_, tuner_gain_;
  bool agc_;
  bool direct_sampling_;
  double strongest_ = 0;
  bool overloaded_ = false;
  std::uint64_t episodes_ = 0;
  std::uint64_t samples_ = 0;
  double hold_ = -160, hold_until_ = 0;
};

}  // namespace sim
