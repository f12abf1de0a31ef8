#include "results/health_line.h"

#include "base/numbers.h"
#include "base/text.h"
#include "results/scan.h"

namespace results {
namespace {

std::optional<LastHour> last_hour(std::string_view line) {
  Scan scan(line);
  if (!scan.literal("Last hour: ")) return std::nullopt;
  const auto dropped = base::parse_unsigned(scan.run(base::is_digit));
  if (!scan.literal(" interval(s) dropped for gaps, ")) return std::nullopt;
  const auto restarts = base::parse_unsigned(scan.run(base::is_digit));
  if (!scan.literal(" restart(s) of all intervals, deepest backlog ")) return std::nullopt;
  const auto backlog = base::parse_double(scan.run([](char c) { return base::is_digit(c) || c == '.'; }));
  if (!scan.literal(" s") || !dropped || !restarts || !backlog) return std::nullopt;
  return LastHour{*dropped, *restarts, *backlog};
}

std::optional<ReportsSent> reports_sent(std::string_view line) {
  Scan scan(line);
  if (!scan.literal("PSK Reporter: sent ")) return std::nullopt;
  const auto spots = base::parse_unsigned(scan.run(base::is_digit));
  if (!spots) return std::nullopt;
  return ReportsSent{*spots};
}

}  // namespace

std::optional<HealthLine> parse_health_line(std::string_view line) {
  if (const auto hour = last_hour(line)) return *hour;
  if (line.starts_with("IQ discontinuity")) return Discontinuity{};
  // "Overload" and "overload" alike.
  if (line.find("verload") != std::string_view::npos) {
    if (line.find("cleared") == std::string_view::npos) return OverloadStart{};
    return OverloadEnd{};
  }
  if (const auto sent = reports_sent(line)) return *sent;
  if (line.starts_with("PSK Reporter packet exceeds") || line.starts_with("PSK Reporter stopped"))
    return ReportsFailed{};
  if (line.starts_with("WSPRnet upload failed")) return WsprUploadFailed{};
  return std::nullopt;
}

}  // namespace results
