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
  GtkWidget* add_below(const std::string& label, GtkWidget* control);
  void add_wide(GtkWidget* widget);
  /// A line of small text about the control above it, which it also describes to assistive tools.
  void add_help(const std::string& text, GtkWidget* control);
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
