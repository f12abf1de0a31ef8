// The settings of a receiver's card as a table: one row for each control of each family, in their order on the card. No
// toolkit here. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/capture/capture.h"
#include "options/station.h"

namespace gui {

/// One entry of a drop-down.
struct CardChoice {
  std::string value;  ///< as the profile has it; empty is Automatic
  std::string text;
  bool operator==(const CardChoice&) const = default;
};

enum class CardKind : std::uint8_t {
  check,   ///< "on" and "off"
  choice,  ///< a drop-down of fixed words
  rate,    ///< a drop-down that a rate can be typed into
  entry,   ///< text, kept as typed
  slider,
};

/// How a slider stands for its value.
enum class SliderScale : std::uint8_t {
  plain,
  negative,  ///< the slider shows minus the value: a reduction as a gain
  decibel,   ///< the slider shows 20 log10 of the value
};

/// In units of the slider, then of the value. A value outside the slider's part of its range can be typed.
struct SliderLimits {
  double lowest = 0, highest = 0, step = 1;
  SliderScale scale = SliderScale::plain;
  const char* unit = "";                       ///< behind the number beside the slider
  int decimals = 0;                            ///< of the value
  bool typed = false;                          ///< there is a numeric entry beside the slider
  double lowest_value = 0, highest_value = 0;  ///< of the entry
  const char* highest_name = "";               ///< of the slider's right end
};

struct FixedChoice {
  const char* value;
  const char* text;
};

/// Texts are never null; an empty one is absent.
struct CardControl {
  const char* key;
  const char* caption;
  CardKind kind;
  const char* fallback = "";  ///< what a receiver without the key has
  const char* tooltip = "";
  const char* placeholder = "";               ///< of an empty entry
  std::span<const FixedChoice> choices = {};  ///< of a drop-down, unless choices_of() makes them
  SliderLimits slider = {};
};

/// What a card is decided from.
struct CardFacts {
  launcher::Family family = launcher::Family::sdrplay;
  std::string model;                  ///< empty on the card of defaults
  options::Profile settings;          ///< as effective_settings() gives them, or as the controls show them
  bool running = false;               ///< its engine runs, or for the defaults any does
  std::optional<double> centre = {};  ///< of its planned capture, Hz
  std::string direct_sampling = {};   ///< what Automatic comes to in the plan; empty without a plan
};

/// The family of a receiver; SDRplay for a `backend` that is none.
launcher::Family family_of(const options::Profile& settings);
std::span<const CardControl> card_controls(launcher::Family family);
/// The row of a key; null if the family has none.
const CardControl* find_control(launcher::Family family, std::string_view key);

/// The common settings with a receiver's own over them; none of them empty.
options::Profile effective_settings(const options::Profile& common, const options::Profile& own);
/// The value that a control shows: the setting, or what a receiver without it has.
std::string shown_setting(const CardControl& control, const options::Profile& settings);

struct ControlState {
  bool exists = true;
  bool sensitive = true;
  std::string tooltip;
  bool operator==(const ControlState&) const = default;
};
/// Whether the card has the control with these settings, whether it can be changed now, and what it says.
ControlState control_state(const CardControl& control, const CardFacts& facts);

/// The entries of a drop-down. A value that is none of the receiver's choices stands last, marked, so that it can be
/// seen and repaired.
std::vector<CardChoice> choices_of(const CardControl& control, const CardFacts& facts);

/// Whether an edit goes to the running engine, and not into the settings alone.
bool goes_live(const CardControl& control, const CardFacts& facts);

/// Whether the dongle's tuner is off: set, or what Automatic comes to.
bool samples_directly(const CardFacts& facts);
bool agc_is_on(const CardFacts& facts);

/// A number as the profile has it: no trailing zeros, a decimal point.
std::string plain_number(double value);
/// From a slider's position to the value and back. The position is brought into the slider's range.
double slider_value(const SliderLimits& limits, double position);
double slider_position(const SliderLimits& limits, double value);
/// The number beside a slider: "−40 dB", "12.5 dB"; "Maximum (−20 dB)" where its right end has a name.
std::string slider_text(const SliderLimits& limits, double position);

}  // namespace gui
