// The drop-downs whose entries depend on the receiver: sample rates with what each captures, and RF gain states with
// what each attenuates. No toolkit here. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gui/config/card_controls.h"

namespace gui {

/// "Automatic (10 MS/s decoding · 7.2 MHz)", "2.048 MS/s · 1.38 MHz, one band", … with their values in Hz.
std::vector<CardChoice> rate_choices(launcher::Family family);
/// The value of what was chosen or typed: an entry's value, a typed number without its k or M, or else the text itself.
std::string rate_value(launcher::Family family, std::string_view text);
/// What stands in the box for a value: the entry of that rate, or the value itself.
std::string rate_text(launcher::Family family, std::string_view value);
/// A span in Hz that no two bands fit into.
bool holds_one_band(double span);

/// Where the gain of a receiver is looked up.
struct GainPlace {
  std::string model;
  std::string antenna;
  std::optional<double> centre;  ///< of the capture, Hz
};
/// "State 2 · −19 dB"; the numbers alone where the attenuation is not known.
std::vector<CardChoice> gain_choices(const GainPlace& place);
std::string gain_tooltip(const GainPlace& place);

/// The antennas of a model, those of all models for one that is not known. "Automatic" stands first, unless the
/// receiver runs on another one: an engine cannot be told to choose.
std::vector<CardChoice> antenna_choices(std::string_view model, std::string_view now, bool running);

}  // namespace gui
