#include "gui/settings/settings_page.h"

#include <fmt/format.h>

#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace gui {
namespace {

constexpr int column_width = 500;
constexpr int spacing = 14;
constexpr int most_columns = 3;

GtkWidget* boot_card() {
  constexpr const char* not_yet = "This version does not set up starting at boot yet.";
  GtkWidget* card = kit::card("START AT BOOT");
  GtkWidget* buttons = kit::horizontal_box(8);
  for (const char* text : {"Enable", "Disable"}) {
    GtkWidget* button = kit::button(text, [] {});
    kit::set_sensitive(button, false);
    kit::set_tooltip(button, not_yet);
    kit::add(buttons, button);
  }
  kit::add(card, buttons);
  kit::add(card,
           wrapped_label(std::string(not_yet) + " A service that another version set up goes on as it is.", {"small"}));
  return card;
}

GtkWidget* about_card() {
  GtkWidget* card = kit::card("ABOUT");
  kit::add(card, kit::line_label("Tarnwick " TARNWICK_VERSION));
  GtkWidget* link = gtk_link_button_new_with_label("https://ostrand.example/contact", "Contact Ostrand");
  gtk_widget_set_halign(link, GTK_ALIGN_START);
  gtk_widget_show(link);
  kit::add(card, link);
  kit::add(card, wrapped_label(fmt::format("Uses GTK {}.{}.{} and GLib {}.{}.{}, under the GNU LGPL.",
                                           gtk_get_major_version(), gtk_get_minor_version(), gtk_get_micro_version(),
                                           glib_major_version, glib_minor_version, glib_micro_version),
                               {"small"}));
  return card;
}

GtkWidget* column(const std::vector<GtkWidget*>& cards) {
  GtkWidget* box = kit::vertical_box(spacing);
  ui_scale::add_size(box, column_width, -1);
  for (GtkWidget* card : cards)
    kit::add(box, card);
  return box;
}

GtkWidget* columns(const std::vector<GtkWidget*>& boxes) {
  GtkWidget* flow = gtk_flow_box_new();
  GtkFlowBox* box = GTK_FLOW_BOX(flow);
  gtk_flow_box_set_selection_mode(box, GTK_SELECTION_NONE);
  gtk_flow_box_set_max_children_per_line(box, most_columns);
  gtk_flow_box_set_column_spacing(box, spacing);
  gtk_flow_box_set_row_spacing(box, spacing);
  gtk_widget_set_valign(flow, GTK_ALIGN_START);
  for (GtkWidget* one : boxes) {
    gtk_container_add(GTK_CONTAINER(flow), one);
    // The keyboard goes from control to control; the columns are no stops.
    gtk_widget_set_can_focus(gtk_widget_get_parent(one), FALSE);
  }
  gtk_widget_show_all(flow);
  return flow;
}

}  // namespace

SettingsPage::SettingsPage(SettingsSurroundings around)
    : rows_(around.state_directory, std::move(around.edited)),
      kept_(around.choices, Autostart(around.autostart_directory, around.executable), std::move(around.show_error)) {
  GtkWidget* content = nullptr;
  page_ = kit::scrolled_page(content);
  const auto& cards = rows_.cards();
  kit::add(
      content,
      columns({column({cards[0], cards[1]}), column({cards[2]}),
               column({boot_card(), kept_.phone_card(), kept_.opening_card(), kept_.display_card(), about_card()})}));
}

}  // namespace gui
