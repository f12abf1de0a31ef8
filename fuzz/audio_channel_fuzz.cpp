// Audio channel specifications: whatever reads is written to a text that reads back equal.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "options/channels/audio_channel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  options::AudioChannel channel;
  try {
    channel = options::parse_audio_channel(text);
    // A text near the size limit may have a canonical form above it; that is refused like any too long text.
    const std::string canonical = options::format_audio_channel(channel);
    if (options::parse_audio_channel(canonical) != channel) std::abort();
    if (options::format_audio_channel(options::parse_audio_channel(canonical)) != canonical) std::abort();
  } catch (const std::runtime_error&) {
    if (!channel.id.empty() && size < 2048) std::abort();  // it was read, so its canonical form must be too
  }
  return 0;
}
