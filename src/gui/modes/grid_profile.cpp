// The grid out of a profile and into it.
#include <algorithm>
#include <set>

#include "base/text.h"
#include "gui/modes/mode_grid.h"
#include "launcher/catalogue/band_modes.h"

namespace modes_gui {
namespace {

using options::Profile;
using Names = std::vector<std::string>;

constexpr std::size_t js8_column = 2;

std::optional<std::string_view> found(const Profile& profile, const char* key) {
  const auto at = profile.find(key);
  return at == profile.end() ? std::nullopt : std::optional<std::string_view>(at->second);
}

std::string_view band_name(std::size_t band) {
  return launcher::band_presets[band].name;
}

std::array<bool, band_count> ticked_bands(const Profile& common) {
  std::array<bool, band_count> ticked{};
  for (const auto piece : base::split(found(common, "bands").value_or(""), ','))
    if (const auto* preset = launcher::find_band(base::trim(piece)))
      ticked[static_cast<std::size_t>(preset - launcher::band_presets.data())] = true;
  return ticked;
}

std::vector<std::string_view> modes_on(const Profile& common, std::size_t band) {
  return launcher::modes_of_band(band_name(band), found(common, "band-modes"), found(common, "modes"));
}

std::optional<std::size_t> column_of(std::string_view mode) {
  if (mode.starts_with("JS8")) return js8_column;
  for (std::size_t column = 0; column < digital_columns; ++column)
    if (mode_columns[column].shown == mode) return column;
  return std::nullopt;
}

Columns digital_of(const Profile& common, std::size_t band) {
  Columns on;
  for (const auto mode : modes_on(common, band))
    if (const auto column = column_of(base::trim(mode))) on.set(*column);
  return on;
}

/// What is decoded on known frequencies at all; nullopt when it is off or cannot be read.
std::optional<sig::KnownFilters> known_filters(const Profile& common) {
  if (found(common, "known-channels").value_or("false") != "true") return std::nullopt;
  try {
    return sig::parse_known_filters(found(common, "known-modes"), found(common, "known-band-modes"),
                                    found(common, "fax-channels"));
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

Columns kinds_without(sig::ModeSet excluded) {
  Columns on;
  for (std::size_t kind = 0; kind < sig::filter_words.size(); ++kind)
    on.set(digital_columns + kind, !sig::filter_words[kind].kinds.without(excluded).empty());
  return on;
}

Columns known_of(const sig::KnownFilters& filters, std::size_t band) {
  if (!filters.bands) return kinds_without(filters.excluded);
  for (const sig::BandFilter& entry : *filters.bands)
    if (entry.band == &launcher::band_presets[band]) return kinds_without(entry.excluded);
  return {};
}

FaxIds fax_of(const sig::KnownFilters& filters) {
  if (sig::ModeSet{sig::SignalMode::wefax}.without(filters.excluded).empty()) return {};
  if (!filters.fax) return all_fax_ids();
  FaxIds ids;
  for (const std::string& id : all_fax_ids())
    if (std::any_of(filters.fax->begin(), filters.fax->end(), [&](const auto* row) { return row->id == id; }))
      ids.push_back(id);
  return ids;
}

bool same_columns(const ModeGrid& a, const ModeGrid& b, bool digital) {
  for (std::size_t band = 0; band < band_count; ++band)
    for (std::size_t column = 0; column < column_count; ++column)
      if (is_digital(column) == digital && a.bands[band].on[column] != b.bands[band].on[column]) return false;
  return true;
}

/// What is on anywhere, and whether each ticked band has all of it that it can have.
struct Union {
  Columns on;
  bool agreed = true;
};

Union union_of(const ModeGrid& grid, bool digital) {
  Union all;
  Columns wanted;
  for (std::size_t column = 0; column < column_count; ++column)
    wanted.set(column, is_digital(column) == digital);
  for (const BandRow& row : grid.bands)
    all.on |= row.on & wanted;
  for (std::size_t band = 0; band < band_count; ++band)
    if (grid.bands[band].ticked)
      all.agreed = all.agreed && (grid.bands[band].on & wanted) == (all.on & boxes_of(band) & wanted);
  return all;
}

/// A ticked band has nothing on and others have: only modes of its own keep it a listener.
bool listens_beside_others(const ModeGrid& grid) {
  bool any = false, silent = false;
  for (const BandRow& row : grid.bands) {
    any = any || row.on.any();
    silent = silent || (row.ticked && row.on.none());
  }
  return any && silent;
}

/// The JS8 speeds among some mode texts.
Names js8_among(const std::vector<std::string_view>& modes) {
  Names speeds;
  for (const auto mode : modes)
    if (base::trim(mode).starts_with("JS8") &&
        std::find(speeds.begin(), speeds.end(), base::trim(mode)) == speeds.end())
      speeds.emplace_back(base::trim(mode));
  return speeds;
}

/// The speeds that the column JS8 stands for on each band: the band's own, else those of the whole profile.
std::array<Names, band_count> js8_speeds(const Profile& common) {
  std::array<Names, band_count> speeds;
  std::vector<std::string_view> everywhere = base::split(found(common, "modes").value_or(""), ',');
  for (std::size_t band = 0; band < band_count; ++band)
    for (const auto mode : modes_on(common, band))
      everywhere.push_back(mode);
  Names all = js8_among(everywhere);
  if (all.empty()) all = {"JS8"};
  for (std::size_t band = 0; band < band_count; ++band) {
    speeds[band] = js8_among(modes_on(common, band));
    if (speeds[band].empty()) speeds[band] = all;
  }
  return speeds;
}

std::string mode_list(const Columns& on, const Names& js8, std::string_view separator) {
  Names modes;
  for (std::size_t column = 0; column < digital_columns; ++column) {
    if (!on[column]) continue;
    if (column == js8_column)
      modes.insert(modes.end(), js8.begin(), js8.end());
    else
      modes.emplace_back(mode_columns[column].shown);
  }
  return base::join(modes, separator);
}

/// "{band}:{modes}" for each ticked band, in the order of the table.
template <typename ModesOf>
std::string per_band(const ModeGrid& grid, ModesOf modes_of) {
  Names entries;
  for (std::size_t band = 0; band < band_count; ++band)
    if (grid.bands[band].ticked) entries.push_back(std::string(band_name(band)) + ":" + modes_of(band));
  return base::join(entries, ",");
}

void write_bands(const ModeGrid& grid, Profile& common) {
  Names bands;
  for (std::size_t band = 0; band < band_count; ++band)
    if (grid.bands[band].ticked) bands.emplace_back(band_name(band));
  common.erase("bands");
  if (bands.empty()) return;
  common["bands"] = base::join(bands, ",");
  // Typed frequencies and bands exclude each other.
  common.erase("frequencies");
}

void write_digital(const ModeGrid& grid, Profile& common) {
  const auto speeds = js8_speeds(common);
  const Union all = union_of(grid, true);
  bool agreed = all.agreed && !listens_beside_others(grid);
  const Names* js8 = nullptr;
  for (std::size_t band = 0; band < band_count; ++band) {
    if (!grid.bands[band].on[js8_column]) continue;
    if (!js8) js8 = &speeds[band];
    agreed = agreed && speeds[band] == *js8;
  }
  if (agreed) {
    common["modes"] = mode_list(all.on, js8 ? *js8 : Names(), ",");
    common.erase("band-modes");
    return;
  }
  common["band-modes"] =
      per_band(grid, [&](std::size_t band) { return mode_list(grid.bands[band].on, speeds[band], "+"); });
}

std::string kind_list(const Columns& on, std::string_view separator) {
  Names words;
  for (std::size_t column = digital_columns; column < column_count; ++column)
    if (on[column]) words.emplace_back(mode_columns[column].word);
  return base::join(words, separator);
}

void write_known(const ModeGrid& grid, Profile& common) {
  constexpr std::size_t wefax_column = digital_columns + 6;
  Union all = union_of(grid, false);
  if (!grid.fax.empty()) {
    all.on.set(wefax_column);
    all.agreed = true;
    for (std::size_t band = 0; band < band_count; ++band)
      if (grid.bands[band].ticked)
        all.agreed = all.agreed && ((grid.bands[band].on ^ (all.on & boxes_of(band))) >> digital_columns).none();
  }
  common["known-channels"] = all.on.any() ? "true" : "false";
  const bool everything = (all.on >> digital_columns).count() == sig::filter_words.size();
  common["known-modes"] = everything ? "all" : all.on.none() ? "none" : kind_list(all.on, ",");
  common.erase("known-band-modes");
  if (!all.agreed)
    common["known-band-modes"] = per_band(grid, [&](std::size_t band) { return kind_list(grid.bands[band].on, "+"); });
}

void write_fax(const ModeGrid& grid, Profile& common) {
  if (grid.fax == all_fax_ids())
    common.erase("fax-channels");
  else
    common["fax-channels"] = grid.fax.empty() ? "none" : base::join(grid.fax, ",");
}

}  // namespace

ModeGrid read_grid(const Profile& common) {
  ModeGrid grid;
  const auto ticked = ticked_bands(common);
  const auto filters = known_filters(common);
  for (std::size_t band = 0; band < band_count; ++band) {
    BandRow& row = grid.bands[band];
    row.ticked = ticked[band];
    row.offer = (digital_of(common, band) | (filters ? known_of(*filters, band) : Columns())) & boxes_of(band);
    if (row.ticked) row.on = row.offer;
  }
  if (filters) grid.fax = fax_of(*filters);
  return grid;
}

Profile write_grid(const ModeGrid& grid, const Profile& common) {
  Profile written = common;
  const auto same_bands = [](const BandRow& a, const BandRow& b) { return a.ticked == b.ticked; };
  ModeGrid now = read_grid(written);
  if (!std::equal(grid.bands.begin(), grid.bands.end(), now.bands.begin(), same_bands)) {
    write_bands(grid, written);
    now = read_grid(written);
  }
  if (!same_columns(grid, now, true)) write_digital(grid, written);
  if (!same_columns(grid, now, false) || grid.fax.empty() != now.fax.empty()) {
    write_known(grid, written);
    // What cannot be read would make all of it unreadable.
    if (!known_filters(written)) written.erase("fax-channels");
    now = read_grid(written);
  }
  if (grid.fax != now.fax) write_fax(grid, written);
  return written;
}

}  // namespace modes_gui
