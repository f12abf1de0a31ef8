// The meters of a card: level bar with its number, and the badge of RF overload.
#pragma once

#include <optional>
#include <string>

#include <gtk/gtk.h>

#include "base/signal_connection.h"
#include "gui/kit/level_bar.h"
#include "receiver/meter_view.h"

namespace gui {

/// Main thread only. Must not outlive its widget.
class MeterStrip {
 public:
  MeterStrip();

  [[nodiscard]] GtkWidget* widget() const { return row_; }
  void show(const receiver::MeterView& view);
  /// Whether an operator could see it now.
  [[nodiscard]] bool mapped() const { return gtk_widget_get_mapped(row_) != FALSE; }

 private:
  void show_level(const receiver::MeterView& view);
  void tell_listener(const receiver::MeterView& view);
  void show_badge(const receiver::RfBadge& badge);
  static gboolean tell_level(GtkWidget* bar, gint x, gint y, gboolean keyboard, GtkTooltip* tooltip, gpointer self);

  GtkWidget* row_;
  kit::LevelBar bar_;
  GtkWidget* readout_;
  GtkWidget* badge_;
  std::string level_tooltip_, badge_tooltip_;
  std::optional<long> told_;  ///< the step that an assistive tool knows of; −1 is none
  base::SignalConnection tooltip_connection_;
};

}  // namespace gui
