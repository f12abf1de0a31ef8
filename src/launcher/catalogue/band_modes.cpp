#include "launcher/catalogue/band_modes.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "base/text.h"

namespace launcher {
namespace {

DigitalMode required_mode(std::string_view text) {
  if (const auto mode = parse_digital_mode(text)) return *mode;
  throw std::runtime_error(
      fmt::format("Digital mode must be FT8, FT4, JS8, JS8-FAST, JS8-TURBO, JS8-SLOW or WSPR: {}", text));
}

bool holds(const std::vector<DigitalMode>& modes, DigitalMode mode) {
  return std::find(modes.begin(), modes.end(), mode) != modes.end();
}

std::vector<std::string_view> filled_pieces(std::string_view list, char separator) {
  std::vector<std::string_view> pieces = base::split(list, separator);
  std::erase(pieces, std::string_view());
  return pieces;
}

BandModes parse_entry(std::string_view entry) {
  const auto colon = entry.find(':');
  if (colon == 0 || colon == std::string_view::npos)
    throw std::runtime_error(
        fmt::format("--band-modes entries are BAND:MODE+MODE (a band with no mode is BAND:): {}", entry));
  const std::string_view band = entry.substr(0, colon);
  BandModes result{&band_preset(band), {}};
  if (colon + 1 == entry.size()) return result;
  for (const std::string_view text : base::split(entry.substr(colon + 1), '+')) {
    const DigitalMode mode = required_mode(text);
    if (holds(result.modes, mode)) throw std::runtime_error(fmt::format("--band-modes lists a mode twice on {}", band));
    result.modes.push_back(mode);
  }
  return result;
}

}  // namespace

std::vector<DigitalMode> parse_modes(std::string_view value) {
  std::vector<DigitalMode> modes;
  for (const std::string_view text : base::split(value, ',')) {
    const DigitalMode mode = required_mode(text);
    if (holds(modes, mode)) throw std::runtime_error(fmt::format("Duplicate digital mode: {}", text));
    modes.push_back(mode);
  }
  return modes;
}

std::vector<BandModes> parse_band_modes(std::string_view value) {
  std::vector<BandModes> result;
  for (const std::string_view text : base::split(value, ',')) {
    BandModes entry = parse_entry(text);
    if (std::any_of(result.begin(), result.end(), [&](const BandModes& other) { return other.band == entry.band; }))
      throw std::runtime_error(fmt::format("--band-modes lists a band twice: {}", text.substr(0, text.find(':'))));
    result.push_back(std::move(entry));
  }
  return result;
}

std::vector<std::string_view> modes_of_band(std::string_view band, std::optional<std::string_view> band_modes,
                                            std::optional<std::string_view> modes) {
  const std::string name = normalise_band(band);
  std::string_view rest = band_modes.value_or("");
  while (!rest.empty()) {
    const auto end = std::min(rest.find(','), rest.size());
    const std::string_view entry = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const auto colon = entry.find(':');
    if (colon != std::string_view::npos && normalise_band(entry.substr(0, colon)) == name)
      return filled_pieces(entry.substr(colon + 1), '+');
  }
  return filled_pieces(modes.value_or("FT8"), ',');
}

std::vector<DecoderChannel> band_channels(const BandPreset& band, const std::vector<DigitalMode>& modes) {
  std::vector<DecoderChannel> channels;
  for (const DigitalMode mode : modes)
    if (const double frequency = dial_frequency(band, mode); frequency != 0) channels.push_back({frequency, mode});
  return channels;
}

bool lacks_frequency(const BandPreset& band, const std::vector<std::string_view>& modes) {
  return std::any_of(modes.begin(), modes.end(), [&band](std::string_view text) {
    const auto mode = parse_digital_mode(text);
    return mode && dial_frequency(band, *mode) == 0;
  });
}

std::string missing_frequency_advice(const BandPreset& band, const std::vector<std::string_view>& modes) {
  std::vector<std::string> requested;
  for (const std::string_view mode : modes) {
    std::string text(mode.starts_with("JS8") ? "JS8" : mode);
    if (text != "JS8" || std::find(requested.begin(), requested.end(), text) == requested.end())
      requested.push_back(std::move(text));
  }
  std::vector<std::string> offers;
  for (const DigitalMode mode : {DigitalMode::ft8, DigitalMode::ft4, DigitalMode::js8, DigitalMode::wspr})
    if (dial_frequency(band, mode) != 0) offers.emplace_back(digital_mode_text(mode));
  if (offers.empty()) offers.emplace_back("another mode");
  return fmt::format("{} has no {} frequency. Tick {}", band_display_name(band.name), base::enumerate(requested, "or"),
                     base::enumerate(offers, "or"));
}

}  // namespace launcher
