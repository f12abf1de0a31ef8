// What the control socket answers: the requests, judged as a receive engine judges them. Frequencies in Hz. Not for
// more than one thread at a time.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "options/receiver_options.h"
#include "sim/front_end.h"
#include "sim/schedule.h"

namespace sim {

class RadioDesk {
 public:
  /// Keys in `refused` are never taken, as a scenario has it.
  RadioDesk(const options::ReceiverOptions& options, std::vector<std::string> refused);

  /// The reply to one request; one that does not begin with OK is a refusal. `now` in seconds since the epoch.
  std::string answer(std::string_view request, double now);

  /// The channels of a retune that was applied, once.
  std::optional<std::vector<Channel>> take_retune();

 private:
  struct Retune {
    double center{};
    std::vector<Channel> channels;
  };

  std::string perform(std::string_view request, double now);
  std::string set_hardware(std::string_view list);
  std::string set_live(std::string_view list);
  [[nodiscard]] Retune judged_retune(std::string_view words) const;
  std::string apply_retune(std::string_view words);
  std::string set_audio(std::string_view specification, bool is_new);
  std::string remove_audio(std::string_view id);
  std::string spectrum(std::string_view words, double now);
  void refuse_scenario_keys(const std::map<std::string, std::string>& settings) const;

  launcher::Family family_;
  double bandwidth_;
  launcher::Capture capture_;
  std::vector<Channel> channels_;
  std::map<std::string, options::AudioChannel> audio_;
  std::vector<std::string> refused_;
  FrontEnd front_end_;
  std::optional<std::vector<Channel>> retuned_;
  std::map<std::string, std::uint64_t> views_;  ///< by channel, how often its spectrum was asked for
};

}  // namespace sim
