#include "options/channels/analysis_values.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "options/channels/specification.h"

namespace options {
namespace {

using sig::SignalMode;

constexpr std::size_t most_olivia_decoders = 8;
constexpr double widest_audio = 20000;  ///< no channel is wider
// The formats that stations use: any of these numbers of tones in any of these widths.
constexpr std::array<std::string_view, 6> olivia_tones{"2", "4", "8", "16", "32", "64"};
constexpr std::array<std::string_view, 5> olivia_widths{"125", "250", "500", "1000", "2000"};
// Baud rate and shift of amateur, weather service and older commercial stations.
constexpr std::array<std::string_view, 4> rtty_settings{"45.45/170", "50/170", "75/850", "auto"};
// Lines a minute and index of cooperation, as fax schedules give them.
constexpr std::array<std::string_view, 5> wefax_settings{"120/576", "60/288", "90/576", "240/576", "auto"};

template <std::size_t N>
bool holds(const std::array<std::string_view, N>& list, std::string_view text) {
  return std::find(list.begin(), list.end(), text) != list.end();
}

bool holds(const std::vector<SignalMode>& list, SignalMode mode) {
  return std::find(list.begin(), list.end(), mode) != list.end();
}

template <std::size_t N>
std::string read_setting(const std::array<std::string_view, N>& list, std::string_view text, const char* refusal) {
  if (!holds(list, text)) throw std::runtime_error(refusal);
  return std::string(text);
}

SignalMode read_mode(std::string_view text, const char* refusal) {
  if (const auto mode = sig::parse_signal_mode(base::upper(text))) return *mode;
  throw std::runtime_error(refusal);
}

std::optional<OliviaDecoder> find_olivia_decoder(std::string_view text) {
  const auto slash = text.find('/');
  const auto at = text.find('@');
  if (slash == std::string_view::npos || at == std::string_view::npos || at < slash) return std::nullopt;
  const std::string_view tones = text.substr(0, slash);
  const std::string_view width = text.substr(slash + 1, at - slash - 1);
  const auto audio = base::parse_scaled(text.substr(at + 1));
  if (!holds(olivia_tones, tones) || !holds(olivia_widths, width) || !audio || !(*audio > 0) || *audio > widest_audio)
    return std::nullopt;
  return OliviaDecoder{static_cast<int>(*base::parse_int(tones)), static_cast<int>(*base::parse_int(width)), *audio};
}

std::string joined_modes(const std::vector<SignalMode>& modes) {
  std::string text;
  for (const SignalMode mode : modes) {
    if (!text.empty()) text += '+';
    text += base::lower(sig::signal_mode_text(mode));
  }
  return text;
}

}  // namespace

std::vector<SignalMode> read_analysis_modes(std::string_view text) {
  if (text.empty()) throw std::runtime_error("Analysis modes must name at least one mode");
  if (base::lower(text) == "auto") return {};
  std::vector<SignalMode> modes;
  for (const std::string_view name : base::split(text, '+')) {
    const SignalMode mode = read_mode(name,
                                      "Analysis modes must be auto or '+'-separated names from psk31, qpsk31, psk63, "
                                      "rtty, olivia, cw, wefax, sstv, jtty");
    if (mode == SignalMode::unknown) throw std::runtime_error("Analysis modes must not include unknown");
    if (holds(modes, mode)) throw std::runtime_error("Analysis modes must not repeat");
    modes.push_back(mode);
  }
  return modes;
}

std::vector<SignalMode> read_analysis_skip(std::string_view text) {
  constexpr const char* refusal =
      "Analysis skip must be '+'-separated names from psk31, qpsk31, psk63, rtty, olivia, cw, wefax, sstv, jtty";
  std::vector<SignalMode> modes;
  if (text.empty()) return modes;
  for (const std::string_view name : base::split(text, '+')) {
    const SignalMode mode = read_mode(name, refusal);
    if (mode == SignalMode::unknown) throw std::runtime_error(refusal);
    if (!holds(modes, mode)) modes.push_back(mode);
  }
  return modes;
}

std::vector<OliviaDecoder> read_olivia(std::string_view text) {
  std::vector<OliviaDecoder> decoders;
  if (text.empty()) return decoders;
  for (const std::string_view entry : base::split(text, '+')) {
    if (decoders.size() == most_olivia_decoders)
      throw std::runtime_error("At most 8 fixed Olivia decoders per analysis channel");
    const auto decoder = find_olivia_decoder(entry);
    if (!decoder)
      throw std::runtime_error(
          "Analysis olivia entries are FORMAT@AUDIO_HZ inside the channel, for example 8/250@1500");
    decoders.push_back(*decoder);
  }
  return decoders;
}

OliviaDecoder parse_olivia_decoder(std::string_view text) {
  if (const auto decoder = find_olivia_decoder(text)) return *decoder;
  throw std::runtime_error("Analysis olivia entries are FORMAT@AUDIO_HZ, for example 8/250@1500");
}

std::string read_rtty(std::string_view text) {
  return read_setting(rtty_settings, text, "Analysis rtty must be 45.45/170, 50/170, 75/850 or auto");
}

std::string read_wefax(std::string_view text) {
  return read_setting(wefax_settings, text, "Analysis wefax must be 120/576, 60/288, 90/576, 240/576 or auto");
}

std::string analysis_modes_text(const AnalysisChannel& channel) {
  return channel.modes.empty() ? "auto" : joined_modes(channel.modes);
}

std::string analysis_skip_text(const AnalysisChannel& channel) {
  return joined_modes(channel.skip);
}

std::string analysis_olivia_text(const AnalysisChannel& channel) {
  std::string text;
  for (const auto& decoder : channel.olivia)
    text +=
        fmt::format("{}{}/{}@{}", text.empty() ? "" : "+", decoder.tones, decoder.width, number_text(decoder.audio_hz));
  return text;
}

}  // namespace options
