// The profile reader: what it takes, it takes apart and writes again without losing anything.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "options/profile.h"
#include "options/station.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const options::Profile profile = options::parse_config_text(text, "input", true);
    const std::string rendered = options::render_profile(profile);
    if (options::parse_config_text(rendered, "rendered", true) != profile) __builtin_trap();
    const options::Station station = options::parse_station(profile);
    if (options::is_multi_receiver(profile) && options::parse_station(options::render_station(station)) != station)
      __builtin_trap();
  } catch (const std::runtime_error&) {  // refused, in words
  }
  return 0;
}
