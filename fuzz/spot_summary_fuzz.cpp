// A summary's views must lie inside the line, and put together again must give it.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "results/spot_summary.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  const auto summary = results::parse_spot_summary(line);
  if (!summary) return 0;
  const std::string head = std::string(summary->mode) + ' ' + std::string(summary->stamp) + ' ';
  const std::string tail = summary->callsigns ? " spots; callsigns=" + std::string(*summary->callsigns) : " spots";
  if (!line.starts_with(head) || !line.ends_with(tail) || !(summary->frequency >= 0)) std::abort();
  return 0;
}
