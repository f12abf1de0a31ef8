// The station's vocabulary of bands and digital modes: dial frequencies, edges and colours. Constant data, any thread.
// Dial frequencies are the conventions of the FT8, FT4, JS8 and WSPR communities; edges are the amateur allocations as
// the activity graphs draw them. Frequencies are in Hz.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace launcher {

/// The digital modes with a slot of their own. Values are stored in history files: append only.
enum class DigitalMode : std::uint8_t { ft8, ft4, js8, js8_fast, js8_turbo, js8_slow, wspr };
inline constexpr std::size_t digital_mode_count = 7;

/// One band as decoders use it. A frequency of zero means that the mode has none on this band.
struct BandPreset {
  std::string_view name;  ///< "20", without the metre suffix, but "70cm"
  double ft8{}, ft4{}, js8{}, wspr{};
  double idle_center{};  ///< capture centre of a receiver without any channel; zero on every band but one
};

/// In the order of display everywhere.
inline constexpr std::array<BandPreset, 13> band_presets{{
    {"160", 1840000, 0, 1843500, 1836600, 0},
    {"80", 3573000, 3575000, 3578000, 3568600, 0},
    {"60", 5357000, 5357000, 0, 0, 0},
    {"40", 7074000, 7047500, 7078000, 7038600, 0},
    {"30", 10136000, 10140000, 10130000, 10138700, 0},
    {"20", 14074000, 14080000, 14078000, 14095600, 0},
    {"17", 18100000, 18104000, 18104000, 18104600, 0},
    {"15", 21074000, 21140000, 21078000, 21094600, 0},
    {"12", 24915000, 24919000, 24922000, 24924600, 0},
    {"10", 28074000, 28180000, 28078000, 28124600, 0},
    {"6", 50313000, 50318000, 50318000, 50293000, 0},
    {"2", 144174000, 144170000, 144178000, 144489000, 146000000},
    {"70cm", 432174000, 0, 0, 432300000, 0},
}};

/// A band as graphs and the map draw it; both edges belong to it.
struct ActivityBand {
  std::string_view name;    ///< "20m", the display name
  std::string_view colour;  ///< "#rrggbb"
  double low{}, high{};
};

inline constexpr std::array<ActivityBand, 13> activity_bands{{
    {"160m", "#7cfc00", 1800000, 2000000},
    {"80m", "#e550e5", 3500000, 4000000},
    {"60m", "#00008b", 5000000, 5500000},
    {"40m", "#5959ff", 7000000, 7300000},
    {"30m", "#62d962", 10100000, 10150000},
    {"20m", "#f2c40c", 14000000, 14350000},
    {"17m", "#f2f261", 18068000, 18168000},
    {"15m", "#cca166", 21000000, 21450000},
    {"12m", "#b22222", 24890000, 24990000},
    {"10m", "#ff69b4", 28000000, 29700000},
    {"6m", "#ff0000", 50000000, 54000000},
    {"2m", "#ff1493", 144000000, 148000000},
    {"70cm", "#999900", 420000000, 450000000},
}};

/// The band of the activity table that holds a frequency, null outside all of them.
const ActivityBand* activity_band_at(double hz);

/// What one band and one mode become: a dial frequency to decode.
struct DecoderChannel {
  double frequency{};
  DigitalMode mode{};
  bool operator==(const DecoderChannel&) const = default;
};

/// "20M", "20m" and "20" give "20"; "70CM" gives "70cm". The text need not be a band.
std::string normalise_band(std::string_view text);
/// "20" gives "20m", "70cm" stays: the normal form as it is shown.
std::string band_display_name(std::string_view text);

/// The row of a band in any spelling, null if there is none.
const BandPreset* find_band(std::string_view text);
/// The same, but throws std::runtime_error with the words of the command line for an empty or unknown band.
const BandPreset& band_preset(std::string_view text);

/// Zero when the mode has no frequency on the band. All JS8 speeds share one.
double dial_frequency(const BandPreset& band, DigitalMode mode);
/// By name; throws as band_preset does.
double dial_frequency(std::string_view band, DigitalMode mode);

/// What a band needs for placement: from its lowest dial frequency to its highest plus 3000 Hz. Not its edges.
struct BandSpan {
  double low{}, high{};
  bool operator==(const BandSpan&) const = default;
};
BandSpan band_span(const BandPreset& band);
/// By name; throws as band_preset does.
BandSpan band_span(std::string_view band);

/// Exact and case-sensitive: "FT8", "JS8-FAST", ...
std::optional<DigitalMode> parse_digital_mode(std::string_view text);
/// "unknown" for a value outside the enumeration.
std::string_view digital_mode_text(DigitalMode mode);

}  // namespace launcher
