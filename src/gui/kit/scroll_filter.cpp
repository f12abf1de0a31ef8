#include "gui/kit/scroll_filter.h"

#include <initializer_list>

#include <gtk/gtk.h>

namespace kit {
namespace {

GtkWidget* value_control_at(GtkWidget* widget) {
  for (const GType type : {GTK_TYPE_COMBO_BOX, GTK_TYPE_SPIN_BUTTON, GTK_TYPE_SCALE})
    if (GtkWidget* control = gtk_widget_get_ancestor(widget, type)) return control;
  return nullptr;
}

// While a dialog or a menu holds the input, the toolkit decides who gets the event.
bool input_is_held_elsewhere(GtkWidget* widget) {
  GtkWidget* toplevel = gtk_widget_get_toplevel(widget);
  GtkWindowGroup* group = gtk_window_get_group(GTK_IS_WINDOW(toplevel) ? GTK_WINDOW(toplevel) : nullptr);
  GtkWidget* holder = gtk_window_group_get_current_grab(group);
  return holder && widget != holder && !gtk_widget_is_ancestor(widget, holder);
}

void handle(GdkEvent* event, gpointer) {
  GtkWidget* under = event->type == GDK_SCROLL ? gtk_get_event_widget(event) : nullptr;
  GtkWidget* control = under && !input_is_held_elsewhere(under) ? value_control_at(under) : nullptr;
  if (!control) {
    gtk_main_do_event(event);
    return;
  }
  if (GtkWidget* area = gtk_widget_get_ancestor(control, GTK_TYPE_SCROLLED_WINDOW)) gtk_propagate_event(area, event);
}

}  // namespace

void install_scroll_filter() {
  gdk_event_handler_set(&handle, nullptr, nullptr);
}

}  // namespace kit
