#include "launcher/catalogue/bands.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "base/text.h"

namespace launcher {
namespace {

constexpr std::array<std::string_view, digital_mode_count> mode_texts{"FT8",       "FT4",      "JS8", "JS8-FAST",
                                                                      "JS8-TURBO", "JS8-SLOW", "WSPR"};
/// The audio that the highest channel of a band takes above its dial frequency.
constexpr double channel_audio = 3000;

bool is_centimetre_band(std::string_view lowered) {
  return lowered.size() > 2 && lowered.ends_with("cm");
}

}  // namespace

const ActivityBand* activity_band_at(double hz) {
  const auto* const found = std::find_if(activity_bands.begin(), activity_bands.end(),
                                         [hz](const ActivityBand& band) { return hz >= band.low && hz <= band.high; });
  return found == activity_bands.end() ? nullptr : found;
}

std::string normalise_band(std::string_view text) {
  std::string name = base::lower(text);
  if (!is_centimetre_band(name) && name.ends_with('m')) name.pop_back();
  return name;
}

std::string band_display_name(std::string_view text) {
  std::string name = normalise_band(text);
  if (!is_centimetre_band(name)) name += 'm';
  return name;
}

const BandPreset* find_band(std::string_view text) {
  const std::string name = normalise_band(text);
  const auto* const found = std::find_if(band_presets.begin(), band_presets.end(),
                                         [&name](const BandPreset& band) { return band.name == name; });
  return found == band_presets.end() ? nullptr : found;
}

const BandPreset& band_preset(std::string_view text) {
  if (text.empty()) throw std::runtime_error("--bands contains an empty band");
  if (const BandPreset* const found = find_band(text)) return *found;
  throw std::runtime_error(
      fmt::format("Unsupported band: {}; choose 160,80,60,40,30,20,17,15,12,10,6,2 (optional m suffix) or 70cm", text));
}

double dial_frequency(const BandPreset& band, DigitalMode mode) {
  switch (mode) {
    case DigitalMode::ft4:
      return band.ft4;
    case DigitalMode::js8:
    case DigitalMode::js8_fast:
    case DigitalMode::js8_turbo:
    case DigitalMode::js8_slow:
      return band.js8;
    case DigitalMode::wspr:
      return band.wspr;
    case DigitalMode::ft8:
      break;
  }
  return band.ft8;
}

double dial_frequency(std::string_view band, DigitalMode mode) {
  return dial_frequency(band_preset(band), mode);
}

BandSpan band_span(const BandPreset& band) {
  BandSpan span{};
  for (const double dial : {band.ft8, band.ft4, band.js8, band.wspr}) {
    if (dial == 0) continue;
    span.low = span.low == 0 ? dial : std::min(span.low, dial);
    span.high = std::max(span.high, dial + channel_audio);
  }
  return span;
}

BandSpan band_span(std::string_view band) {
  return band_span(band_preset(band));
}

std::optional<DigitalMode> parse_digital_mode(std::string_view text) {
  const auto* const found = std::find(mode_texts.begin(), mode_texts.end(), text);
  if (found == mode_texts.end()) return std::nullopt;
  return static_cast<DigitalMode>(found - mode_texts.begin());
}

std::string_view digital_mode_text(DigitalMode mode) {
  const auto index = static_cast<std::size_t>(mode);
  return index < mode_texts.size() ? mode_texts[index] : "unknown";
}

}  // namespace launcher
