#include "results/spot_summary.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "results/mode_table.h"
#include "results/scan.h"
#include "results/stamp.h"

namespace results {
namespace {

constexpr std::array<double, 7> powers_of_ten{1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

// Hz from the digits before and after the point of a MHz text. A million is no power of two: where the digits make a
// whole number of Hz they are put together as integers, so that 14.070912 MHz is 14070912 Hz and not a bit beside it.
std::optional<double> hz_of_mhz(std::string_view text, std::size_t point) {
  const std::size_t decimals = text.size() - point - 1;
  if (decimals < powers_of_ten.size() && text.size() <= 16) {
    double digits = 0;
    for (const char c : text)
      if (c != '.') digits = digits * 10 + (c - '0');
    return digits * powers_of_ten[6 - decimals];
  }
  const auto mhz = base::parse_double(text);
  if (!mhz || !std::isfinite(*mhz * 1e6)) return std::nullopt;
  return *mhz * 1e6;
}

bool is_list_byte(char c) {
  return base::is_letter(c) || base::is_digit(c) || c == '/' || c == ',';
}

// The word up to the next blank, when it names a mode.
std::string_view mode_word(Scan& scan) {
  const std::string_view word = scan.run([](char c) { return c != ' '; });
  return find_mode(word) ? word : std::string_view();
}

}  // namespace

std::optional<SpotSummary> parse_spot_summary(std::string_view line) {
  Scan scan(line);
  SpotSummary summary;
  summary.mode = mode_word(scan);
  if (summary.mode.empty() || !scan.literal(" ")) return std::nullopt;
  summary.stamp = scan.fixed(13);
  if (!is_stamp_shaped(summary.stamp) || !scan.literal(" ")) return std::nullopt;

  const std::string_view from_frequency = scan.rest();
  const std::size_t point = scan.run(base::is_digit).size();
  if (point == 0 || !scan.literal(".")) return std::nullopt;
  const std::size_t decimals = scan.run(base::is_digit).size();
  if (decimals == 0 || !scan.literal(" MHz: ")) return std::nullopt;
  const auto frequency = hz_of_mhz(from_frequency.substr(0, point + 1 + decimals), point);

  const auto spots = base::parse_unsigned(scan.run(base::is_digit));
  if (!frequency || !spots || !scan.literal(" spots")) return std::nullopt;
  summary.frequency = *frequency;
  summary.spots = *spots;
  if (scan.literal("; callsigns=")) summary.callsigns = scan.run(is_list_byte);
  if (!scan.done()) return std::nullopt;
  return summary;
}

}  // namespace results
