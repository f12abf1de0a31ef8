// How a channel's dial frequency and bandwidth become a stretch of spectrum, and whether a capture holds it. In Hz.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace options {

/// Channels and a receiver's capture do not go together. An expected outcome of planning, hence a type of its own.
class CaptureFitError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class Modulation : std::uint8_t { usb, lsb, am, fm };

/// "USB", "LSB", "AM" or "FM".
std::string_view modulation_text(Modulation modulation);
/// The same, read without regard to case.
std::optional<Modulation> parse_modulation(std::string_view text);

struct Passband {
  double lower{}, upper{};
  bool operator==(const Passband&) const = default;
};

/// The dial is the suppressed carrier of USB and LSB and the centre of AM and FM. `low_cut` is the distance from the
/// carrier at which a sideband's passband starts; AM and FM ignore it.
Passband passband(Modulation modulation, double dial, double bandwidth, double low_cut = 0);

/// Whether the whole passband is one that receivers can be tuned to, 1000 Hz to 2 GHz. False for NaN.
bool is_receivable(const Passband& band);

/// Whether the whole passband lies in the usable nine tenths of a capture: centre ± 0.45 × `bandwidth`.
bool lies_in_capture(const Passband& band, double centre, double bandwidth);

}  // namespace options
