#include "results/card_layout.h"

#include <algorithm>
#include <cmath>

namespace results {
namespace {

constexpr int margins = 32;
constexpr int smallest_card = 364;  // at 100 %
constexpr int most_columns = 4;

}  // namespace

std::optional<CardLayout> card_layout(int allocated_width, double scale, const std::vector<int>& minimums) {
  const int available = allocated_width - margins;
  if (available < 2) return std::nullopt;
  int minimum = static_cast<int>(std::lround(smallest_card * scale));
  for (const int own : minimums)
    minimum = std::max(minimum, own);

  CardLayout layout;
  layout.columns = std::clamp((available + CardLayout::spacing) / (minimum + CardLayout::spacing), 1, most_columns);
  layout.width = std::max((available - CardLayout::spacing * (layout.columns - 1)) / layout.columns, minimum);
  return layout;
}

}  // namespace results
