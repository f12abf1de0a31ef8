// An RTL-SDR hears HF only around its tuner: by direct sampling of its ADC, or through an upconverter. Which of these a
// capture needs, and whether the dongle can. Frequencies in Hz. Any thread.
#pragma once

#include <string_view>

#include "launcher/capture/capture.h"
#include "launcher/catalogue/radios.h"

namespace launcher {

/// The value of `direct-sampling` to run with: "auto" becomes "off", "q" or, for a dongle whose HF path is unknown,
/// "q-check"; any other setting stays. `model` is only named, as "RTL-SDR" when it is empty. Throws CaptureFitError
/// when the dongle cannot hear the capture with that setting.
std::string_view choose_direct_sampling(std::string_view setting, radios::HfClass hf, const Capture& capture,
                                        std::string_view model);

}  // namespace launcher
