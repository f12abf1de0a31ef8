#include "launcher/capture/capture.h"

#include <array>

#include <fmt/format.h>

namespace launcher {
namespace {

constexpr std::array<std::string_view, 3> family_texts{"sdrplay", "rtl-sdr", "rx888"};

/// Keeps the receiver's own carrier at the centre off the midpoint between the channels.
constexpr double center_offset = 8000;

/// From this rate up the tuner's filter is the second number wide.
struct FilterStep {
  double from_rate, bandwidth;
};
constexpr std::array<FilterStep, 8> filter_ladder{
    {{8e6, 8e6}, {7e6, 7e6}, {6e6, 6e6}, {5e6, 5e6}, {1536e3, 1536e3}, {600e3, 600e3}, {300e3, 300e3}, {0, 200e3}}};

bool fits(const Extent& extent, const Capture& capture) {
  return extent.empty() ||
         options::lies_in_capture({extent.low, extent.high}, capture.center, capture.filter_bandwidth);
}

double idle_center() {
  for (const BandPreset& band : band_presets)
    if (band.idle_center != 0) return band.idle_center;
  return 0;
}

Capture aim_tuner(const CaptureSettings& settings, const CaptureNeeds& needs) {
  const double automatic =
      needs.all.empty() ? idle_center() : launcher::automatic_center(needs.all.low, needs.all.high);
  Capture capture{settings.center != 0 ? settings.center : automatic, settings.sample_rate, settings.sample_rate};
  if (settings.family == Family::sdrplay) {
    const double filter = sdrplay_filter_bandwidth(settings.sample_rate);
    capture.filter_bandwidth = settings.replay ? std::min(filter, settings.sample_rate) : filter;
  }
  return capture;
}

/// Half of what the RX-888's real clock samples.
double nyquist(const CaptureSettings& settings) {
  return 0.5 * adc_clock(settings.half_rate) * (1 + settings.ppm / 1e6);
}

std::optional<Capture> whole_spectrum(const CaptureSettings& settings, const CaptureNeeds& needs) {
  if (!needs.all.empty() && needs.all.high > 0.9 * nyquist(settings)) return std::nullopt;
  return Capture{0.45 * nyquist(settings), 0.5 * adc_clock(settings.half_rate), nyquist(settings)};
}

/// The smallest output rate that holds the needs. The ADC's clock divides by powers of two, and the host takes no more
/// than 32 MS/s (and a clock's error) of a sized capture.
std::optional<Capture> sized_capture(const CaptureSettings& settings, const CaptureNeeds& needs) {
  constexpr double least_rate = 8e6, most_rate = 32000320;
  const double edge = nyquist(settings);
  const double low = needs.all.empty() ? settings.center : needs.all.low;
  const double high = needs.all.empty() ? settings.center : needs.all.high;
  for (int divisor = 256; divisor >= 2; divisor /= 2) {
    const double rate = adc_clock(settings.half_rate) / divisor;
    if (rate < least_rate) continue;
    if (rate > most_rate) break;
    const double bandwidth = 2 * edge / divisor;
    const double half = 0.45 * bandwidth;
    const double center =
        settings.center != 0 ? settings.center : std::max(half, std::min(0.5 * (low + high), edge - half));
    const bool inside = half - 1 <= center && center <= edge - half + 1;
    if (inside && half >= std::max(high - center, center - low)) return Capture{center, rate, bandwidth};
  }
  return std::nullopt;
}

/// Why find_capture found nothing.
std::string misfit_reason(const CaptureSettings& settings, const CaptureNeeds& needs) {
  if (settings.family != Family::rx888)
    return fits(needs.decoders, aim_tuner(settings, needs))
               ? "The bands do not fit the usable capture bandwidth; increase --sample-rate, change "
                 "--center-frequency, or tick closer bands"
               : "Decoder channels do not fit the usable capture bandwidth; increase --sample-rate, change "
                 "--center-frequency, or use closer frequencies";
  if (settings.whole_spectrum)
    return fmt::format("RX-888 coverage \"all\" reaches {} MHz; this selection goes higher",
                       settings.half_rate ? "28.8" : "57.6");
  return fmt::format("RX-888 cannot fit this selection in one capture: at the {}, and at most 28.8 MHz of it at once",
                     settings.half_rate ? "half ADC rate it covers 0-32 MHz" : "full ADC rate it covers 0-64 MHz");
}

}  // namespace

std::optional<Family> parse_family(std::string_view backend) {
  const auto found = std::find(family_texts.begin(), family_texts.end(), backend);
  if (found == family_texts.end()) return std::nullopt;
  return static_cast<Family>(found - family_texts.begin());
}

std::string_view family_text(Family family) {
  return family_texts.at(static_cast<std::size_t>(family));
}

double channel_width(DigitalMode mode, double bandwidth) {
  return mode == DigitalMode::ft8 ? std::max(4000.0, bandwidth) : bandwidth;
}

options::Passband channel_span(const DecoderChannel& channel, double bandwidth) {
  return {channel.frequency, channel.frequency + channel_width(channel.mode, bandwidth)};
}

options::Passband listened_span(const BandPreset& band, double bandwidth) {
  Extent dials;
  for (const double dial : {band.ft8, band.ft4, band.js8, band.wspr})
    if (dial != 0) dials.add(options::Passband{dial, dial});
  return {dials.low, dials.high + bandwidth};
}

double sdrplay_filter_bandwidth(double sample_rate) {
  for (const FilterStep& step : filter_ladder)
    if (sample_rate >= step.from_rate) return step.bandwidth;
  return filter_ladder.back().bandwidth;
}

double adc_clock(bool half_rate) {
  return half_rate ? 64e6 : 128e6;
}

double automatic_center(double low, double high) {
  return 0.5 * (low + high) + center_offset;
}

std::optional<Capture> find_capture(const CaptureSettings& settings, const CaptureNeeds& needs) {
  if (settings.family == Family::rx888)
    return settings.whole_spectrum ? whole_spectrum(settings, needs) : sized_capture(settings, needs);
  const Capture capture = aim_tuner(settings, needs);
  // What holds everything holds the decoders.
  return fits(needs.all, capture) ? std::optional(capture) : std::nullopt;
}

Capture fit_capture(const CaptureSettings& settings, const CaptureNeeds& needs) {
  if (const auto capture = find_capture(settings, needs)) return *capture;
  throw CaptureFitError(misfit_reason(settings, needs));
}

}  // namespace launcher
