#include "gui/config/slider_widget.h"

#include <cmath>

#include "base/numbers.h"
#include "base/signal_connection.h"
#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"

namespace gui {
namespace {

constexpr int readout_characters = 8;

GtkWidget* new_scale(const SliderLimits& limits) {
  GtkWidget* scale = gtk_scale_new_with_range(GTK_ORIENTATION_HORIZONTAL, limits.lowest, limits.highest, limits.step);
  gtk_scale_set_draw_value(GTK_SCALE(scale), FALSE);
  // Where zero lies inside the range, a bar from the left end would say nothing.
  gtk_scale_set_has_origin(GTK_SCALE(scale), limits.lowest >= 0 || limits.highest <= 0);
  gtk_widget_set_hexpand(scale, TRUE);
  gtk_widget_show(scale);
  return scale;
}

}  // namespace

SliderWidget::SliderWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed)
    : CardWidget(control, guard, std::move(changed)), scale_(new_scale(control.slider)) {
  GtkWidget* box = kit::horizontal_box(8);
  kit::add(box, scale_, true);
  const SliderLimits& limits = control.slider;
  if (limits.typed) {
    number_ = number_button(limits.lowest_value, limits.highest_value, limits.step, limits.decimals);
    kit::set_accessible(number_, control.caption);
    kit::add(box, number_);
    base::connect_forever(number_, "value-changed", [this] { typed(); });
  } else {
    readout_ = kit::line_label("", {"muted"});
    gtk_label_set_width_chars(GTK_LABEL(readout_), readout_characters);
    gtk_label_set_xalign(GTK_LABEL(readout_), 1);
    kit::add(box, readout_);
  }
  adopt(box, scale_, number_);
  base::connect_forever(scale_, "value-changed", [this] { slid(); });
}

// The steps are those of the hardware: a slider between two of them goes to the nearer.
void SliderWidget::slid() {
  if (guard_.quiet()) return;
  const SliderLimits& limits = control_.slider;
  const double position = std::round(gtk_range_get_value(GTK_RANGE(scale_)) / limits.step) * limits.step;
  const std::string now = plain_number(slider_value(limits, position));
  {
    const ChangeGuard::Quiet quiet(guard_);
    gtk_range_set_value(GTK_RANGE(scale_), position);
    if (number_) gtk_spin_button_set_value(GTK_SPIN_BUTTON(number_), slider_value(limits, position));
  }
  following_ = false;
  reading_.reset();
  const bool moved = now != value_;
  value_ = now;
  show_text();
  if (moved) tell();
}

void SliderWidget::typed() {
  if (guard_.quiet()) return;
  const double value = gtk_spin_button_get_value(GTK_SPIN_BUTTON(number_));
  // Leaving the box reads it again, with the decimals that it shows: that is no edit.
  const auto now = base::parse_scaled(value_);
  if (now && std::abs(*now - value) <= 0.5 * std::pow(10, -control_.slider.decimals)) return;
  value_ = plain_number(value);
  {
    const ChangeGuard::Quiet quiet(guard_);
    gtk_range_set_value(GTK_RANGE(scale_), slider_position(control_.slider, value));
  }
  tell();
}

void SliderWidget::place(double value) {
  gtk_range_set_value(GTK_RANGE(scale_), slider_position(control_.slider, value));
  if (number_) gtk_spin_button_set_value(GTK_SPIN_BUTTON(number_), value);
}

// A text that is no number is the profile's own and stays its value until the operator moves the slider.
void SliderWidget::put_value(const std::string& value) {
  value_ = value;
  if (following_) return;
  place(base::parse_scaled(value).value_or(*base::parse_scaled(control_.fallback)));
  show_text();
}

void SliderWidget::show_text() {
  if (!readout_) return;
  const double position = gtk_range_get_value(GTK_RANGE(scale_));
  kit::set_text(readout_, reading_ ? *reading_ : slider_text(control_.slider, position));
}

void SliderWidget::follow(std::optional<double> value, const std::string& reading) {
  const ChangeGuard::Quiet quiet(guard_);
  following_ = true;
  reading_ = reading;
  if (value) place(*value);
  show_text();
}

void SliderWidget::show_own(const std::optional<std::string>& reading) {
  reading_ = reading;
  if (std::exchange(following_, false)) return put(value_);
  show_text();
}

}  // namespace gui
