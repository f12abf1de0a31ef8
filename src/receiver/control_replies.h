// What a running engine answers. The readers never read past the text, are linear and throw std::runtime_error with the
// operator's words. Levels in dBFS, frequencies in Hz, gains in dB. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// The strongest signal in the capture.
struct StrongestSignal {
  double frequency{};
  double level{};
  bool operator==(const StrongestSignal&) const = default;
};

/// The answer to "RADIO METER" and "RADIO STATUS".
struct MeterReading {
  std::string level_state = "unavailable";  ///< ready, waiting, stale, invalid or unavailable
  double peak{}, rms{};                     ///< of the IQ samples, against the sample format's full scale
  double hold{};                            ///< the highest peak of the last five seconds
  double age{};                             ///< of the measurement, in seconds
  std::optional<double> max;
  std::uint64_t samples{};
  std::string overload_state = "unknown";   ///< unknown, clear, detected or unavailable
  std::uint64_t overload_events{};          ///< since the engine started
  std::string if_state = "unavailable";     ///< ready, waiting or unavailable
  int if_reduction{};                       ///< below full gain, as the hardware has it now
  std::string tuner_state = "unavailable";  ///< of a tuner with an automatic gain of its own; likewise
  double tuner_gain{};
  std::optional<StrongestSignal> strongest;
  bool operator==(const MeterReading&) const = default;
};
MeterReading parse_meter(std::string_view reply);

/// The answer to "SPECTRUM".
struct Spectrum {
  bool waiting = false;  ///< the engine has begun to collect for this view
  std::uint64_t sequence{};
  double lower{}, upper{};
  std::size_t bins{};
  std::vector<float> powers;  ///< from `lower` to `upper`; empty while waiting
};
Spectrum parse_spectrum(std::string_view reply);

/// The capture that "STATUS" tells of: `capture` is its centre, `span` its usable width.
struct CaptureStatus {
  double center{}, span{};
};
std::optional<CaptureStatus> parse_status(std::string_view reply);

}  // namespace receiver
