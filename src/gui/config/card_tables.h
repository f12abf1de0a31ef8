// The rows of the cards' tables. Only for card_controls.cpp.
#pragma once

#include "gui/config/card_controls.h"

namespace gui::card_tables {

inline constexpr FixedChoice usb_modes[] = {{"", "Automatic"}, {"isochronous", "Isochronous"}, {"bulk", "Bulk"}};
inline constexpr FixedChoice adc_rates[] = {{"full", "Full"}, {"half", "Half"}};
inline constexpr FixedChoice coverages[] = {{"bands", "Selected bands"}, {"all", "0 Hz and up"}};
inline constexpr FixedChoice direct_sampling[] = {
    {"auto", "Automatic"}, {"off", "Off"}, {"i", "I branch"}, {"q", "Q branch"}, {"q-check", "Q branch, checked"}};

inline constexpr CardControl audio_gain{
    .key = "audio-gain",
    .caption = "Audio gain (×)",
    .kind = CardKind::slider,
    .fallback = "10",
    .tooltip =
        "Linear audio multiplier; the slider uses dB. Changes require a restart. Individual audio-receiver volume "
        "remains live.",
    .slider = {-40, 80, 0.5, SliderScale::decibel, "", 2, true, 0.01, 10000}};

/// Of a tuner, in steps of a hundredth.
inline constexpr CardControl correction{
    .key = "ppm",
    .caption = "Correction (ppm)",
    .kind = CardKind::slider,
    .fallback = "0",
    .tooltip = "Frequency correction applies live. Use the numeric entry for fine adjustment.",
    .slider = {-100, 100, 0.1, SliderScale::plain, "", 3, true, -1000, 1000}};

constexpr CardControl rx888_correction() {
  CardControl control = correction;
  control.tooltip = "ADC clock error applied to tuning and timestamps. Changes require a restart.";
  return control;
}

constexpr CardControl rtl_correction() {
  CardControl control = correction;
  control.tooltip = "Frequency correction in whole ppm, applies live.";
  control.slider = {-100, 100, 1, SliderScale::plain, "", 0, true, -1000, 1000};
  return control;
}

inline constexpr CardControl bandwidth{
    .key = "bandwidth",
    .caption = "Channel bandwidth",
    .kind = CardKind::entry,
    .tooltip = "Changes require a restart. Hz, k or M suffix. Default: decoder 4k, USB/LSB 3k, AM 6k. FT8 minimum 4k.",
    .placeholder = "Mode default"};

inline constexpr CardControl centre{
    .key = "center-frequency",
    .caption = "Capture center",
    .kind = CardKind::entry,
    .tooltip =
        "Hz, k or M suffix; all channels must fit the capture. Blank auto-centers on the selected bands. On a "
        "running receiver, press Enter or leave the box to move it.",
    .placeholder = "Automatic"};

inline constexpr CardControl sdrplay[] = {
    {.key = "sample-rate",
     .caption = "Sample rate",
     .kind = CardKind::rate,
     .tooltip = "Hardware sample rate; changes require a restart. Automatic: decoder 10 MS/s, audio 2.048 MS/s. Rates "
                "below 8 MS/s capture less spectrum, so fewer bands fit one receiver."},
    {.key = "antenna",
     .caption = "Antenna",
     .kind = CardKind::choice,
     .tooltip = "Uses the configured API antenna. Changes apply live."},
    {.key = "usb-mode",
     .caption = "USB transfer",
     .kind = CardKind::choice,
     .tooltip =
         "Changes require a restart. Automatic: isochronous, the API's default, which reserves its USB bandwidth "
         "when the stream starts. Bulk takes whatever is left, so beside another streaming receiver on a USB "
         "2.0 hub it lost samples and dropped off.",
     .choices = usb_modes},
    audio_gain,
    correction,
    bandwidth,
    centre,
    {.key = "agc", .caption = "AGC", .kind = CardKind::check, .fallback = "on"},
    {.key = "gain-reduction",
     .caption = "IF reduction (dB)",
     .kind = CardKind::slider,
     .fallback = "50",
     .tooltip = "IF gain, increasing to the right. With AGC on, follows the actual API gain-change notifications; turn "
                "AGC off to adjust manually",
     .slider = {-59, -20, 1, SliderScale::negative, " dB", 0, false, 0, 0, "Maximum"}},
    {.key = "lna-state",
     .caption = "RF Gain",
     .kind = CardKind::choice,
     .fallback = "0",
     .tooltip = "Gain relative to maximum; states depend on model, capture frequency and antenna."},
    {.key = "rf-notch",
     .caption = "MW / FM notch",
     .kind = CardKind::check,
     .fallback = "off",
     .tooltip = "Hardware MW/FM broadcast notch; supported models only. Applies live."},
    {.key = "mw-notch",
     .caption = "MW notch (Hi-Z, RSPduo)",
     .kind = CardKind::check,
     .fallback = "off",
     .tooltip = "Separate RSPduo tuner-A Hi-Z MW notch. Applies live."},
};

inline constexpr CardControl rx888[] = {
    {.key = "rx888-attenuation",
     .caption = "HF attenuator (dB)",
     .kind = CardKind::slider,
     .fallback = "10",
     .tooltip =
         "Front-end step attenuator, 0.5 dB steps; applies live. Raise it when the RF badge reports an overload.",
     .slider = {0, 31.5, 0.5, SliderScale::plain, " dB", 1}},
    {.key = "rx888-gain",
     .caption = "VGA gain (dB)",
     .kind = CardKind::slider,
     .fallback = "0",
     .tooltip = "AD8370 variable-gain amplifier after the attenuator; applies live, and the applied step is "
                "approximate. Lower it when the RF badge reports an overload.",
     .slider = {-8, 32, 0.5, SliderScale::plain, " dB", 1}},
    {.key = "rx888-rate",
     .caption = "ADC sample rate",
     .kind = CardKind::choice,
     .fallback = "full",
     .tooltip = "The rate the ADC samples at. Full captures more spectrum; half covers all HF (160m-10m) at about half "
                "the host CPU. The decoders work on a narrower slice cut from it, shown as \"decoding\" on the "
                "Modes/Frequencies tab. Changes require a restart.",
     .choices = adc_rates},
    {.key = "rx888-coverage",
     .caption = "Coverage",
     .kind = CardKind::choice,
     .fallback = "bands",
     .tooltip = "Selected bands: one capture sized to the selection, at most 28.8 MHz wide. 0 Hz and up: one capture "
                "from 0 Hz, up to 28.8 MHz at half and 57.6 MHz at full ADC sample rate. Changes require a restart.",
     .choices = coverages},
    {.key = "rx888-bias-t",
     .caption = "Bias tee (antenna DC power)",
     .kind = CardKind::check,
     .fallback = "off",
     .tooltip = "Changes require a restart."},
    {.key = "rx888-reference",
     .caption = "External clock reference",
     .kind = CardKind::check,
     .fallback = "off",
     .tooltip = "Changes require a restart."},
    audio_gain,
    rx888_correction(),
    bandwidth,
    centre,
};

inline constexpr CardControl rtl_sdr[] = {
    {.key = "sample-rate",
     .caption = "Sample rate",
     .kind = CardKind::rate,
     .tooltip = "Hardware sample rate; changes require a restart. 225.001k to 300k or 900.001k to 3.2M."},
    {.key = "direct-sampling",
     .caption = "Direct sampling",
     .kind = CardKind::choice,
     .fallback = "auto",
     .tooltip = "Feeds the antenna straight to the converter, past the tuner, for HF up to 28.8 MHz. Automatic decides "
                "by the bands and what is known of the dongle. Changes require a restart.",
     .choices = direct_sampling},
    {.key = "agc", .caption = "Tuner AGC", .kind = CardKind::check, .fallback = "on"},
    {.key = "rtl-gain",
     .caption = "Tuner gain (dB)",
     .kind = CardKind::slider,
     .fallback = "25",
     .tooltip = "Gain of the dongle's tuner, which takes the nearest of its steps; applies live.",
     .slider = {-10, 60, 0.5, SliderScale::plain, " dB", 1}},
    {.key = "rtl-bias-t",
     .caption = "Bias tee (antenna DC power)",
     .kind = CardKind::check,
     .fallback = "off",
     .tooltip = "Changes require a restart."},
    rtl_correction(),
    audio_gain,
    bandwidth,
    centre,
};

}  // namespace gui::card_tables
