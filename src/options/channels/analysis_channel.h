// An analysis channel: a fixed passband whose audio is handed to the decoders of known-frequency signals. The sibling
// of the audio channel, with the same kind of one-line text. Frequencies in Hz. Everything throws std::runtime_error
// with the operator's words unless it says otherwise. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "options/channels/passband.h"
#include "options/channels/signal_mode.h"

namespace options {

/// One fixed Olivia decoder: 2 to 64 tones in 125 to 2000 Hz around an audio frequency.
struct OliviaDecoder {
  int tones{};
  int width{};
  double audio_hz{};
  bool operator==(const OliviaDecoder&) const = default;
};

struct AnalysisChannel {
  std::string id;                           ///< 1 to 32 letters, digits, underscores or hyphens
  double frequency{};                       ///< dial
  Modulation modulation = Modulation::usb;  ///< USB or LSB
  double bandwidth = 3000;                  ///< 200 to 20000
  std::vector<sig::SignalMode> modes;       ///< empty means auto
  std::string rtty = "auto";                ///< fixed baud/shift, or auto
  std::string wefax = "auto";               ///< fixed lines/cooperation, or auto
  bool report = true;
  bool enabled = true;
  std::vector<OliviaDecoder> olivia;  ///< at most 8
  std::vector<sig::SignalMode> skip;  ///< left out of auto
  bool pairs = false;
  bool operator==(const AnalysisChannel&) const = default;
};

AnalysisChannel parse_analysis_channel(std::string_view specification);
/// Validates, then writes the canonical text, which reads back to an equal channel.
std::string format_analysis_channel(const AnalysisChannel& channel);
void validate_analysis_channel(const AnalysisChannel& channel);

/// The values of the fields of several parts, as they stand in the line.
std::string analysis_modes_text(const AnalysisChannel& channel);
std::string analysis_skip_text(const AnalysisChannel& channel);
std::string analysis_olivia_text(const AnalysisChannel& channel);

/// "8/250@1500" by itself, as an operator types it.
OliviaDecoder parse_olivia_decoder(std::string_view text);

Passband analysis_passband(const AnalysisChannel& channel);
/// Validates and, for an enabled channel, throws CaptureFitError unless its passband lies in centre ± 0.45 × rate.
void check_analysis_in_capture(const AnalysisChannel& channel, double centre_hz, double sample_rate_hz);

}  // namespace options
