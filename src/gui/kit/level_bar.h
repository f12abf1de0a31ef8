// A horizontal bar for a level that moves many times a second, with a marker for its peak.
#pragma once

#include <optional>
#include <string>

#include <gtk/gtk.h>

#include "base/signal_connection.h"

namespace kit {

/// Main thread only. The container that the widget is put into owns it.
class LevelBar {
 public:
  /// Parts of the bar's length, 0 to 1 from the left; what lies outside is drawn at the nearer end.
  struct Level {
    double fill = 0;
    std::optional<double> marker = {};
    bool alarm = false;  ///< in the colour of an overload
    bool operator==(const Level&) const = default;
  };

  explicit LevelBar(const std::string& accessible_name);

  [[nodiscard]] GtkWidget* widget() const { return area_; }
  /// Draws the level, or an empty bar without one, if that changes a pixel.
  void show(const std::optional<Level>& level);
  /// What the bar shows now, or was last told to.
  [[nodiscard]] const std::optional<Level>& level() const { return level_; }

 private:
  static gboolean draw(GtkWidget* area, cairo_t* cairo, gpointer self);
  [[nodiscard]] bool looks_like(const std::optional<Level>& level) const;

  GtkWidget* area_;
  std::optional<Level> level_;
  std::optional<Level> drawn_;  ///< when a drawing was last asked for
  base::SignalConnection draw_connection_;
};

}  // namespace kit
