// What an engine says about its own health between its results.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace results {

/// The hourly account of a receiver.
struct LastHour {
  std::uint64_t dropped_intervals{};
  std::uint64_t restarts{};
  double deepest_backlog{};  ///< seconds
};
/// The stream of samples had a gap.
struct Discontinuity {};
/// An episode of RF overload begins; one that runs already goes on.
struct OverloadStart {};
struct OverloadEnd {};
/// One upload to PSK Reporter went out.
struct ReportsSent {
  std::uint64_t spots{};
};
struct ReportsFailed {};
struct WsprUploadFailed {};

using HealthLine =
    std::variant<LastHour, Discontinuity, OverloadStart, OverloadEnd, ReportsSent, ReportsFailed, WsprUploadFailed>;

/// Empty for a line that says nothing about health; otherwise the first reading, in the order of the variant, that
/// fits.
std::optional<HealthLine> parse_health_line(std::string_view line);

}  // namespace results
