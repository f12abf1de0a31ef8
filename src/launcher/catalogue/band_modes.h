// Which digital modes run on which band: the values of `modes` and `band-modes`. The strict readers serve the option
// check; the lenient lookup serves the planner, which asks before a profile has been checked. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/catalogue/bands.h"

namespace launcher {

/// One entry of `band-modes`; a band may be listed without any mode.
struct BandModes {
  const BandPreset* band{};
  std::vector<DigitalMode> modes;
};

/// A comma list of mode texts in the given order. Throws std::runtime_error for an unknown, empty or repeated mode.
std::vector<DigitalMode> parse_modes(std::string_view value);
/// A comma list of BAND:MODE+MODE entries. Throws std::runtime_error with the offending entry, band or mode as typed.
std::vector<BandModes> parse_band_modes(std::string_view value);

/// The mode texts of one band as the profile's values give them (nullopt: the key is absent): its entry of
/// `band-modes`, else `modes`, else FT8. Nothing is judged; entries without a colon never match, empty texts are
/// dropped. The views point into the arguments.
std::vector<std::string_view> modes_of_band(std::string_view band, std::optional<std::string_view> band_modes,
                                            std::optional<std::string_view> modes);

/// A channel for each mode that has a frequency on the band; the others are left out.
std::vector<DecoderChannel> band_channels(const BandPreset& band, const std::vector<DigitalMode>& modes);

/// Whether one of these mode texts has no frequency on the band. Texts that are no mode don't count.
bool lacks_frequency(const BandPreset& band, const std::vector<std::string_view>& modes);
/// "60m has no JS8 frequency. Tick FT8 or FT4", to be continued by the caller.
std::string missing_frequency_advice(const BandPreset& band, const std::vector<std::string_view>& modes);

}  // namespace launcher
