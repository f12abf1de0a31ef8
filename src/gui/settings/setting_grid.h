// Lays the rows of a settings card out: labels in one column, controls in the other, help lines under the controls.
#pragma once

#include <string>

#include <gtk/gtk.h>

namespace gui {

/// Builds one grid from the top down; all its widgets are shown. Main thread only.
class SettingGrid {
 public:
  SettingGrid();

  /// The label names the control for assistive tools; answers the label.
  GtkWidget* add_beside(const std::string& label, GtkWidget* control);
  /// The control across the card under its label; `help`, unless empty, is a line of small text under it, which also
  /// describes it to assistive tools.
  GtkWidget* add_below(const std::string& label, GtkWidget* control, const std::string& help);
  void add_wide(GtkWidget* widget);
  [[nodiscard]] GtkWidget* widget() const { return grid_; }

 private:
  GtkWidget* grid_;
  int line_ = 0;
};

/// A label that wraps at whatever width it gets, and asks for little.
GtkWidget* wrapped_label(const std::string& text, std::initializer_list<const char*> classes = {});
/// A box to tick whose label wraps.
GtkWidget* wrapped_check(const std::string& text);
/// A spin button of the width of its numbers.
GtkWidget* number_button(double lowest, double highest, double step, int decimals);

}  // namespace gui
