#include "gui/widget_finder.h"

#include "base/gobject_ptr.h"

namespace testing_gui {
namespace {

struct Search {
  const std::function<bool(GtkWidget*)>& fits;
  std::vector<GtkWidget*> found;
};

void visit(GtkWidget* widget, gpointer data) {
  auto* search = static_cast<Search*>(data);
  if (search->fits(widget)) search->found.push_back(widget);
  if (GTK_IS_CONTAINER(widget)) gtk_container_forall(GTK_CONTAINER(widget), visit, data);
}

}  // namespace

std::vector<GtkWidget*> find_all(GtkWidget* root, const std::function<bool(GtkWidget*)>& fits) {
  Search search{fits, {}};
  visit(root, &search);
  return search.found;
}

GtkWidget* find_button(GtkWidget* root, const std::string& text) {
  const auto found = find_all(root, [&text](GtkWidget* widget) {
    if (!GTK_IS_BUTTON(widget)) return false;
    const char* label = gtk_button_get_label(GTK_BUTTON(widget));
    const char* name = atk_object_get_name(gtk_widget_get_accessible(widget));
    return (label && text == label) || (name && text == name);
  });
  return found.empty() ? nullptr : found.front();
}

GtkWidget* find_labelled(GtkWidget* root, const std::string& label) {
  for (GtkWidget* widget : find_all(root, [](GtkWidget* w) { return GTK_IS_LABEL(w); }))
    if (gtk_label_get_text(GTK_LABEL(widget)) == label)
      if (GtkWidget* control = gtk_label_get_mnemonic_widget(GTK_LABEL(widget))) return control;
  return nullptr;
}

std::vector<std::string> visible_texts(GtkWidget* root) {
  std::vector<std::string> texts;
  for (GtkWidget* widget : find_all(root, [](GtkWidget* w) { return GTK_IS_LABEL(w) && gtk_widget_is_visible(w); }))
    texts.emplace_back(gtk_label_get_text(GTK_LABEL(widget)));
  return texts;
}

GtkWidget* shown_dialog() {
  GList* list = gtk_window_list_toplevels();
  GtkWidget* found = nullptr;
  for (GList* item = list; item; item = item->next)
    if (GTK_IS_DIALOG(item->data) && gtk_widget_get_visible(GTK_WIDGET(item->data))) found = GTK_WIDGET(item->data);
  g_list_free(list);
  return found;
}

std::string dialog_text(GtkWidget* dialog) {
  gchar* text = nullptr;
  g_object_get(dialog, "text", &text, nullptr);
  const base::GStringPtr owned(text);
  return text ? text : "";
}

bool turn_until(const std::function<bool()>& done, double seconds) {
  const gint64 end = g_get_monotonic_time() + static_cast<gint64>(seconds * G_USEC_PER_SEC);
  while (!done()) {
    if (g_get_monotonic_time() > end) return false;
    if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(2000);
  }
  return true;
}

void settle() {
  turn_until([] { return false; }, 0.15);
}

}  // namespace testing_gui
