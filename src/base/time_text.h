// Points in time as UTC text. Seconds since the Unix epoch throughout.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace base {

/// Where a class reads the time of day; tests hand in their own. Seconds since the epoch, UTC.
using Clock = std::function<double()>;
/// The system's clock.
Clock system_clock();

/// "2026-10-03 12:00:00Z", as journals and logs are stamped.
std::string journal_time(double seconds);
/// "12:00:00Z", as the panes show it.
std::string clock_time(double seconds);
/// "261003_120000", the stamp of decodes.
std::string stamp_time(double seconds);

/// Seconds for a UTC date and time; empty when a field is out of range (month 13, 31 February, hour 24) or the time is
/// before the epoch.
std::optional<std::int64_t> utc_seconds(int year, int month, int day, int hour, int minute, int second);

}  // namespace base
