// Where the cards and plots of a dashboard stand for a given width.
#pragma once

#include <optional>
#include <vector>

namespace results {

/// Equal columns of cards. Widths are pixels.
struct CardLayout {
  static constexpr int spacing = 12;

  int columns = 1;  ///< 1 to 4
  int width = 0;    ///< of each card

  [[nodiscard]] int column(int index) const { return index % columns; }  ///< of the card numbered from 0
  [[nodiscard]] int row(int index) const { return index / columns; }
  bool operator==(const CardLayout&) const = default;
};

/// `allocated_width` is that of the scrolled area; `scale` the interface scale (1 = 100 %); `minimums` the cards' own
/// preferred widths (`activity-minimum`) of all grids that share the layout. Empty while there is no width yet.
std::optional<CardLayout> card_layout(int allocated_width, double scale, const std::vector<int>& minimums);

}  // namespace results
