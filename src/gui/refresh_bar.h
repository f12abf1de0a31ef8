// The button that looks for receivers, and what the last look came to.
#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

namespace gui {

/// Main thread only. Must end before its widget.
class RefreshBar {
 public:
  explicit RefreshBar(std::function<void()> refresh);

  /// `checking`: a look is under way; `available`: one may be started now.
  void show(bool checking, bool available, const std::string& status);
  [[nodiscard]] GtkWidget* widget() const { return box_; }

 private:
  GtkWidget* box_;
  GtkWidget* button_;
  GtkWidget* status_;
};

}  // namespace gui
