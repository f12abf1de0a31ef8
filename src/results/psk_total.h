// How many reports went to PSK Reporter in the last 24 hours, from the file in which the engines note each batch.
#pragma once

#include <cstdint>
#include <string>

namespace results {

/// The sum over the 24 hours up to `now` (seconds since the epoch); 0 when there is no file yet. Reads only. Any
/// thread, blocking. Throws std::runtime_error with the database's words.
std::int64_t psk_reports_total(const std::string& path, double now);

}  // namespace results
