// A slider with its number beside it, which on some settings can be typed.
#pragma once

#include "gui/config/card_widget.h"

namespace gui {

class SliderWidget : public CardWidget {
 public:
  SliderWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed);

  [[nodiscard]] std::string value() const override { return value_; }
  /// Shows what the hardware does in place of the value, until show_own(): the slider moves, the value stays. Without a
  /// value the slider keeps its place. Never an edit.
  void follow(std::optional<double> value, const std::string& reading);
  /// Shows the value again, with what the hardware says beside it; without that, the value's own number.
  void show_own(const std::optional<std::string>& reading = {});

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
  std::optional<std::string> reading_;  ///< beside the slider in place of its number
  bool following_ = false;
};

}  // namespace gui
