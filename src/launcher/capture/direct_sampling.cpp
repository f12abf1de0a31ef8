#include "launcher/capture/direct_sampling.h"

#include <fmt/format.h>

namespace launcher {
namespace {

using radios::HfClass;

/// The dongle's ADC runs at this rate, and its tuner starts at the second one.
constexpr double direct_sampling_top = 28800000;
constexpr double tuner_bottom = 24000000;

std::string_view resolved(std::string_view setting, HfClass hf, double high) {
  if (setting != "auto") return setting;
  if (high <= direct_sampling_top && hf == HfClass::direct_q) return "q";
  if (high <= direct_sampling_top && hf == HfClass::unknown) return "q-check";
  return "off";
}

}  // namespace

std::string_view choose_direct_sampling(std::string_view setting, HfClass hf, const Capture& capture,
                                        std::string_view model) {
  if (model.empty()) model = "RTL-SDR";
  const double low = capture.center - capture.sample_rate / 2;
  const double high = capture.center + capture.sample_rate / 2;
  const std::string_view result = resolved(setting, hf, high);
  if (result != "off") {
    if (high > direct_sampling_top)
      throw CaptureFitError(
          "direct sampling covers HF only (up to 28.8 MHz); turn Direct sampling off in SDR Config for 6 m and up");
    return result;
  }
  if (hf == HfClass::upconverter || low >= tuner_bottom) return result;
  if (hf == HfClass::none) throw CaptureFitError(fmt::format("HF needs an upconverter in front of the {}", model));
  if (high > direct_sampling_top)
    throw CaptureFitError(
        "HF and 6 m or up do not fit one RTL-SDR capture: direct sampling takes HF (up to 28.8 MHz), the tuner 24 MHz "
        "and up");
  throw CaptureFitError(
      fmt::format("HF on the {} needs direct sampling; set Direct sampling to Automatic in SDR Config", model));
}

}  // namespace launcher
