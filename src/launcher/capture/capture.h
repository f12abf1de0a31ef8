// Fitting channels into one receiver's capture: a contiguous stretch of spectrum with a centre and a sample rate. The
// same arithmetic judges a profile and serves the planner, which asks it for many sets of channels: a set is known here
// by its extremes alone. Frequencies and rates in Hz. Pure functions; any thread.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

#include "launcher/catalogue/bands.h"
#include "options/channels/passband.h"

namespace launcher {

using options::CaptureFitError;

/// The receiver families, by the backend that runs them.
enum class Family : std::uint8_t { sdrplay, rtl_sdr, rx888 };
/// "sdrplay", "rtl-sdr" or "rx888", exact in case.
std::optional<Family> parse_family(std::string_view backend);
std::string_view family_text(Family family);

/// Where a receiver listens. The usable part is the middle nine tenths of the filter bandwidth.
struct Capture {
  double center{};
  double sample_rate{};
  double filter_bandwidth{};
  [[nodiscard]] double usable_span() const { return 0.9 * filter_bandwidth; }
  bool operator==(const Capture&) const = default;
};

/// The extremes of a set of channels; empty at first.
struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  [[nodiscard]] bool empty() const { return low > high; }
  void add(const options::Passband& band) {
    low = std::min(low, band.lower);
    high = std::max(high, band.upper);
  }
  void add(const Extent& other) {
    low = std::min(low, other.low);
    high = std::max(high, other.high);
  }
  bool operator==(const Extent&) const = default;
};

/// What a capture must hold. `all` includes `decoders`.
struct CaptureNeeds {
  Extent decoders;  ///< digital-mode channels
  Extent all;       ///< and listening channels, analysis channels and bands without decoders
};

/// What the operator has set. `sample_rate` is not looked at for an RX-888, whose rate follows from its channels.
struct CaptureSettings {
  Family family = Family::sdrplay;
  double sample_rate{};
  double center{};              ///< 0 is automatic
  bool replay = false;          ///< a recording, whose sample rate may be below the receiver's narrowest filter
  bool half_rate = false;       ///< RX-888: ADC at 64 MS/s, not 128
  bool whole_spectrum = false;  ///< RX-888: one capture from 0 Hz to nine tenths of Nyquist
  double ppm{};                 ///< RX-888: how far its clock is off
};

/// What a digital channel takes above its dial frequency. FT8 takes 4000 Hz even where the bandwidth is set lower.
double channel_width(DigitalMode mode, double bandwidth);
options::Passband channel_span(const DecoderChannel& channel, double bandwidth);
/// What a band without decoders takes: from its lowest dial frequency to its highest plus the bandwidth.
options::Passband listened_span(const BandPreset& band, double bandwidth);

/// The SDRplay tuner's filter for a sample rate: the widest that is not wider than the rate.
double sdrplay_filter_bandwidth(double sample_rate);
/// Where a capture from `low` to `high` is centred when nothing else decides: beside the middle, to keep the receiver's
/// own carrier off it.
double automatic_center(double low, double high);
/// The RX-888's ADC clock without its error.
double adc_clock(bool half_rate);

/// The capture for these needs, its centre chosen where it is automatic; nullopt when there is none. Without any needs
/// it lies where an idle receiver waits.
std::optional<Capture> find_capture(const CaptureSettings& settings, const CaptureNeeds& needs);
/// The same, but throws CaptureFitError with the reason.
Capture fit_capture(const CaptureSettings& settings, const CaptureNeeds& needs);

}  // namespace launcher
