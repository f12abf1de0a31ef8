#include "options/option_table.h"

#include <algorithm>
#include <cstdint>

namespace options {
namespace {

static_assert(option_table.size() <= decltype(ReceiverOptions::given)().size());

/// The table's rows in the order of their names, for a search by halves.
constexpr auto rows_by_name = [] {
  std::array<std::uint8_t, option_table.size()> rows{};
  for (std::size_t i = 0; i < rows.size(); ++i)
    rows[i] = static_cast<std::uint8_t>(i);
  std::sort(rows.begin(), rows.end(),
            [](std::uint8_t a, std::uint8_t b) { return option_table[a].argument < option_table[b].argument; });
  return rows;
}();

}  // namespace

const Option* find_option(std::string_view name) {
  const auto* const found =
      std::lower_bound(rows_by_name.begin(), rows_by_name.end(), name,
                       [](std::uint8_t row, std::string_view wanted) { return option_table[row].name() < wanted; });
  if (found == rows_by_name.end() || option_table[*found].name() != name) return nullptr;
  return &option_table[*found];
}

std::string_view reception_mode_text(ReceptionMode mode) {
  return word_at(option_table[OptionId("mode").index()].words, static_cast<std::size_t>(mode));
}

}  // namespace options
