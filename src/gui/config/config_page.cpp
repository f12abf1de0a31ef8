#include "gui/config/config_page.h"

#include <algorithm>

#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"

namespace gui {
namespace {

constexpr int card_width = 500;
constexpr int spacing = 14;
constexpr int most_columns = 3;

GtkWidget* flow_box() {
  GtkWidget* flow = gtk_flow_box_new();
  GtkFlowBox* box = GTK_FLOW_BOX(flow);
  gtk_flow_box_set_selection_mode(box, GTK_SELECTION_NONE);
  gtk_flow_box_set_max_children_per_line(box, most_columns);
  gtk_flow_box_set_column_spacing(box, spacing);
  gtk_flow_box_set_row_spacing(box, spacing);
  gtk_widget_set_valign(flow, GTK_ALIGN_START);
  gtk_widget_show(flow);
  return flow;
}

void add_card(GtkWidget* flow, GtkWidget* card) {
  ui_scale::add_size(card, card_width, -1);
  gtk_widget_set_valign(card, GTK_ALIGN_START);
  gtk_container_add(GTK_CONTAINER(flow), card);
  // The keyboard goes from control to control; the cards are no stops.
  GtkWidget* child = gtk_widget_get_parent(card);
  gtk_widget_set_can_focus(child, FALSE);
  gtk_widget_show(child);
}

GtkWidget* folded_card(const char* title, GtkWidget* content, const char* help) {
  GtkWidget* expander = gtk_expander_new(title);
  GtkWidget* box = kit::vertical_box(10, {"card"});
  kit::add(box, wrapped_label(help, {"small"}));
  kit::add(box, content);
  gtk_container_add(GTK_CONTAINER(expander), box);
  ui_scale::add_size(box, card_width, -1);
  gtk_widget_set_halign(box, GTK_ALIGN_START);
  gtk_widget_show(expander);
  return expander;
}

}  // namespace

ConfigPage::ConfigPage(ConfigActions actions, MeterSource meters)
    : actions_(std::move(actions)),
      meters_(std::move(meters)),
      header_(kit::horizontal_box(10)),
      rows_(actions_, guard_),
      cards_box_(flow_box()),
      default_controls_(
          launcher::Family::sdrplay, guard_,
          [this](const CardControl& control, const std::string& value) { actions_.edit_common(control.key, value); }) {
  GtkWidget* content = nullptr;
  page_ = kit::scrolled_page(content);
  GtkWidget* receivers = kit::card("RECEIVERS");
  kit::add(receivers, header_);
  kit::add(receivers, rows_.widget());
  kit::add(content, receivers);
  kit::add(content, cards_box_);
  defaults_ = base::GObjectPtr<GtkWidget>::share(
      folded_card("Defaults for new receivers", default_controls_.widget(),
                  "What a receiver starts with when it is listed for the first time, and what the receivers above use "
                  "where they have no setting of their own."));
  kit::add(content, defaults_.get());
}

ConfigPage::~ConfigPage() {
  const ChangeGuard::Quiet quiet(guard_);
  gtk_widget_destroy(defaults_.get());
}

void ConfigPage::show(const StationView& view) {
  const ChangeGuard::Quiet quiet(guard_);
  Receivers receivers;
  for (const options::ReceiverProfile& receiver : view.station.receivers) {
    const launcher::Family family = family_of(effective_settings(view.station.common, receiver.settings));
    receivers.emplace_back(receiver.serial, receiver.model + " " + std::string(launcher::family_text(family)));
  }
  if (receivers != shown_) rebuild(view.station);
  shown_ = std::move(receivers);
  rows_.show(view);
  for (const auto& [serial, card] : cards_)
    card->show(view);
  show_defaults(view);
}

void ConfigPage::rebuild(const options::Station& station) {
  cards_.clear();
  kit::remove_children(cards_box_);
  rows_.rebuild(station.receivers);
  for (const options::ReceiverProfile& receiver : station.receivers) {
    const launcher::Family family = family_of(effective_settings(station.common, receiver.settings));
    auto card = std::make_unique<ReceiverCard>(receiver, family, actions_, meters_, guard_);
    add_card(cards_box_, card->widget());
    cards_.emplace(receiver.serial, std::move(card));
  }
}

void ConfigPage::show_defaults(const StationView& view) {
  CardFacts facts;
  facts.settings = effective_settings(view.station.common, {});
  facts.running = !view.running.empty();
  default_controls_.show(facts);
}

void ConfigPage::show_applied(const std::string& serial, const options::Profile& settings) {
  if (const auto card = cards_.find(serial); card != cards_.end()) card->second->show_applied(settings);
}

void ConfigPage::show_meters(const std::string& serial) {
  if (const auto card = cards_.find(serial); card != cards_.end()) card->second->show_meters();
}

bool ConfigPage::meters_shown() const {
  return std::any_of(cards_.begin(), cards_.end(), [](const auto& card) { return card.second->meters_mapped(); });
}

}  // namespace gui
