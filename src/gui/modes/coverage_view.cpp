#include "gui/modes/coverage_view.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/gobject_ptr.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace modes_gui {
namespace {

constexpr int least_width = 78;
constexpr int least_column = 20;
constexpr int widest_column = 40;
constexpr double gap = 4;  ///< around a bar, in units

constexpr const char* tooltip =
    "Each bar is a receiver across the bands it carries, numbered as the receiver list; one the plan does not need "
    "waits under All bands. Drag a bar onto a band to put that receiver on it: it keeps the bands it has when they "
    "still fit, and a receiver that had the band is placed again. Drop it on All bands to place the receiver "
    "automatically.";

constexpr const char* bar_colours[] = {"#63B6EE", "#E8B339", "#5FC98B", "#C48BE6", "#F0906E", "#57C4C4"};
constexpr const char* ink = "#08131D";
constexpr const char* line_colour = "#22384D";
constexpr const char* text_colour = "#E9F1F9";

void set_colour(cairo_t* cairo, const char* name, double alpha = 1) {
  GdkRGBA colour;
  gdk_rgba_parse(&colour, name);
  cairo_set_source_rgba(cairo, colour.red, colour.green, colour.blue, alpha);
}

void round_box(cairo_t* cairo, double x, double y, double width, double height) {
  constexpr double quarter = 1.5707963267948966;
  const double radius = std::min({width / 2, height / 2, 5 * ui_scale::factor()});
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, x + width - radius, y + radius, radius, -quarter, 0);
  cairo_arc(cairo, x + width - radius, y + height - radius, radius, 0, quarter);
  cairo_arc(cairo, x + radius, y + height - radius, radius, quarter, 2 * quarter);
  cairo_arc(cairo, x + radius, y + radius, radius, 2 * quarter, 3 * quarter);
  cairo_close_path(cairo);
}

void draw_number(cairo_t* cairo, int number, double x, double y) {
  const std::string text = fmt::format("{}", number);
  cairo_select_font_face(cairo, "Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
  cairo_set_font_size(cairo, 11 * ui_scale::factor());
  cairo_text_extents_t size;
  cairo_text_extents(cairo, text.c_str(), &size);
  cairo_move_to(cairo, x - size.width / 2 - size.x_bearing, y - size.height / 2 - size.y_bearing);
  cairo_show_text(cairo, text.c_str());
}

void set_cursor(GtkWidget* widget, const char* name) {
  GdkWindow* window = gtk_widget_get_window(widget);
  if (!window) return;
  const auto cursor = base::GObjectPtr<GdkCursor>::adopt(
      name ? gdk_cursor_new_from_name(gtk_widget_get_display(widget), name) : nullptr);
  gdk_window_set_cursor(window, cursor.get());
}

CoverageView& of(gpointer self) {
  return *static_cast<CoverageView*>(self);
}

}  // namespace

CoverageView::CoverageView(Actions actions, std::function<GtkWidget*(std::size_t row)> rows)
    : actions_(std::move(actions)), row_widget_(std::move(rows)), area_(gtk_drawing_area_new()) {
  gtk_widget_set_can_focus(area_, TRUE);
  gtk_widget_set_hexpand(area_, TRUE);
  gtk_widget_add_events(area_, GDK_BUTTON_PRESS_MASK | GDK_BUTTON_RELEASE_MASK | GDK_POINTER_MOTION_MASK |
                                   GDK_LEAVE_NOTIFY_MASK | GDK_KEY_PRESS_MASK | GDK_FOCUS_CHANGE_MASK);
  kit::set_tooltip(area_, tooltip);
  g_object_set_data(G_OBJECT(area_), "mt-tip", const_cast<char*>(tooltip));
  ui_scale::add_size(area_, least_width, -1);
  const std::pair<const char*, GCallback> handlers[] = {{"draw", G_CALLBACK(on_draw)},
                                                        {"button-press-event", G_CALLBACK(on_press)},
                                                        {"button-release-event", G_CALLBACK(on_release)},
                                                        {"motion-notify-event", G_CALLBACK(on_motion)},
                                                        {"leave-notify-event", G_CALLBACK(on_leave)},
                                                        {"key-press-event", G_CALLBACK(on_key)},
                                                        {"focus-in-event", G_CALLBACK(on_focus)},
                                                        {"focus-out-event", G_CALLBACK(on_focus)}};
  for (const auto& [signal, handler] : handlers)
    connections_.emplace_back(area_, signal, handler, this);
  gtk_widget_show(area_);
  changed();
}

void CoverageView::show(const std::vector<ChartBar>& bars, bool fresh) {
  if (bars == bars_ && fresh == fresh_) return;
  if (bars.size() != bars_.size())
    ui_scale::add_size(area_, std::max(least_width, least_column * static_cast<int>(bars.size())), -1);
  bars_ = bars;
  fresh_ = fresh;
  const bool gone =
      std::none_of(bars_.begin(), bars_.end(), [&](const auto& bar) { return bar.serial == drag_.serial(); });
  if (gone || !fresh_) drag_.let_go();
  chosen_ = std::min(chosen_, bars_.empty() ? 0 : bars_.size() - 1);
  hovered_.reset();
  changed();
}

void CoverageView::changed() {
  const std::string keys =
      bars_.empty() ? ""
                    : " Left and Right choose a bar, Enter takes hold of it, Up and Down aim it, Enter drops it, "
                      "Escape lets go.";
  kit::set_accessible(area_, "Receiver coverage", chart_description(bars_, drag_) + keys);
  set_cursor(area_, drag_.holds() && by_pointer_ ? "grabbing" : hovered_ ? "grab" : nullptr);
  gtk_widget_queue_draw(area_);
}

// Geometry. The rows are wherever the table has put its own.

CoverageView::Place CoverageView::place_of(std::size_t row) const {
  GtkWidget* widget = row_widget_(row);
  int x = 0, y = 0;
  if (!widget || !gtk_widget_translate_coordinates(widget, area_, 0, 0, &x, &y)) return {};
  return {static_cast<double>(y), static_cast<double>(y + gtk_widget_get_allocated_height(widget))};
}

std::optional<std::size_t> CoverageView::row_at(double y) const {
  for (std::size_t row = 0; row < chart_rows; ++row) {
    const Place place = place_of(row);
    if (y >= place.top && y < place.bottom) return row;
  }
  return std::nullopt;
}

double CoverageView::column_width() const {
  const double shared =
      gtk_widget_get_allocated_width(area_) / static_cast<double>(std::max<std::size_t>(1, bars_.size()));
  return std::min<double>(shared, ui_scale::scaled(widest_column));
}

std::optional<std::size_t> CoverageView::bar_under(double x, double y) const {
  if (x < 0 || x >= gtk_widget_get_allocated_width(area_)) return std::nullopt;
  return bar_at(bars_, static_cast<int>(x / column_width()), row_at(y));
}

// Drawing.

void CoverageView::draw(cairo_t* cairo) const {
  const double width = gtk_widget_get_allocated_width(area_);
  set_colour(cairo, line_colour, 0.6);
  cairo_set_line_width(cairo, 1);
  for (std::size_t row = 0; row < chart_rows; ++row) {
    const double y = place_of(row).bottom - 0.5;
    cairo_move_to(cairo, 0, y);
    cairo_line_to(cairo, width, y);
  }
  cairo_stroke(cairo);
  if (drag_.holds()) draw_aim(cairo);
  for (std::size_t column = 0; column < bars_.size(); ++column)
    draw_bar(cairo, column);
}

void CoverageView::draw_bar(cairo_t* cairo, std::size_t column) const {
  const ChartBar& bar = bars_[column];
  const char* colour = bar_colours[column % std::size(bar_colours)];
  const double margin = gap * ui_scale::factor();
  const double x = static_cast<double>(column) * column_width() + margin;
  const double width = std::max(4.0, column_width() - 2 * margin);
  const double top = place_of(bar.first()).top + margin;
  const double height = place_of(bar.last()).bottom - margin - top;
  const double strength = fresh_ ? 1 : 0.35;
  round_box(cairo, x, top, width, height);
  set_colour(cairo, colour, (bar.carried.empty() ? 0.12 : 0.3) * strength);
  cairo_fill(cairo);
  for (const std::size_t row : bar.carried) {
    const Place place = place_of(row);
    round_box(cairo, x, place.top + margin, width, place.bottom - place.top - 2 * margin);
    set_colour(cairo, colour, strength);
    cairo_fill(cairo);
  }
  const bool marked = drag_.holds() ? drag_.serial() == bar.serial
                                    : hovered_ == column || (gtk_widget_has_visible_focus(area_) && chosen_ == column);
  if (marked || bar.carried.empty()) {
    round_box(cairo, x, top, width, height);
    set_colour(cairo, marked ? text_colour : colour, strength);
    cairo_set_line_width(cairo, marked ? 2 : 1);
    cairo_stroke(cairo);
  }
  set_colour(cairo, bar.carried.empty() ? text_colour : ink, strength);
  const Place head = place_of(bar.first());
  draw_number(cairo, bar.number, x + width / 2, (head.top + head.bottom) / 2);
}

void CoverageView::draw_aim(cairo_t* cairo) const {
  if (!drag_.aimed()) return;
  const Place place = place_of(*drag_.aimed());
  set_colour(cairo, bar_colours[0], 0.18);
  cairo_rectangle(cairo, 0, place.top, gtk_widget_get_allocated_width(area_), place.bottom - place.top);
  cairo_fill(cairo);
  const double margin = gap * ui_scale::factor();
  for (std::size_t column = 0; column < bars_.size(); ++column) {
    if (bars_[column].serial != drag_.serial()) continue;
    const double dashes[] = {4, 3};
    round_box(cairo, static_cast<double>(column) * column_width() + margin / 2, place.top + margin / 2,
              column_width() - margin, place.bottom - place.top - margin);
    set_colour(cairo, text_colour);
    cairo_set_line_width(cairo, 1.5);
    cairo_set_dash(cairo, dashes, 2, 0);
    cairo_stroke(cairo);
    cairo_set_dash(cairo, nullptr, 0, 0);
  }
}

gboolean CoverageView::on_draw(GtkWidget*, cairo_t* cairo, gpointer self) {
  of(self).draw(cairo);
  return FALSE;
}

// The hold.

void CoverageView::take(std::size_t bar, std::size_t row) {
  if (!fresh_) return;
  chosen_ = bar;
  drag_.take(bars_[bar].serial, row);
  actions_.taken();
  changed();
}

void CoverageView::drop() {
  const auto dropped = drag_.drop();
  changed();
  if (dropped) actions_.dropped(*dropped);
}

void CoverageView::let_go() {
  drag_.let_go();
  changed();
}

gboolean CoverageView::on_press(GtkWidget*, GdkEventButton* event, gpointer self) {
  CoverageView& view = of(self);
  if (event->type != GDK_BUTTON_PRESS || event->button != GDK_BUTTON_PRIMARY) return FALSE;
  const auto bar = view.bar_under(event->x, event->y);
  if (!bar) return FALSE;
  gtk_widget_grab_focus(view.area_);
  view.by_pointer_ = true;
  view.take(*bar, *view.row_at(event->y));
  return TRUE;
}

gboolean CoverageView::on_motion(GtkWidget*, GdkEventMotion* event, gpointer self) {
  CoverageView& view = of(self);
  const auto under = view.fresh_ ? view.bar_under(event->x, event->y) : std::nullopt;
  const bool same = under == view.hovered_;
  view.hovered_ = under;
  const auto aimed = view.drag_.aimed();
  if (view.by_pointer_) view.drag_.aim(view.row_at(event->y));
  if (!same || aimed != view.drag_.aimed()) view.changed();
  return FALSE;
}

gboolean CoverageView::on_release(GtkWidget*, GdkEventButton* event, gpointer self) {
  CoverageView& view = of(self);
  if (event->button != GDK_BUTTON_PRIMARY || !view.drag_.holds() || !view.by_pointer_) return FALSE;
  view.drag_.aim(view.row_at(event->y));
  view.by_pointer_ = false;
  view.drop();
  return TRUE;
}

gboolean CoverageView::on_leave(GtkWidget*, GdkEventCrossing*, gpointer self) {
  CoverageView& view = of(self);
  if (!view.hovered_) return FALSE;
  view.hovered_.reset();
  view.changed();
  return FALSE;
}

gboolean CoverageView::on_focus(GtkWidget*, GdkEventFocus* event, gpointer self) {
  CoverageView& view = of(self);
  if (!event->in && view.drag_.holds() && !view.by_pointer_)
    view.let_go();
  else
    gtk_widget_queue_draw(view.area_);
  return FALSE;
}

gboolean CoverageView::on_key(GtkWidget*, GdkEventKey* event, gpointer self) {
  return of(self).press_key(event->keyval) ? TRUE : FALSE;
}

bool CoverageView::press_key(guint key) {
  if (bars_.empty()) return false;
  const bool enters = key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_space;
  if (!drag_.holds()) {
    if (enters) {
      by_pointer_ = false;
      take(chosen_, bars_[chosen_].first());
      return true;
    }
    const int step = key == GDK_KEY_Left ? -1 : key == GDK_KEY_Right ? 1 : 0;
    if (step == 0) return false;
    chosen_ =
        static_cast<std::size_t>(std::clamp(static_cast<int>(chosen_) + step, 0, static_cast<int>(bars_.size()) - 1));
    changed();
    return true;
  }
  if (enters)
    drop();
  else if (key == GDK_KEY_Escape)
    let_go();
  else if (key == GDK_KEY_Up || key == GDK_KEY_Down)
    drag_.step(key == GDK_KEY_Up ? -1 : 1), changed();
  else
    return key == GDK_KEY_Left || key == GDK_KEY_Right;
  return true;
}

}  // namespace modes_gui
