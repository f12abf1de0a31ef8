#include "sim/profile.h"

#include <map>
#include <stdexcept>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/numbers.h"
#include "base/text.h"
#include "launcher/catalogue/band_modes.h"
#include "options/paths.h"

namespace sim {
namespace {

using Map = std::map<std::string, std::string, std::less<>>;

std::string_view unquoted(std::string_view value) {
  if (value.empty() || (value.front() != '\'' && value.front() != '"')) return value;
  const auto end = value.find(value.front(), 1);
  if (end == std::string_view::npos) throw std::runtime_error("Unterminated quoted value");
  if (end + 1 != value.size()) throw std::runtime_error("Unexpected text after quoted value");
  return value.substr(1, end - 1);
}

void read_line(std::string_view raw, Map& map) {
  const auto line = base::trim(raw);
  if (line.empty() || line.front() == '#' || line.front() == ';') return;
  const auto equals = line.find('=');
  if (equals == std::string_view::npos) throw std::runtime_error("Expected option = value");
  const std::string key(base::trim(line.substr(0, equals)));
  if (!map.emplace(key, unquoted(base::trim(line.substr(equals + 1)))).second)
    throw std::runtime_error("Duplicate configuration option: " + key);
}

Map read_map(const std::string& path) {
  std::string text;
  try {
    text = base::read_file(path, 1U << 20);
  } catch (const std::runtime_error&) {
    throw std::runtime_error("Cannot open configuration file: " + path);
  }
  Map map;
  int number = 0;
  for (const auto line : base::split(text, '\n')) {
    ++number;
    try {
      read_line(line, map);
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(fmt::format("{} line {}: {}", path, number, error.what()));
    }
  }
  return map;
}

std::string value_of(const Map& map, std::string_view key, std::string fallback = {}) {
  const auto found = map.find(key);
  return found == map.end() || found->second.empty() ? std::move(fallback) : found->second;
}

bool is_on(const Map& map, std::string_view key, bool fallback) {
  const std::string value = base::lower(value_of(map, key));
  return value.empty() ? fallback : value == "true" || value == "on" || value == "yes" || value == "1";
}

double parse_hz(std::string_view text) {
  double factor = 1;
  if (!text.empty() && (text.back() == 'k' || text.back() == 'K')) factor = 1e3;
  if (!text.empty() && (text.back() == 'm' || text.back() == 'M')) factor = 1e6;
  const auto number = base::parse_double(factor == 1 ? text : text.substr(0, text.size() - 1));
  if (!number) throw std::runtime_error(fmt::format("Invalid number: {}", text));
  return *number * factor;
}

/// "FT8:14.074M" or, with a single mode, "14.074M".
Channel parse_frequency(std::string_view entry, const std::vector<Mode>& modes) {
  const auto colon = entry.find(':');
  if (colon == std::string_view::npos) {
    if (modes.size() != 1)
      throw std::runtime_error(
          "With multiple --modes, prefix each --frequencies entry: FT8:14.074M,FT4:14.080M; or use --bands");
    return {parse_hz(entry), modes.front()};
  }
  const auto mode = launcher::parse_digital_mode(entry.substr(0, colon));
  if (!mode)
    throw std::runtime_error(fmt::format("Frequency mode is not enabled by --modes: {}", entry.substr(0, colon)));
  return {parse_hz(entry.substr(colon + 1)), *mode};
}

void add_bands(Profile& profile, const Map& map) {
  const std::string band_modes = value_of(map, "band-modes");
  const std::string modes = value_of(map, "modes");
  for (const auto name : base::split(value_of(map, "bands"), ',')) {
    const launcher::BandPreset& band = launcher::band_preset(base::trim(name));
    profile.bands.push_back(&band);
    std::vector<Mode> wanted;
    const auto texts = launcher::modes_of_band(
        name, map.contains("band-modes") ? std::optional<std::string_view>(band_modes) : std::nullopt,
        map.contains("modes") ? std::optional<std::string_view>(modes) : std::nullopt);
    for (const auto text : texts) {
      if (const auto mode = launcher::parse_digital_mode(text)) wanted.push_back(*mode);
    }
    for (const Channel& channel : launcher::band_channels(band, wanted))
      profile.channels.push_back(channel);
  }
}

}  // namespace

Profile load_profile(const std::string& path) {
  const Map map = read_map(path);
  Profile profile;
  profile.backend = value_of(map, "backend", profile.backend);
  profile.serial = value_of(map, "serial");
  profile.all_txt = value_of(map, "all-txt", options::state_file("ALL.TXT"));
  profile.grid = value_of(map, "grid");
  profile.pskreporter = is_on(map, "pskreporter", false);
  const std::string mode = value_of(map, "mode", "audio");
  if (!is_on(map, "spot", true) || (mode != "decoder" && mode != "hybrid")) return profile;
  profile.known_channels = is_on(map, "known-channels", false);
  if (map.contains("bands")) add_bands(profile, map);
  if (const std::string frequencies = value_of(map, "frequencies"); !frequencies.empty()) {
    const auto modes = launcher::parse_modes(value_of(map, "modes", "FT8"));
    for (const auto entry : base::split(frequencies, ','))
      profile.channels.push_back(parse_frequency(entry, modes));
  }
  return profile;
}

double longitude_of(std::string_view grid) {
  const std::string folded = base::upper(grid);
  const bool valid = folded.size() >= 4 && folded[0] >= 'A' && folded[0] <= 'R' && base::is_digit(folded[2]);
  return valid ? (folded[0] - 'A') * 20.0 + (folded[2] - '0') * 2.0 - 179.0 : 0.0;
}

}  // namespace sim
