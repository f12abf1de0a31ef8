// The filter words of known channels and the band-mode grammar. What is accepted selects rows that can be written.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "launcher/catalogue/band_modes.h"
#include "launcher/catalogue/known_selection.h"

namespace {

template <typename Call>
void tolerate(Call call) {
  try {
    call();
  } catch (const std::runtime_error&) {  // refused in words
  }
}

void select(const sig::KnownFilters& filters) {
  const auto channels = sig::select_known_channels(filters, 100e6, 300e6);
  if (channels.size() > 92) std::abort();
  for (const auto& channel : channels)
    options::format_analysis_channel(channel);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  switch (data[0] % 5) {
    case 0:
      tolerate([&] { select(sig::parse_known_filters(text, std::nullopt, std::nullopt)); });
      break;
    case 1:
      tolerate([&] { select(sig::parse_known_filters(std::nullopt, text, std::nullopt)); });
      break;
    case 2:
      tolerate([&] { select(sig::parse_known_filters(std::nullopt, std::nullopt, text)); });
      break;
    case 3:
      tolerate([&] {
        if (launcher::parse_band_modes(text).size() > launcher::band_presets.size()) std::abort();
      });
      break;
    default:
      for (const auto& band : launcher::band_presets)
        launcher::modes_of_band(band.name, text, text);
  }
  return 0;
}
