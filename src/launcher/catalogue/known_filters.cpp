#include "launcher/catalogue/known_filters.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "base/text.h"

namespace sig {
namespace {

std::string without_spaces(std::string_view text) {
  std::string kept(text);
  std::erase(kept, ' ');
  return kept;
}

/// A known-modes value in lower case and without spaces, its words parted by `separator`.
ModeSet excluded_by(std::string_view value, char separator) {
  if (value == "all") return {};
  if (value == "none") return ModeSet::all();
  ModeSet kept;
  for (const std::string_view word : base::split(value, separator)) {
    const auto* const found = std::find_if(filter_words.begin(), filter_words.end(),
                                           [word](const FilterWord& row) { return row.word == word; });
    if (found == filter_words.end())
      throw std::runtime_error(
          "--known-modes takes all, none or a comma list of cw, psk31, rtty, olivia, jtty, sstv, wefax, msk144");
    kept = kept.with(found->kinds);
  }
  return ModeSet::all().without(kept);
}

BandFilter parse_entry(std::string_view entry) {
  const auto colon = entry.find(':');
  if (colon == std::string_view::npos)
    throw std::runtime_error(
        fmt::format("--known-band-modes entries are BAND:MODE+MODE (a band with no mode is BAND:): {}", entry));
  const launcher::BandPreset* const band = launcher::find_band(entry.substr(0, colon));
  if (!band) throw std::runtime_error(fmt::format("--known-band-modes: unknown band in {}", entry));
  const std::string modes = base::lower(entry.substr(colon + 1));
  return {band, excluded_by(modes.empty() ? "none" : modes, '+')};
}

}  // namespace

ModeSet parse_known_modes(std::string_view value) {
  return excluded_by(base::lower(without_spaces(value)), ',');
}

std::vector<BandFilter> parse_known_band_modes(std::string_view value) {
  const std::string text = without_spaces(value);
  std::vector<BandFilter> filters;
  for (const std::string_view entry : base::split(text, ',')) {
    const BandFilter filter = parse_entry(entry);
    if (std::any_of(filters.begin(), filters.end(),
                    [&filter](const BandFilter& other) { return other.band == filter.band; }))
      throw std::runtime_error(
          fmt::format("--known-band-modes lists a band twice: {}", entry.substr(0, entry.find(':'))));
    filters.push_back(filter);
  }
  return filters;
}

std::vector<const KnownChannel*> parse_fax_channels(std::string_view value) {
  const std::string text = without_spaces(value);
  std::vector<const KnownChannel*> rows;
  if (text.empty() || text == "none") return rows;
  for (const std::string_view id : base::split(text, ',')) {
    const KnownChannel* const row = find_known_channel(id);
    if (!row || !is_fax_channel(*row))
      throw std::runtime_error(fmt::format("--fax-channels: not a weather fax window: {}", id));
    if (std::find(rows.begin(), rows.end(), row) == rows.end()) rows.push_back(row);
  }
  return rows;
}

KnownFilters parse_known_filters(std::optional<std::string_view> known_modes,
                                 std::optional<std::string_view> known_band_modes,
                                 std::optional<std::string_view> fax_channels) {
  KnownFilters filters;
  if (known_modes) filters.excluded = parse_known_modes(*known_modes);
  if (known_band_modes) filters.bands = parse_known_band_modes(*known_band_modes);
  if (fax_channels) filters.fax = parse_fax_channels(*fax_channels);
  return filters;
}

}  // namespace sig
