#include "gui/modes/mode_grid.h"

#include <algorithm>
#include <functional>

#include "launcher/catalogue/known_channels.h"
#include "launcher/catalogue/known_cost.h"
#include "launcher/catalogue/known_selection.h"
#include "launcher/catalogue/rtty_segments.h"

namespace modes_gui {
namespace {

constexpr std::size_t rtty_kind = 2;

const sig::RttySegment* segment_of(std::string_view band) {
  const auto found = std::find_if(sig::rtty_segments.begin(), sig::rtty_segments.end(),
                                  [&](const sig::RttySegment& segment) { return segment.band() == band; });
  return found == sig::rtty_segments.end() ? nullptr : &*found;
}

/// Kinds come from the catalogue's rows; RTTY is also searched for across its segments.
std::array<Columns, band_count> make_boxes() {
  std::array<Columns, band_count> boxes;
  for (std::size_t band = 0; band < band_count; ++band) {
    const launcher::BandPreset& preset = launcher::band_presets[band];
    const double dials[digital_columns] = {preset.ft8, preset.ft4, preset.js8, preset.wspr};
    for (std::size_t column = 0; column < digital_columns; ++column)
      boxes[band].set(column, dials[column] != 0);
    for (std::size_t kind = 0; kind < sig::filter_words.size(); ++kind) {
      sig::KnownFilters only;
      only.bands = {{&preset, sig::ModeSet::all().without(sig::filter_words[kind].kinds)}};
      boxes[band].set(digital_columns + kind, sig::band_has_known_channel(only, preset));
    }
    if (segment_of(preset.name)) boxes[band].set(digital_columns + rtty_kind);
  }
  return boxes;
}

/// The cells of a header box that take part, as pairs of band and column.
using Cells = std::vector<std::pair<std::size_t, std::size_t>>;

Cells open_cells(const OpenBoxes& open, const std::function<bool(std::size_t, std::size_t)>& wanted) {
  Cells cells;
  for (std::size_t band = 0; band < band_count; ++band)
    for (std::size_t column = 0; column < column_count; ++column)
      if (open[band][column] && wanted(band, column)) cells.emplace_back(band, column);
  return cells;
}

Cells row_cells(std::size_t row, const OpenBoxes& open) {
  return open_cells(open, [row](std::size_t band, std::size_t) { return band == row; });
}
Cells column_cells(std::size_t wanted, const OpenBoxes& open) {
  return open_cells(open, [wanted](std::size_t, std::size_t column) { return column == wanted; });
}
Cells every_cell(const OpenBoxes& open) {
  return open_cells(open, [](std::size_t, std::size_t) { return true; });
}

HeaderState state_of(const ModeGrid& grid, const Cells& cells) {
  const auto on = static_cast<std::size_t>(std::count_if(
      cells.begin(), cells.end(), [&](const auto& cell) { return grid.bands[cell.first].on[cell.second]; }));
  if (on == 0) return HeaderState::off;
  return on == cells.size() ? HeaderState::on : HeaderState::some;
}

void press(ModeGrid& grid, const Cells& cells) {
  const bool on = state_of(grid, cells) != HeaderState::on;
  for (const auto& [band, column] : cells)
    set_cell(grid, band, column, on);
}

}  // namespace

const std::array<ModeColumn, column_count> mode_columns = [] {
  std::array<ModeColumn, column_count> columns{{{"FT8", ""}, {"FT4", ""}, {"JS8", ""}, {"WSPR", ""}}};
  for (std::size_t kind = 0; kind < known_cost::mode_costs.size(); ++kind)
    columns[digital_columns + kind] = {known_cost::mode_costs[kind].shown, known_cost::mode_costs[kind].kind};
  return columns;
}();

const Columns& boxes_of(std::size_t band) {
  static const auto boxes = make_boxes();
  return boxes[band];
}

std::string box_tooltip(std::size_t band, std::size_t column) {
  if (column != digital_columns + rtty_kind) return {};
  const sig::RttySegment* segment = segment_of(launcher::band_presets[band].name);
  return segment ? sig::rtty_segment_tooltip(*segment) : std::string();
}

const FaxIds& all_fax_ids() {
  static const FaxIds ids = [] {
    FaxIds found;
    for (const sig::KnownChannel& row : sig::known_channels())
      if (sig::is_fax_channel(row)) found.push_back(row.id);
    return found;
  }();
  return ids;
}

void set_band(ModeGrid& grid, std::size_t band, bool on) {
  BandRow& row = grid.bands[band];
  row.ticked = on;
  row.on = on ? row.offer : Columns();
  grid.came_by_box.reset(band);
}

void set_cell(ModeGrid& grid, std::size_t band, std::size_t column, bool on) {
  BandRow& row = grid.bands[band];
  if (row.on[column] == on) return;
  if (!row.ticked) grid.came_by_box.set(band);
  row.on.set(column, on);
  row.ticked = row.on.any() || !grid.came_by_box[band];
  if (!row.ticked) grid.came_by_box.reset(band);
}

void press_row(ModeGrid& grid, std::size_t band, const OpenBoxes& open) {
  press(grid, row_cells(band, open));
}
void press_column(ModeGrid& grid, std::size_t column, const OpenBoxes& open) {
  press(grid, column_cells(column, open));
}
void press_every(ModeGrid& grid, const OpenBoxes& open) {
  press(grid, every_cell(open));
}

HeaderState row_state(const ModeGrid& grid, std::size_t band, const OpenBoxes& open) {
  return state_of(grid, row_cells(band, open));
}
HeaderState column_state(const ModeGrid& grid, std::size_t column, const OpenBoxes& open) {
  return state_of(grid, column_cells(column, open));
}
HeaderState every_state(const ModeGrid& grid, const OpenBoxes& open) {
  return state_of(grid, every_cell(open));
}

}  // namespace modes_gui
