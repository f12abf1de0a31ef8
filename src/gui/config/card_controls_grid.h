// The controls of one card, one under the other.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtk/gtk.h>

#include "gui/config/card_widget.h"

namespace gui {

/// Main thread only. Must not outlive its widget.
class CardControlsGrid {
 public:
  using Edited = std::function<void(const CardControl& control, const std::string& value)>;

  /// `edited` gets what the operator changes; nothing that this class changes by itself is an edit. It may call back.
  CardControlsGrid(launcher::Family family, ChangeGuard& guard, Edited edited);

  [[nodiscard]] GtkWidget* widget() const { return grid_; }
  void show(const CardFacts& facts);
  /// Null for a key that the family has no control of.
  [[nodiscard]] CardWidget* find(std::string_view key) const;
  /// A line under the tuner gain: what the tuner does in its place. Nothing for families without one.
  void show_gain_note(const std::string& text);

 private:
  ChangeGuard& guard_;
  const Edited edited_;
  std::vector<std::unique_ptr<CardWidget>> widgets_;
  GtkWidget* grid_ = nullptr;
  GtkWidget* gain_note_ = nullptr;
};

}  // namespace gui
