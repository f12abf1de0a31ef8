// The row of buttons under the notebook, and the label for passing messages.
#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

#include "gui/footer_state.h"

namespace gui {

class Footer {
 public:
  struct Actions {
    std::function<void()> start;
    std::function<void()> stop;
    std::function<void()> open_profile;
    std::function<void()> apply_and_save;
  };

  explicit Footer(Actions actions);

  void show(const FooterState& state);
  void show_profile(const std::string& config_path);
  /// Shows one passing message until clear_message().
  void show_message(const std::string& text);
  void clear_message();

  [[nodiscard]] GtkWidget* widget() const { return box_; }
  /// The state text, as the tooltip of "Start receivers" has it.
  [[nodiscard]] std::string status() const { return state_text_; }
  [[nodiscard]] bool start_sensitive() const;

 private:
  GtkWidget* box_;
  GtkWidget* start_;
  GtkWidget* stop_;
  GtkWidget* open_;
  GtkWidget* apply_;
  GtkWidget* status_label_;
  GtkWidget* profile_label_;
  std::string state_text_;
  bool message_shown_ = false;
};

}  // namespace gui
