#include "gui/config/meter_strip.h"

#include <cmath>
#include <utility>

#include "gui/kit/widgets.h"

namespace gui {
namespace {

using receiver::BadgeLook;

constexpr BadgeLook badge_looks[] = {BadgeLook::muted, BadgeLook::overload, BadgeLook::recovered};
// Wide enough for "−100.0 dBFS", so that the bar does not change its length with the number.
constexpr int readout_characters = 11;
constexpr int badge_characters = 4;

GtkWidget* fixed_label(int characters) {
  GtkWidget* label = kit::line_label("", {"muted"});
  gtk_label_set_width_chars(GTK_LABEL(label), characters);
  gtk_label_set_xalign(GTK_LABEL(label), 1);
  return label;
}

}  // namespace

MeterStrip::MeterStrip()
    : row_(kit::horizontal_box(8)),
      bar_("IQ level"),
      readout_(fixed_label(readout_characters)),
      badge_(fixed_label(badge_characters)) {
  kit::add(row_, bar_.widget(), true);
  kit::add(row_, readout_);
  kit::add(row_, badge_);
  gtk_label_set_text(GTK_LABEL(badge_), "RF");
  gtk_widget_set_has_tooltip(bar_.widget(), TRUE);
  tooltip_connection_ =
      base::SignalConnection(bar_.widget(), "query-tooltip", G_CALLBACK(&MeterStrip::tell_level), this);
}

// Asked for when it is needed: a tooltip that is set anew with every reading would never open, nor let any other.
gboolean MeterStrip::tell_level(GtkWidget*, gint, gint, gboolean, GtkTooltip* tooltip, gpointer self) {
  const std::string& text = static_cast<MeterStrip*>(self)->level_tooltip_;
  gtk_tooltip_set_text(tooltip, text.c_str());
  return !text.empty();
}

void MeterStrip::show(const receiver::MeterView& view) {
  show_level(view);
  show_badge(view.badge);
}

void MeterStrip::show_level(const receiver::MeterView& view) {
  const receiver::LevelBar& level = view.level;
  level_tooltip_ = level.tooltip;
  std::optional<kit::LevelBar::Level> drawn;
  if (level.marker) drawn = {level.fill, level.marker, view.badge.look == BadgeLook::overload};
  bar_.show(drawn);
  if (view.rf_text != gtk_label_get_text(GTK_LABEL(readout_)))
    gtk_label_set_text(GTK_LABEL(readout_), view.rf_text.c_str());
  tell_listener(view);
}

// Whole steps only: nobody listens to a number that changes twenty times a second.
void MeterStrip::tell_listener(const receiver::MeterView& view) {
  constexpr double steps = 100;  // of the bar, a decibel each
  const long told = view.level.marker ? std::lround(view.level.fill * steps) : -1;
  if (std::exchange(told_, told) != told) kit::set_accessible(bar_.widget(), {}, view.rf_text);
}

void MeterStrip::show_badge(const receiver::RfBadge& badge) {
  kit::set_text(badge_, badge.label);
  for (const receiver::BadgeLook look : badge_looks)
    kit::set_class(badge_, receiver::badge_class(look), badge.look == look);
  if (badge.tooltip == badge_tooltip_) return;
  badge_tooltip_ = badge.tooltip;
  kit::set_tooltip(badge_, badge.tooltip);
  kit::set_accessible(badge_, {}, badge.tooltip);
}

}  // namespace gui
