// Whatever a SIG line holds, its texts are no longer than the line together.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "results/health_line.h"
#include "results/sig_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  (void)results::parse_health_line(line);
  const auto parsed = sig::parse_sig_line(line);
  if (!parsed) return 0;
  std::size_t bytes = parsed->scope.size() + parsed->mode.size() + parsed->stamp.size() + parsed->kind.size();
  for (const auto& [key, value] : parsed->fields)
    bytes += key.size() + value.size();
  if (bytes > size || parsed->mode.empty() || parsed->kind.empty()) std::abort();
  return 0;
}
