#include "gui/settings/setting_grid.h"

#include "gui/kit/widgets.h"

namespace gui {
namespace {

constexpr int column_spacing = 14;
constexpr int row_spacing = 9;
// Natural width of wrapping text, so that a long sentence does not ask for a wide card.
constexpr int wrapped_characters = 24;

void let_wrap(GtkWidget* label) {
  gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
  gtk_label_set_max_width_chars(GTK_LABEL(label), wrapped_characters);
  gtk_label_set_xalign(GTK_LABEL(label), 0);
}

}  // namespace

SettingGrid::SettingGrid() : grid_(gtk_grid_new()) {
  gtk_grid_set_column_spacing(GTK_GRID(grid_), column_spacing);
  gtk_grid_set_row_spacing(GTK_GRID(grid_), row_spacing);
  gtk_widget_show(grid_);
}

GtkWidget* SettingGrid::add_beside(const std::string& text, GtkWidget* control) {
  GtkWidget* label = kit::line_label(text);
  kit::name_by_label(label, control);
  // The controls' column takes the spare room, so that the labels stay close to them.
  gtk_widget_set_hexpand(control, TRUE);
  gtk_grid_attach(GTK_GRID(grid_), label, 0, line_, 1, 1);
  gtk_grid_attach(GTK_GRID(grid_), control, 1, line_++, 1, 1);
  return label;
}

GtkWidget* SettingGrid::add_below(const std::string& text, GtkWidget* control, const std::string& help) {
  GtkWidget* box = kit::vertical_box(4);
  GtkWidget* label = kit::line_label(text);
  kit::name_by_label(label, control);
  kit::add(box, label);
  kit::add(box, control);
  if (!help.empty()) {
    kit::add(box, wrapped_label(help, {"small"}));
    kit::set_accessible(control, {}, help);
  }
  add_wide(box);
  return label;
}

void SettingGrid::add_wide(GtkWidget* widget) {
  gtk_grid_attach(GTK_GRID(grid_), widget, 0, line_++, 2, 1);
}

GtkWidget* wrapped_label(const std::string& text, std::initializer_list<const char*> classes) {
  GtkWidget* label = kit::label(text, classes);
  let_wrap(label);
  return label;
}

GtkWidget* wrapped_check(const std::string& text) {
  GtkWidget* check = kit::check_button(text);
  let_wrap(gtk_bin_get_child(GTK_BIN(check)));
  return check;
}

GtkWidget* number_button(double lowest, double highest, double step, int decimals) {
  GtkWidget* button = gtk_spin_button_new_with_range(lowest, highest, step);
  gtk_spin_button_set_digits(GTK_SPIN_BUTTON(button), static_cast<guint>(decimals));
  gtk_spin_button_set_numeric(GTK_SPIN_BUTTON(button), TRUE);
  gtk_widget_set_halign(button, GTK_ALIGN_START);
  gtk_widget_show(button);
  return button;
}

}  // namespace gui
