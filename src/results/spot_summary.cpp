#include "results/spot_summary.h"

#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "results/megahertz.h"
#include "results/mode_table.h"
#include "results/scan.h"
#include "results/stamp.h"

namespace results {
namespace {

bool is_list_byte(char c) {
  return base::is_letter(c) || base::is_digit(c) || c == '/' || c == ',';
}

// The word up to the next blank, when it names a mode.
std::string_view mode_word(Scan& scan) {
  const std::string_view word = scan.run([](char c) { return c != ' '; });
  return find_mode(word) ? word : std::string_view();
}

// Digits, a point and digits again; empty for anything else.
std::string_view mhz_word(Scan& scan) {
  const std::string_view from = scan.rest();
  const std::size_t whole = scan.run(base::is_digit).size();
  if (whole == 0 || !scan.literal(".")) return {};
  const std::size_t decimals = scan.run(base::is_digit).size();
  return decimals == 0 ? std::string_view() : from.substr(0, whole + 1 + decimals);
}

}  // namespace

std::optional<SpotSummary> parse_spot_summary(std::string_view line) {
  Scan scan(line);
  SpotSummary summary;
  summary.mode = mode_word(scan);
  if (summary.mode.empty() || !scan.literal(" ")) return std::nullopt;
  summary.stamp = scan.fixed(13);
  if (!is_stamp_shaped(summary.stamp) || !scan.literal(" ")) return std::nullopt;

  const auto mhz = base::parse_double(mhz_word(scan));
  if (!mhz || !scan.literal(" MHz: ")) return std::nullopt;
  const auto spots = base::parse_unsigned(scan.run(base::is_digit));
  if (!spots || !scan.literal(" spots")) return std::nullopt;
  summary.frequency = hz_of_mhz(*mhz);
  if (!std::isfinite(summary.frequency)) return std::nullopt;
  summary.spots = *spots;
  if (scan.literal("; callsigns=")) summary.callsigns = scan.run(is_list_byte);
  if (!scan.done()) return std::nullopt;
  return summary;
}

}  // namespace results
