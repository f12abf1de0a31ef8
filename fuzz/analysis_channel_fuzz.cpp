// Analysis channel specifications: whatever reads is written to a text that reads back equal.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "options/channels/analysis_channel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  options::AnalysisChannel channel;
  try {
    channel = options::parse_analysis_channel(text);
  } catch (const std::runtime_error&) {
    return 0;
  }
  const std::string canonical = options::format_analysis_channel(channel);
  if (options::parse_analysis_channel(canonical) != channel) std::abort();
  if (options::format_analysis_channel(options::parse_analysis_channel(canonical)) != canonical) std::abort();
  return 0;
}
