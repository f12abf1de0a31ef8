#include "gui/kit/drop_down.h"

#include "base/gobject_ptr.h"

namespace kit {
namespace {

std::vector<std::pair<std::string, std::string>> entries_of(GtkTreeModel* model) {
  std::vector<std::pair<std::string, std::string>> entries;
  GtkTreeIter row;
  for (gboolean more = gtk_tree_model_get_iter_first(model, &row); more; more = gtk_tree_model_iter_next(model, &row)) {
    gchar *text = nullptr, *id = nullptr;
    gtk_tree_model_get(model, &row, 0, &text, 1, &id, -1);
    const base::GStringPtr text_owner(text), id_owner(id);
    entries.emplace_back(id ? id : "", text ? text : "");
  }
  return entries;
}

}  // namespace

GtkWidget* drop_down(bool typed) {
  GtkWidget* widget = typed ? gtk_combo_box_text_new_with_entry() : gtk_combo_box_text_new();
  const auto stop =
      +[](GtkComboBox* combo, GtkScrollType, gpointer) { g_signal_stop_emission_by_name(combo, "move-active"); };
  g_signal_connect(widget, "move-active", G_CALLBACK(stop), nullptr);
  gtk_widget_show(widget);
  return widget;
}

void set_entries(GtkWidget* drop_down, const std::vector<std::pair<std::string, std::string>>& entries) {
  GtkComboBox* combo = GTK_COMBO_BOX(drop_down);
  if (entries_of(gtk_combo_box_get_model(combo)) == entries) return;
  const std::string kept = chosen(drop_down);
  const bool had = gtk_combo_box_get_active(combo) >= 0;
  gtk_combo_box_text_remove_all(GTK_COMBO_BOX_TEXT(combo));
  for (const auto& [id, text] : entries)
    gtk_combo_box_text_append(GTK_COMBO_BOX_TEXT(combo), id.c_str(), text.c_str());
  if (had) gtk_combo_box_set_active_id(combo, kept.c_str());
}

std::string chosen(GtkWidget* drop_down) {
  const char* id = gtk_combo_box_get_active_id(GTK_COMBO_BOX(drop_down));
  return id ? id : "";
}

}  // namespace kit
