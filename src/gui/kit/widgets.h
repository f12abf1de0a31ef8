// Small builders for the widgets that every page is made of. Each returns a new, shown, floating widget; the container
// it is put into owns it. Main thread only.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include <gtk/gtk.h>

namespace kit {

using Classes = std::initializer_list<const char*>;

/// A left-aligned label that wraps at words.
GtkWidget* label(const std::string& text, Classes classes = {});
/// A left-aligned label of one line.
GtkWidget* line_label(const std::string& text, Classes classes = {});
GtkWidget* vertical_box(int spacing, Classes classes = {});
GtkWidget* horizontal_box(int spacing, Classes classes = {});
/// A vertical box in style class "card" that begins with a heading in class "section".
GtkWidget* card(const std::string& heading, int spacing = 10);
GtkWidget* button(const std::string& text, std::function<void()> clicked, Classes classes = {});
GtkWidget* check_button(const std::string& text);
/// A scrolled area that grows with its page; its child may be wider than it without forcing the window wider.
GtkWidget* scrolled(GtkWidget* child, GtkPolicyType horizontal = GTK_POLICY_AUTOMATIC);
/// A page: a scrolled vertical box of spacing 14 and border 4. `content` receives the box.
GtkWidget* scrolled_page(GtkWidget*& content);

/// Appends to a box at its natural size, or sharing the spare room.
void add(GtkWidget* box, GtkWidget* child, bool expand = false);
void remove_children(GtkWidget* container);

void add_class(GtkWidget* widget, const char* name);
void set_class(GtkWidget* widget, const char* name, bool present);

// The setters below act only on a change: a tooltip set again restarts the tooltip delay of the whole display, and a
// label set again is laid out again.
void set_tooltip(GtkWidget* widget, const std::string& text);
void set_text(GtkWidget* label, const std::string& text);
void set_button_text(GtkWidget* button, const std::string& text);
void set_sensitive(GtkWidget* widget, bool sensitive);
void set_visible(GtkWidget* widget, bool visible);
/// What assistive tools read out. An empty text leaves that one as it is.
void set_accessible(GtkWidget* widget, std::string_view name, std::string_view description = {});
/// Makes `label` the name of `control` for assistive tools and its mnemonic target.
void name_by_label(GtkWidget* label, GtkWidget* control);

}  // namespace kit
