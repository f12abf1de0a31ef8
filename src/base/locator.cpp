#include "base/locator.h"

namespace base {

bool is_locator(std::string_view word) {
  if (word.size() != 4 && word.size() != 6 && word.size() != 8) return false;
  static constexpr struct { char first, last; } ranges[] = {{'A', 'R'}, {'0', '9'}, {'A', 'X'}, {'0', '9'}};
  for (std::size_t i = 0; i < word.size(); ++i)
    if (word[i] < ranges[i / 2].first || word[i] > ranges[i / 2].last) return false;
  return true;
}

}  // namespace base
