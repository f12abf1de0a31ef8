// The table of bands and modes as values: what of a profile stands in it, and what a change of it writes back. Any
// thread. Never throws: a value of the profile that cannot be read counts as nothing ticked.
#pragma once

#include <array>
#include <bitset>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/catalogue/bands.h"
#include "launcher/catalogue/known_filters.h"
#include "options/profile.h"

namespace modes_gui {

inline constexpr std::size_t band_count = launcher::band_presets.size();
inline constexpr std::size_t digital_columns = 4;
inline constexpr std::size_t column_count = digital_columns + sig::filter_words.size();

/// The digital modes, then the known-frequency kinds in the order of sig::filter_words.
struct ModeColumn {
  std::string_view shown;  ///< "FT8", "Olivia"
  std::string_view word;   ///< of a known kind: its filter word
};
extern const std::array<ModeColumn, column_count> mode_columns;

/// Which columns are on, by index.
using Columns = std::bitset<column_count>;
inline bool is_digital(std::size_t column) {
  return column < digital_columns;
}
/// The columns that have a box on this band.
const Columns& boxes_of(std::size_t band);
/// What a box stands for, beyond its band and mode: the segment that is searched for RTTY; else empty.
std::string box_tooltip(std::size_t band, std::size_t column);

using FaxIds = std::vector<std::string>;  ///< in the order of the known channels

struct BandRow {
  bool ticked = false;
  Columns on;     ///< empty unless ticked
  Columns offer;  ///< what ticking the band alone would turn on: what the planner judged it with
  bool operator==(const BandRow& other) const { return ticked == other.ticked && on == other.on; }
};

/// What the operator sees. Rows in the order of the band table.
struct ModeGrid {
  std::array<BandRow, band_count> bands;
  FaxIds fax;
  /// Bands that came by one of their boxes, so that they go with the last of them.
  std::bitset<band_count> came_by_box;

  bool operator==(const ModeGrid& other) const { return bands == other.bands && fax == other.fax; }
};

ModeGrid read_grid(const options::Profile& common);
/// The common profile with the grid written into it. Keys that already say what the grid shows stay as they stand, so
/// that a grid as it was read gives the very same profile.
options::Profile write_grid(const ModeGrid& grid, const options::Profile& common);

/// Every weather fax frequency, in the order of the known channels.
const FaxIds& all_fax_ids();

// Changes by hand. `open` are the boxes that may be changed: shown and sensitive.

using OpenBoxes = std::array<Columns, band_count>;
void set_band(ModeGrid& grid, std::size_t band, bool on);
void set_cell(ModeGrid& grid, std::size_t band, std::size_t column, bool on);
/// The header boxes turn their cells on if any is off, and otherwise off.
void press_row(ModeGrid& grid, std::size_t band, const OpenBoxes& open);
void press_column(ModeGrid& grid, std::size_t column, const OpenBoxes& open);
void press_every(ModeGrid& grid, const OpenBoxes& open);

/// How a header box stands for its cells.
enum class HeaderState : std::uint8_t { off, some, on };
HeaderState row_state(const ModeGrid& grid, std::size_t band, const OpenBoxes& open);
HeaderState column_state(const ModeGrid& grid, std::size_t column, const OpenBoxes& open);
HeaderState every_state(const ModeGrid& grid, const OpenBoxes& open);

}  // namespace modes_gui
