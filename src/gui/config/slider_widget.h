// A slider with its number beside it, which on some settings can be typed.
#pragma once

#include "gui/config/card_widget.h"

namespace gui {

class SliderWidget : public CardWidget {
 public:
  SliderWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed);

  [[nodiscard]] std::string value() const override { return value_; }
  /// Shows what the hardware does in place of the value, until show_own(): the slider moves, the value stays. Without a
  /// position the slider keeps its place, and only the text changes. Never an edit.
  void follow(std::optional<double> value, const std::string& text);
  /// Shows the value again.
  void show_own();

 private:
  void put_value(const std::string& value) override;
  void slid();
  void typed();
  void show_text();
  void place(double value);

  GtkWidget* scale_;
  GtkWidget* number_ = nullptr;   ///< a spin button, where the number can be typed
  GtkWidget* readout_ = nullptr;  ///< a label, where it cannot
  std::string value_;
  bool following_ = false;
};

}  // namespace gui
