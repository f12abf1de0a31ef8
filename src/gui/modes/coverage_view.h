// The chart of receivers beside the table of bands, on the screen: draws the bars, and turns pointer and keys into
// holds and drops.
#pragma once

#include <functional>
#include <vector>

#include <gtk/gtk.h>

#include "base/signal_connection.h"
#include "gui/modes/coverage_chart.h"

namespace modes_gui {

/// Main thread only. Its widget may outlive it.
class CoverageView {
 public:
  struct Actions {
    std::function<void(const Drag::Drop&)> dropped;
    std::function<void()> taken;  ///< a new hold began
  };

  /// `rows` are the widgets of the table that the rows of the chart stand beside, chart_rows of them.
  CoverageView(Actions actions, std::function<GtkWidget*(std::size_t row)> rows);
  CoverageView(const CoverageView&) = delete;
  CoverageView& operator=(const CoverageView&) = delete;

  [[nodiscard]] GtkWidget* widget() const { return area_; }
  /// `fresh`: the bars are those of the present selection; else they are shown faintly and cannot be taken.
  void show(const std::vector<ChartBar>& bars, bool fresh);

 private:
  struct Place {
    double top{}, bottom{};
  };

  static gboolean on_draw(GtkWidget*, cairo_t* cairo, gpointer self);
  static gboolean on_press(GtkWidget*, GdkEventButton* event, gpointer self);
  static gboolean on_release(GtkWidget*, GdkEventButton* event, gpointer self);
  static gboolean on_motion(GtkWidget*, GdkEventMotion* event, gpointer self);
  static gboolean on_leave(GtkWidget*, GdkEventCrossing* event, gpointer self);
  static gboolean on_key(GtkWidget*, GdkEventKey* event, gpointer self);
  static gboolean on_focus(GtkWidget*, GdkEventFocus* event, gpointer self);

  [[nodiscard]] Place place_of(std::size_t row) const;
  [[nodiscard]] std::optional<std::size_t> row_at(double y) const;
  [[nodiscard]] std::optional<std::size_t> bar_under(double x, double y) const;
  [[nodiscard]] double column_width() const;
  void draw(cairo_t* cairo) const;
  void draw_bar(cairo_t* cairo, std::size_t column) const;
  void draw_aim(cairo_t* cairo) const;
  bool press_key(guint key);
  void take(std::size_t bar, std::size_t row);
  void drop();
  void let_go();
  void changed();

  const Actions actions_;
  const std::function<GtkWidget*(std::size_t)> row_widget_;
  GtkWidget* area_;
  std::vector<ChartBar> bars_;
  Drag drag_;
  bool by_pointer_ = false;  ///< how the hold began
  bool fresh_ = true;
  std::size_t chosen_ = 0;              ///< the bar that the keyboard is at
  std::optional<std::size_t> hovered_;  ///< the bar under the pointer
  std::vector<base::SignalConnection> connections_;
};

}  // namespace modes_gui
