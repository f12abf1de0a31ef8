// The meters of a card: level bar with its number, and the badge of RF overload.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <gtk/gtk.h>

#include "gui/kit/level_bar.h"

namespace gui {

/// Main thread only. Must not outlive its widget.
class MeterStrip {
 public:
  struct Badge {
    std::string label;       ///< "RF" or "RF !"
    std::string_view style;  ///< "muted", "rf-overload" or "rf-recovered"
    std::string tooltip;
  };

  MeterStrip();

  [[nodiscard]] GtkWidget* widget() const { return row_; }
  /// `readout` is the number of the level, or "—".
  void show_level(const std::optional<kit::LevelBar::Level>& level, const std::string& readout,
                  const std::string& tooltip);
  void show_badge(const Badge& badge);
  /// Whether an operator could see it now.
  [[nodiscard]] bool mapped() const { return gtk_widget_get_mapped(row_) != FALSE; }

 private:
  static gboolean tell_level(GtkWidget* bar, gint x, gint y, gboolean keyboard, GtkTooltip* tooltip, gpointer self);

  GtkWidget* row_;
  kit::LevelBar bar_;
  GtkWidget* readout_;
  GtkWidget* badge_;
  std::string level_tooltip_, badge_tooltip_;
  base::SignalConnection tooltip_connection_;
};

}  // namespace gui
