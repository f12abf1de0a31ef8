#include "gui/modes/mode_table.h"

#include <fmt/format.h>

#include "base/signal_connection.h"
#include "gui/kit/drop_down.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace modes_gui {
namespace {

// Columns of the grid: band, all modes, the modes, receiver, coverage. Rows: head, the bands, all bands.
constexpr int band_column = 0, all_modes_column = 1, first_mode_column = 2;
constexpr int receiver_column = first_mode_column + static_cast<int>(column_count);
constexpr int coverage_column = receiver_column + 1;
constexpr int receiver_width = 122;
constexpr int row_height = 30;

std::string band_shown(std::size_t band) {
  return launcher::band_display_name(launcher::band_presets[band].name);
}

void set_tip(GtkWidget* widget, std::string& kept, const std::string& tip) {
  if (kept == tip) return;
  kept = tip;
  kit::set_tooltip(widget, tip);
  g_object_set_data_full(G_OBJECT(widget), "mt-tip", g_strdup(tip.c_str()), g_free);
}

/// Long names end in dots, so that one receiver does not widen the table.
void narrow(GtkWidget* drop_down) {
  GList* cells = gtk_cell_layout_get_cells(GTK_CELL_LAYOUT(drop_down));
  for (GList* cell = cells; cell; cell = cell->next)
    g_object_set(cell->data, "ellipsize", PANGO_ELLIPSIZE_END, nullptr);
  g_list_free(cells);
  ui_scale::add_size(drop_down, receiver_width, -1);
}

}  // namespace

ModeTable::ModeTable(Actions actions) : actions_(std::move(actions)), grid_(gtk_grid_new()) {
  gtk_widget_set_name(grid_, "modetable");
  kit::add_class(grid_, "modetable");
  kit::set_accessible(grid_, "Bands and modes");
  gtk_widget_show(grid_);
  build();
}

void ModeTable::build() {
  build_head();
  for (std::size_t band = 0; band < band_count; ++band)
    build_band(band);
  build_all_bands();
  coverage_ = std::make_unique<CoverageView>(actions_.coverage, [this](std::size_t row) {
    return row < band_count ? gtk_widget_get_parent(bands_[row].widget) : gtk_widget_get_parent(every_.widget);
  });
  gtk_grid_attach(GTK_GRID(grid_), coverage_->widget(), coverage_column, 1, 1, static_cast<int>(chart_rows));
}

void ModeTable::build_head() {
  const auto head = [this](std::string_view text, int column, double align) {
    GtkWidget* label = kit::line_label(std::string(text), {"muted"});
    gtk_label_set_xalign(GTK_LABEL(label), static_cast<float>(align));
    gtk_grid_attach(GTK_GRID(grid_), label, column, 0, 1, 1);
  };
  head("Band", band_column, 0);
  head("All modes", all_modes_column, 0.5);
  for (std::size_t column = 0; column < column_count; ++column)
    head(mode_columns[column].shown, first_mode_column + static_cast<int>(column), 0.5);
  head("Receiver", receiver_column, 0);
  head("Coverage", coverage_column, 0);
}

/// Every cell sits in a frame of one height, so that the rows of the chart are the rows of the table.
GtkWidget* ModeTable::add_box(Box& box, const char* text, const char* kind, std::size_t row, int column,
                              const char* name, std::function<void()> clicked) {
  box.widget = *text ? kit::check_button(text) : gtk_check_button_new();
  gtk_widget_show(box.widget);
  GtkWidget* frame = kit::horizontal_box(0);
  ui_scale::add_size(frame, -1, row_height);
  gtk_widget_set_halign(box.widget, *text ? GTK_ALIGN_START : GTK_ALIGN_CENTER);
  gtk_box_pack_start(GTK_BOX(frame), box.widget, TRUE, TRUE, 0);
  gtk_grid_attach(GTK_GRID(grid_), frame, column, static_cast<int>(row) + 1, 1, 1);
  GObject* object = G_OBJECT(box.widget);
  g_object_set_data(object, "mt-kind", const_cast<char*>(kind));
  g_object_set_data(object, "mt-row", GINT_TO_POINTER(static_cast<int>(row)));
  if (row < band_count)
    g_object_set_data_full(object, "mt-band", g_strdup(std::string(launcher::band_presets[row].name).c_str()), g_free);
  kit::set_accessible(box.widget, name);
  base::connect_forever(box.widget, "toggled", [this, clicked = std::move(clicked)] {
    if (!own_change_) clicked();
  });
  return box.widget;
}

void ModeTable::build_band(std::size_t band) {
  const std::string shown = band_shown(band);
  add_box(bands_[band], shown.c_str(), "band", band, band_column, shown.c_str(),
          [this, band] { change([&](ModeGrid& grid) { set_band(grid, band, !grid.bands[band].ticked); }); });
  add_box(rows_[band], "", "row", band, all_modes_column, fmt::format("Every mode on {}", shown).c_str(),
          [this, band] { change([&](ModeGrid& grid) { press_row(grid, band, view_.open); }); });
  for (std::size_t column = 0; column < column_count; ++column) {
    if (!boxes_of(band)[column]) continue;
    add_box(cells_[band][column], "", "cell", band, first_mode_column + static_cast<int>(column),
            fmt::format("{} on {}", mode_columns[column].shown, shown).c_str(), [this, band, column] {
              change([&](ModeGrid& grid) { set_cell(grid, band, column, !grid.bands[band].on[column]); });
            });
  }
  build_receivers(band);
}

void ModeTable::build_receivers(std::size_t band) {
  GtkWidget* drop_down = kit::drop_down();
  receivers_[band] = drop_down;
  narrow(drop_down);
  gtk_widget_set_valign(drop_down, GTK_ALIGN_CENTER);
  kit::set_accessible(drop_down, fmt::format("Receiver of {}", band_shown(band)));
  g_object_set_data_full(G_OBJECT(drop_down), "mt-band",
                         g_strdup(std::string(launcher::band_presets[band].name).c_str()), g_free);
  base::connect_forever(drop_down, "changed", [this, band, drop_down] {
    if (!own_change_ && gtk_combo_box_get_active(GTK_COMBO_BOX(drop_down)) >= 0)
      actions_.pinned(band, kit::chosen(drop_down));
  });
  gtk_grid_attach(GTK_GRID(grid_), drop_down, receiver_column, static_cast<int>(band) + 1, 1, 1);
}

void ModeTable::build_all_bands() {
  all_bands_ = kit::line_label("All bands", {"muted"});
  gtk_grid_attach(GTK_GRID(grid_), all_bands_, band_column, static_cast<int>(band_count) + 1, 1, 1);
  add_box(every_, "", "every", band_count, all_modes_column, "Every mode on every covered band",
          [this] { change([&](ModeGrid& grid) { press_every(grid, view_.open); }); });
  for (std::size_t column = 0; column < column_count; ++column)
    add_box(columns_[column], "", "column", band_count, first_mode_column + static_cast<int>(column),
            fmt::format("All covered bands with {}", mode_columns[column].shown).c_str(),
            [this, column] { change([&](ModeGrid& grid) { press_column(grid, column, view_.open); }); });
}

void ModeTable::change(const std::function<void(ModeGrid&)>& by) {
  ModeGrid grid = view_.grid;
  by(grid);
  actions_.changed(grid);
}

void ModeTable::show(const TableView& view) {
  own_change_ = true;
  view_ = view;
  for (std::size_t band = 0; band < band_count; ++band) {
    show_band(band);
    show_receivers(band);
  }
  show_headers();
  coverage_->show(view_.bars, view_.fresh);
  own_change_ = false;
}

void ModeTable::put(Box& box, HeaderState state, bool sensitive, const std::string& tip) {
  if (!box.widget) return;
  GtkToggleButton* toggle = GTK_TOGGLE_BUTTON(box.widget);
  gtk_toggle_button_set_active(toggle, state == HeaderState::on);
  gtk_toggle_button_set_inconsistent(toggle, state == HeaderState::some);
  kit::set_sensitive(box.widget, sensitive);
  set_tip(box.widget, box.tip, tip);
}

void ModeTable::show_band(std::size_t band) {
  const BandRow& row = view_.grid.bands[band];
  const bool open = view_.band_open[band];
  const auto state = [](bool on) { return on ? HeaderState::on : HeaderState::off; };
  put(bands_[band], state(row.ticked), open, view_.band_tips[band]);
  put(rows_[band], row_state(view_.grid, band, view_.open), view_.open[band].any(),
      open ? fmt::format("Every mode on {}, or none", band_shown(band)) : view_.band_tips[band]);
  for (std::size_t column = 0; column < column_count; ++column)
    put(cells_[band][column], state(row.on[column]), view_.open[band][column], view_.cell_tips[band][column]);
}

void ModeTable::show_receivers(std::size_t band) {
  const ReceiverEntries& shown = view_.receivers[band];
  kit::set_entries(receivers_[band], shown.entries);
  if (kit::chosen(receivers_[band]) != shown.chosen || gtk_combo_box_get_active(GTK_COMBO_BOX(receivers_[band])) < 0)
    gtk_combo_box_set_active_id(GTK_COMBO_BOX(receivers_[band]), shown.chosen.c_str());
  set_tip(receivers_[band], receiver_tips_[band], shown.tooltip);
}

void ModeTable::show_headers() {
  bool any = false;
  for (std::size_t column = 0; column < column_count; ++column) {
    bool open = false;
    for (std::size_t band = 0; band < band_count; ++band)
      open = open || view_.open[band][column];
    any = any || open;
    put(columns_[column], column_state(view_.grid, column, view_.open), open,
        view_.missing[column].empty() ? fmt::format("All covered bands with {}, or none", mode_columns[column].shown)
                                      : view_.missing[column]);
  }
  put(every_, every_state(view_.grid, view_.open), any, "Every mode on every covered band, or none");
}

}  // namespace modes_gui
