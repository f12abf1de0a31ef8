#include "gui/live/dashboard.h"

#include <fmt/format.h>

#include "base/gobject_ptr.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace gui {
namespace {

constexpr const char* choices_group = "Activity";
constexpr const char* folded_key = "folded-receivers";
constexpr const char* minimum_data = "activity-minimum";

// A tab page: the gear at the top right, the dashboard below it while its tab is shown.
GtkWidget* family_page() {
  GtkWidget* page = kit::vertical_box(4);
  GtkWidget* gear = gtk_button_new_from_icon_name("emblem-system-symbolic", GTK_ICON_SIZE_BUTTON);
  kit::add_class(gear, "gear");
  kit::set_accessible(gear, "Display settings");
  gtk_widget_set_halign(gear, GTK_ALIGN_END);
  gtk_widget_set_sensitive(gear, FALSE);
  kit::set_tooltip(gear, "The display settings come with the rate graphs, which this version does not draw yet.");
  gtk_widget_show(gear);
  kit::add(page, gear);
  return page;
}

std::size_t index_of(results::Family family) {
  return static_cast<std::size_t>(family);
}

}  // namespace

Dashboard::Dashboard(results::ActivityModel& model, base::KeyFile& choices, base::Clock clock,
                     std::function<void(const std::string&)> report)
    : model_(model), choices_(choices), clock_(std::move(clock)), report_(std::move(report)) {
  for (auto& page : pages_)
    page = family_page();
  GtkWidget* content = kit::vertical_box(14);
  gtk_container_set_border_width(GTK_CONTAINER(content), 4);
  grid_ = gtk_grid_new();
  gtk_grid_set_column_spacing(GTK_GRID(grid_), results::CardLayout::spacing);
  gtk_grid_set_row_spacing(GTK_GRID(grid_), results::CardLayout::spacing);
  gtk_widget_set_valign(grid_, GTK_ALIGN_START);
  gtk_widget_show(grid_);
  kit::add(content, grid_);
  tree_ = kit::scrolled(content);
  kit::set_accessible(grid_, "Receivers");
  kit::add(pages_[0], tree_, true);

  allocated_ =
      base::SignalConnection(tree_, "size-allocate", G_CALLBACK((+[](GtkWidget*, GtkAllocation* area, gpointer data) {
                               auto* self = static_cast<Dashboard*>(data);
                               if (area->width == self->width_) return;
                               self->width_ = area->width;
                               // Sizes must not be asked for while they are being given out.
                               self->layout_timer_ = base::Timer::idle([self] { self->lay_out(); });
                             })),
                             this);
  for (const auto& label : choices_.get_list(choices_group, folded_key))
    folded_.insert(label);
}

Dashboard::~Dashboard() = default;

GtkWidget* Dashboard::page(results::Family family) const {
  return pages_[index_of(family)];
}

void Dashboard::enter(results::Family family) {
  GtkWidget* page = pages_[index_of(family)];
  if (gtk_widget_get_parent(tree_) != page) {
    const auto hold = base::GObjectPtr<GtkWidget>::share(tree_);
    gtk_container_remove(GTK_CONTAINER(gtk_widget_get_parent(tree_)), tree_);
    kit::add(page, tree_, true);
  }
  family_ = family;
  rebuild();
}

void Dashboard::rebuild() {
  auto cards = model_.cards(family_);
  if (!built_ || cards != shown_) rebuild_cards(std::move(cards));
  refresh();
}

void Dashboard::rebuild_cards(std::vector<results::ActivityCard> cards) {
  built_ = true;
  shown_ = std::move(cards);
  cards_.clear();
  kit::remove_children(grid_);
  for (const auto& card : shown_) {
    cards_.push_back(std::make_unique<ActivityCardView>(card, [this, label = card.label] { toggle_fold(label); }));
    cards_.back()->fold(folded_.contains(card.label));
    gtk_grid_attach(GTK_GRID(grid_), cards_.back()->widget(), 0, card.ordinal - 1, 1, 1);
  }
  minimums_ = measured_minimums();
  layout_.reset();
  lay_out();
}

void Dashboard::refresh() {
  model_.refresh(clock_());
  for (const auto& card : cards_)
    card->refresh(model_);
}

void Dashboard::toggle_fold(const std::string& label) {
  if (!folded_.erase(label)) folded_.insert(label);
  for (const auto& card : cards_)
    if (card->label() == label) card->fold(folded_.contains(label));
  save_folds();
}

void Dashboard::save_folds() {
  try {
    choices_.set_list(choices_group, folded_key, {folded_.begin(), folded_.end()});
  } catch (const std::exception& error) {
    report_(fmt::format("Cannot save activity display settings: {}", error.what()));
  }
}

std::vector<int> Dashboard::measured_minimums() {
  std::vector<int> widths;
  for (const auto& card : cards_) {
    int minimum = 0;
    gtk_widget_set_size_request(card->widget(), -1, -1);
    gtk_widget_get_preferred_width(card->widget(), &minimum, nullptr);
    g_object_set_data(G_OBJECT(card->widget()), minimum_data, GINT_TO_POINTER(minimum));
    widths.push_back(minimum);
  }
  return widths;
}

void Dashboard::measure_again() {
  minimums_ = measured_minimums();
  layout_.reset();
  lay_out();
}

void Dashboard::lay_out() {
  const auto layout = results::card_layout(width_, ui_scale::factor(), minimums_);
  if (!layout || layout == layout_) return;
  layout_ = layout;
  for (std::size_t i = 0; i < cards_.size(); ++i) {
    GtkWidget* card = cards_[i]->widget();
    const int index = static_cast<int>(i);
    gtk_widget_set_size_request(card, layout->width, -1);
    gtk_container_child_set(GTK_CONTAINER(grid_), card, "left-attach", layout->column(index), "top-attach",
                            layout->row(index), nullptr);
  }
}

}  // namespace gui
