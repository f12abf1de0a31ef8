#include "gui/kit/level_bar.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace kit {
namespace {

constexpr int bar_height = 10;
constexpr double marker_width = 3;

void use_colour(GtkWidget* widget, cairo_t* cairo, const char* name) {
  GdkRGBA colour{0.5, 0.5, 0.5, 1};
  gtk_style_context_lookup_color(gtk_widget_get_style_context(widget), name, &colour);
  gdk_cairo_set_source_rgba(cairo, &colour);
}

void rounded(cairo_t* cairo, double width, double height) {
  constexpr double quarter = std::numbers::pi / 2;
  const double radius = std::min(width, height) / 2;
  cairo_new_path(cairo);
  cairo_arc(cairo, width - radius, radius, radius, -quarter, quarter);
  cairo_arc(cairo, radius, height - radius, radius, quarter, 3 * quarter);
  cairo_close_path(cairo);
}

/// A part of a length in whole pixels.
double along(double part, double length) {
  return std::round(std::clamp(part, 0.0, 1.0) * length);
}

}  // namespace

LevelBar::LevelBar(const std::string& accessible_name) : area_(gtk_drawing_area_new()) {
  ui_scale::add_size(area_, -1, bar_height);
  gtk_widget_set_hexpand(area_, TRUE);
  gtk_widget_set_valign(area_, GTK_ALIGN_CENTER);
  set_accessible(area_, accessible_name);
  draw_connection_ = base::SignalConnection(area_, "draw", G_CALLBACK(&LevelBar::draw), this);
  gtk_widget_show(area_);
}

bool LevelBar::looks_like(const std::optional<Level>& level) const {
  if (!drawn_ || !level) return drawn_.has_value() == level.has_value();
  const double length = gtk_widget_get_allocated_width(area_);
  const auto same = [&](double left, double right) { return along(left, length) == along(right, length); };
  return same(drawn_->fill, level->fill) && drawn_->marker.has_value() == level->marker.has_value() &&
         same(drawn_->marker.value_or(0), level->marker.value_or(0)) && drawn_->alarm == level->alarm;
}

void LevelBar::show(const std::optional<Level>& level) {
  level_ = level;
  if (looks_like(level)) return;
  drawn_ = level;
  gtk_widget_queue_draw(area_);
}

gboolean LevelBar::draw(GtkWidget* area, cairo_t* cairo, gpointer self) {
  const std::optional<Level>& level = static_cast<LevelBar*>(self)->level_;
  const double width = gtk_widget_get_allocated_width(area), height = gtk_widget_get_allocated_height(area);
  rounded(cairo, width, height);
  cairo_clip(cairo);
  use_colour(area, cairo, "line");
  cairo_paint(cairo);
  if (!level) return FALSE;
  use_colour(area, cairo, level->alarm ? "overload" : "accent");
  cairo_rectangle(cairo, 0, 0, along(level->fill, width), height);
  cairo_fill(cairo);
  if (!level->marker) return FALSE;
  const double thick = marker_width * ui_scale::factor();
  use_colour(area, cairo, level->alarm ? "overload" : "text");
  cairo_rectangle(cairo, std::max(along(*level->marker, width) - thick, 0.0), 0, thick, height);
  cairo_fill(cairo);
  return FALSE;
}

}  // namespace kit
