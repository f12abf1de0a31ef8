#include "launcher/setting_names.h"

#include <array>

namespace launcher {
namespace {

struct SettingName {
  std::string_view key, name;
};

constexpr std::array<SettingName, 15> names{{
    {"sample-rate", "Sample rate"},
    {"center-frequency", "Capture center"},
    {"bandwidth", "Channel bandwidth"},
    {"lna-state", "RF Gain"},
    {"antenna", "Antenna"},
    {"gain-reduction", "IF reduction"},
    {"usb-mode", "USB transfer"},
    {"ppm", "Correction (ppm)"},
    {"audio-gain", "Audio gain"},
    {"rx888-rate", "ADC sample rate"},
    {"rx888-coverage", "Coverage"},
    {"rx888-attenuation", "HF attenuator"},
    {"rx888-gain", "VGA / RF gain"},
    {"rtl-gain", "Tuner gain"},
    {"direct-sampling", "Direct sampling"},
}};

}  // namespace

std::string_view setting_name(std::string_view key) {
  for (const SettingName& entry : names)
    if (entry.key == key) return entry.name;
  return key;
}

}  // namespace launcher
