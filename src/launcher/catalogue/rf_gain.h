// The RF gain states of SDRplay receivers, as attenuation in dB below maximum gain. Constant data, any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace launcher {

/// What stands in place of the mapping where there is no table.
inline constexpr std::string_view rf_gain_unknown =
    "dB mapping is unknown. Select a receiver and, for RSP2/RSPduo, an explicit antenna. RSPdx HDR status below 2 MHz "
    "is unknown. State numbers are preserved.";

/// The attenuation of each state at a frequency in Hz; nullopt where it is not known, as on an RSP2 or RSPduo without
/// an explicit antenna. Not monotonic: a state keeps its number even where a higher one attenuates less. Models with a
/// fixed input ignore the antenna.
std::optional<std::span<const std::uint8_t>> rf_gain_table(std::string_view model, std::string_view antenna,
                                                           double frequency_hz);

/// The frequency at which the table is looked up for a capture: beside its centre, where the signals are.
double rf_gain_frequency(double capture_centre_hz);

/// Throws std::runtime_error with the operator's words for a state above 255 or beyond the table.
void check_rf_gain_state(std::string_view model, std::string_view antenna, double frequency_hz, int state);

}  // namespace launcher
