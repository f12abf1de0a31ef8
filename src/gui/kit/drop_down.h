// Drop-downs that change only through their opened list, so that no key pressed in passing changes a setting.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <gtk/gtk.h>

namespace kit {

/// A new, shown, floating GtkComboBoxText, with a box to type into if wanted. While it is closed the arrow keys leave
/// it alone; the wheel is kept off by install_scroll_filter(). Main thread only.
GtkWidget* drop_down(bool typed = false);
/// Replaces the entries, pairs of identifier and text, unless they stand there already. The chosen identifier stays
/// chosen if it is still among them.
void set_entries(GtkWidget* drop_down, const std::vector<std::pair<std::string, std::string>>& entries);
/// The identifier of the chosen entry; empty without one.
std::string chosen(GtkWidget* drop_down);

}  // namespace kit
