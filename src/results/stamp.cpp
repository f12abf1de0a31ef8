#include "results/stamp.h"

#include "base/text.h"
#include "base/time_text.h"

namespace results {

bool is_stamp_shaped(std::string_view text) {
  if (text.size() != 13 || text[6] != '_') return false;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (i != 6 && !base::is_digit(text[i])) return false;
  return true;
}

std::optional<double> stamp_seconds(std::string_view stamp) {
  if (!is_stamp_shaped(stamp)) return std::nullopt;
  const auto pair = [stamp](std::size_t at) { return (stamp[at] - '0') * 10 + (stamp[at + 1] - '0'); };
  const auto seconds = base::utc_seconds(2000 + pair(0), pair(2), pair(4), pair(7), pair(9), pair(11));
  if (!seconds) return std::nullopt;
  return static_cast<double>(*seconds);
}

}  // namespace results
