// The time stamp of decodes: "261003_120000", UTC.
#pragma once

#include <optional>
#include <string_view>

namespace results {

/// Six digits, "_", six digits, and nothing else. Says nothing about the date.
bool is_stamp_shaped(std::string_view text);

/// Seconds since the epoch. Empty for another shape and for a date or time that does not exist (month 13, 31 February,
/// hour 24). The years are 2000 to 2099.
std::optional<double> stamp_seconds(std::string_view stamp);

}  // namespace results
