// A card that only tells.
#pragma once

#include <string>
#include <vector>

namespace gui {

struct TextCard {
  std::string heading;
  std::vector<std::string> lines;
  bool operator==(const TextCard&) const = default;
};

}  // namespace gui
