#include "gui/kit/widgets.h"

#include "base/gobject_ptr.h"
#include "base/signal_connection.h"

namespace kit {
namespace {

GtkWidget* styled(GtkWidget* widget, Classes classes) {
  for (const char* name : classes)
    add_class(widget, name);
  gtk_widget_show(widget);
  return widget;
}

}  // namespace

GtkWidget* line_label(const std::string& text, Classes classes) {
  GtkWidget* widget = gtk_label_new(text.c_str());
  gtk_label_set_xalign(GTK_LABEL(widget), 0);
  return styled(widget, classes);
}

GtkWidget* label(const std::string& text, Classes classes) {
  GtkWidget* widget = line_label(text, classes);
  gtk_label_set_line_wrap(GTK_LABEL(widget), TRUE);
  return widget;
}

GtkWidget* vertical_box(int spacing, Classes classes) {
  return styled(gtk_box_new(GTK_ORIENTATION_VERTICAL, spacing), classes);
}

GtkWidget* horizontal_box(int spacing, Classes classes) {
  return styled(gtk_box_new(GTK_ORIENTATION_HORIZONTAL, spacing), classes);
}

GtkWidget* card(const std::string& heading, int spacing) {
  GtkWidget* box = vertical_box(spacing, {"card"});
  add(box, line_label(heading, {"section"}));
  return box;
}

GtkWidget* button(const std::string& text, std::function<void()> clicked, Classes classes) {
  GtkWidget* widget = gtk_button_new_with_label(text.c_str());
  base::connect_forever(widget, "clicked", std::move(clicked));
  return styled(widget, classes);
}

GtkWidget* check_button(const std::string& text) {
  return styled(gtk_check_button_new_with_label(text.c_str()), {});
}

GtkWidget* scrolled(GtkWidget* child, GtkPolicyType horizontal) {
  GtkWidget* area = gtk_scrolled_window_new(nullptr, nullptr);
  gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(area), horizontal, GTK_POLICY_AUTOMATIC);
  // A bar that shows only under the pointer lets what is out of sight be taken for missing.
  gtk_scrolled_window_set_overlay_scrolling(GTK_SCROLLED_WINDOW(area), FALSE);
  gtk_container_add(GTK_CONTAINER(area), child);
  gtk_widget_set_vexpand(area, TRUE);
  gtk_widget_set_hexpand(area, TRUE);
  return styled(area, {});
}

GtkWidget* scrolled_page(GtkWidget*& content) {
  content = vertical_box(14);
  gtk_container_set_border_width(GTK_CONTAINER(content), 4);
  return scrolled(content);
}

void add(GtkWidget* box, GtkWidget* child, bool expand) {
  gtk_box_pack_start(GTK_BOX(box), child, expand, expand, 0);
}

void remove_children(GtkWidget* container) {
  gtk_container_foreach(
      GTK_CONTAINER(container), [](GtkWidget* child, gpointer) { gtk_widget_destroy(child); }, nullptr);
}

void add_class(GtkWidget* widget, const char* name) {
  gtk_style_context_add_class(gtk_widget_get_style_context(widget), name);
}

void set_class(GtkWidget* widget, const char* name, bool present) {
  GtkStyleContext* style = gtk_widget_get_style_context(widget);
  if (present == (gtk_style_context_has_class(style, name) != FALSE)) return;
  if (present)
    gtk_style_context_add_class(style, name);
  else
    gtk_style_context_remove_class(style, name);
}

void set_tooltip(GtkWidget* widget, const std::string& text) {
  const base::GStringPtr now(gtk_widget_get_tooltip_text(widget));
  if (text != (now ? now.get() : "")) gtk_widget_set_tooltip_text(widget, text.empty() ? nullptr : text.c_str());
}

void set_text(GtkWidget* label, const std::string& text) {
  if (text != gtk_label_get_text(GTK_LABEL(label))) gtk_label_set_text(GTK_LABEL(label), text.c_str());
}

void set_button_text(GtkWidget* button, const std::string& text) {
  const char* now = gtk_button_get_label(GTK_BUTTON(button));
  if (!now || text != now) gtk_button_set_label(GTK_BUTTON(button), text.c_str());
}

void set_sensitive(GtkWidget* widget, bool sensitive) {
  if (sensitive != (gtk_widget_get_sensitive(widget) != FALSE)) gtk_widget_set_sensitive(widget, sensitive);
}

void set_visible(GtkWidget* widget, bool visible) {
  if (visible != (gtk_widget_get_visible(widget) != FALSE)) gtk_widget_set_visible(widget, visible);
}

void set_accessible(GtkWidget* widget, std::string_view name, std::string_view description) {
  AtkObject* object = gtk_widget_get_accessible(widget);
  if (!name.empty()) atk_object_set_name(object, std::string(name).c_str());
  if (!description.empty()) atk_object_set_description(object, std::string(description).c_str());
}

void name_by_label(GtkWidget* label, GtkWidget* control) {
  gtk_label_set_mnemonic_widget(GTK_LABEL(label), control);
}

}  // namespace kit
