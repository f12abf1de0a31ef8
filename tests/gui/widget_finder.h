// Finds widgets the way an operator does: by what is written on them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtk/gtk.h>

namespace testing_gui {

/// Every widget below `root` (internal children included) for which `fits` holds, in drawing order.
std::vector<GtkWidget*> find_all(GtkWidget* root, const std::function<bool(GtkWidget*)>& fits);
/// The first button with this label or accessible name; null if there is none.
GtkWidget* find_button(GtkWidget* root, const std::string& text);
/// The control that this label names; null if there is none.
GtkWidget* find_labelled(GtkWidget* root, const std::string& label);
/// The texts of all visible labels below `root`.
std::vector<std::string> visible_texts(GtkWidget* root);
/// The top-level message dialog that is shown now, null if there is none.
GtkWidget* shown_dialog();
/// A message dialog's text.
std::string dialog_text(GtkWidget* dialog);
/// Turns the main loop until `done` holds; false after `seconds`.
bool turn_until(const std::function<bool()>& done, double seconds = 10);
/// Turns the main loop until it has nothing to do at once.
void settle();

}  // namespace testing_gui
