// What makes an audio channel valid, rule by rule in the order in which they are reported.
#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "options/channels/audio_channel.h"
#include "options/channels/specification.h"

namespace options {
namespace {

constexpr double narrowest = 200;
constexpr double widest = 20000;
constexpr double widest_fm = 250000;
/// Leaves room for the output filter below half the rate.
constexpr double usable_part_of_rate = 0.45;

bool is_sideband(const AudioChannel& channel) {
  return channel.modulation == Modulation::usb || channel.modulation == Modulation::lsb;
}

bool holds_only(std::string_view text, std::string_view marks) {
  return std::all_of(text.begin(), text.end(), [marks](char c) {
    return base::is_letter(c) || base::is_digit(c) || marks.find(c) != std::string_view::npos;
  });
}

bool numbers_fit(const AudioChannel& channel) {
  const double limit = channel.modulation == Modulation::fm ? widest_fm : widest;
  return std::isfinite(channel.frequency) && channel.bandwidth >= narrowest && channel.bandwidth <= limit &&
         channel.audio_gain >= 0 && channel.audio_gain <= 10000 && channel.audio_rate >= 8000 &&
         channel.audio_rate <= 192000;
}

bool low_cut_fits(const AudioChannel& channel) {
  if (!std::isfinite(channel.low_cut) || channel.low_cut < 0) return false;
  return !is_sideband(channel) || channel.low_cut <= channel.bandwidth - narrowest;
}

bool rate_fits(const AudioChannel& channel) {
  if (channel.modulation == Modulation::fm) return true;
  const double audio = is_sideband(channel) ? channel.bandwidth : channel.bandwidth / 2;
  return audio < usable_part_of_rate * channel.audio_rate;
}

bool sink_fits(const AudioChannel& channel) {
  return channel.sink == default_speakers || (channel.sink.size() <= 128 && holds_only(channel.sink, "_-."));
}

bool socket_fits(const AudioChannel& channel) {
  const std::string& path = channel.socket;
  if (path.empty()) return true;
  return path.size() <= 100 && path.front() == '/' && holds_only(path, "_-./") &&
         path.find("..") == std::string::npos && channel.sink.empty() && channel.wav.empty();
}

struct Rule {
  bool (*holds)(const AudioChannel& channel);
  const char* refusal;
};

constexpr Rule rules[] = {
    {[](const AudioChannel& channel) { return is_channel_id(channel.id); },
     "Audio channel ID must be 1..32 letters, digits, underscores or hyphens"},
    {numbers_fit,
     "Audio channel requires 200..20000 Hz bandwidth (FM up to 250000, broadcast FM), 0..10000 gain and 8000..192000 "
     "Hz output"},
    {low_cut_fits, "Audio low-cut must leave at least 200 Hz of passband"},
    {[](const AudioChannel& channel) { return is_receivable(audio_passband(channel)); },
     "Audio passband must be within 1k..2000M Hz"},
    {rate_fits, "Audio output rate needs Nyquist/filter margin above the requested bandwidth"},
    {[](const AudioChannel& channel) { return channel.wav.find_first_of("\r\n,") == std::string::npos; },
     "Unsafe audio WAV path"},
    {sink_fits, "Unsafe audio sink name"},
    {socket_fits, "Audio socket must be an absolute path of letters, digits, _ - . / (no sink or WAV with it)"},
};

}  // namespace

void validate_audio_channel(const AudioChannel& channel) {
  for (const auto& rule : rules)
    if (!rule.holds(channel)) throw std::runtime_error(rule.refusal);
}

}  // namespace options
