// An audio receiver: a narrow listening channel that a wideband receiver carries beside its decoders. In profiles, on
// the engine's command line and on its control socket it is one line of text. Frequencies in Hz. Everything throws
// std::runtime_error with the operator's words unless it says otherwise. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "options/channels/passband.h"

namespace options {

/// Stands for the system's default speakers or headphones in `sink`.
inline constexpr std::string_view default_speakers = "@DEFAULT_SINK@";

struct AudioChannel {
  std::string id;      ///< 1 to 32 letters, digits, underscores or hyphens
  std::string sink;    ///< empty: the virtual decoder input that the engine creates
  std::string wav;     ///< recording path, empty for none
  std::string socket;  ///< absolute path of a local socket that gets the audio instead of a sink
  double frequency{};  ///< dial
  double bandwidth = 3000;
  double audio_gain = 10;  ///< linear, 0 to 10000
  double low_cut = 0;      ///< where a sideband's passband starts, from the carrier
  bool agc = true;
  std::int32_t audio_rate = 48000;
  Modulation modulation = Modulation::usb;
  bool enabled = true;  ///< a disabled channel stays configured and takes no capacity
  bool operator==(const AudioChannel&) const = default;
};

/// Reads and validates "id=...,frequency=...,...". Without a bandwidth AM takes 6000 and FM 10000.
AudioChannel parse_audio_channel(std::string_view specification);
/// Validates, then writes the canonical text, which reads back to an equal channel.
std::string format_audio_channel(const AudioChannel& channel);
/// Throws for the first rule that the channel breaks.
void validate_audio_channel(const AudioChannel& channel);

Passband audio_passband(const AudioChannel& channel);
/// Validates and, for an enabled channel, throws CaptureFitError unless its passband lies in centre ± 0.45 × rate.
void check_audio_in_capture(const AudioChannel& channel, double centre_hz, double sample_rate_hz);

}  // namespace options
