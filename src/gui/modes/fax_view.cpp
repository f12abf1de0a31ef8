#include "gui/modes/fax_view.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/signal_connection.h"
#include "gui/kit/widgets.h"

namespace modes_gui {
namespace {

constexpr const char* left_out_note =
    "\nWhile the bands differ in their known-frequency modes, stations outside the amateur bands are not decoded.";

}  // namespace

FaxView::FaxView(std::function<void(const FaxIds&)> changed)
    : changed_(std::move(changed)), card_(kit::card("WEATHER FAX")), summary_(kit::line_label("", {"muted"})) {
  GtkWidget* grid = gtk_grid_new();
  gtk_widget_set_name(grid, "modetable");
  kit::add_class(grid, "modetable");
  kit::set_accessible(grid, "Weather fax");
  gtk_widget_show(grid);
  gtk_grid_attach(GTK_GRID(grid),
                  add_box("All stations", "faxevery", 0, "Every weather fax station, or none", {nullptr, nullptr, ""}),
                  0, 0, 1, 1);
  gtk_grid_attach(GTK_GRID(grid), kit::line_label("Frequencies, kHz", {"muted"}), 1, 0, 4, 1);
  int row = 1;
  for (const FaxStation& station : fax_stations())
    add_station(grid, row++, station);
  kit::add(card_, summary_);
  kit::add(card_, grid);
  show({}, false);
}

void FaxView::add_station(GtkWidget* grid, int row, const FaxStation& station) {
  gtk_grid_attach(
      GTK_GRID(grid),
      add_box(station.name, "faxrow", row, fmt::format("Every frequency of {}", station.name), {nullptr, &station, ""}),
      0, row, 1, 1);
  int column = 1;
  for (const FaxBox& box : station.boxes) {
    GtkWidget* widget = add_box(box.khz, "cell", row, box.tooltip, {nullptr, &station, box.id});
    kit::set_accessible(widget, fmt::format("{} {} kHz", station.name, box.khz));
    gtk_grid_attach(GTK_GRID(grid), widget, column++, row, 1, 1);
  }
}

GtkWidget* FaxView::add_box(const std::string& text, const char* kind, int row, const std::string& tip, Box box) {
  box.widget = kit::check_button(text);
  kit::set_tooltip(box.widget, tip);
  GObject* object = G_OBJECT(box.widget);
  g_object_set_data(object, "mt-kind", const_cast<char*>(kind));
  g_object_set_data(object, "mt-row", GINT_TO_POINTER(row));
  g_object_set_data_full(object, "mt-tip", g_strdup(tip.c_str()), g_free);
  const std::size_t index = boxes_.size();
  boxes_.push_back(box);
  base::connect_forever(object, "toggled", [this, index] {
    if (!own_change_) pressed(boxes_[index]);
  });
  return box.widget;
}

void FaxView::pressed(const Box& box) {
  FaxIds ticked = ticked_;
  if (box.id.empty())
    press_fax(ticked, box.station);
  else
    set_fax(ticked, box.id, std::find(ticked.begin(), ticked.end(), box.id) == ticked.end());
  changed_(ticked);
}

void FaxView::show(const FaxIds& ticked, bool by_band) {
  own_change_ = true;
  ticked_ = ticked;
  const bool left_out = by_band && !ticked.empty();
  kit::set_text(summary_, fax_summary(ticked) + (left_out ? left_out_note : ""));
  for (const Box& box : boxes_) {
    const bool on = std::find(ticked.begin(), ticked.end(), box.id) != ticked.end();
    const HeaderState state = box.id.empty() ? fax_state(ticked, box.station) : on ? HeaderState::on : HeaderState::off;
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(box.widget), state == HeaderState::on);
    gtk_toggle_button_set_inconsistent(GTK_TOGGLE_BUTTON(box.widget), state == HeaderState::some);
  }
  own_change_ = false;
}

}  // namespace modes_gui
