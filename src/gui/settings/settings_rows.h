// The settings of the station as a table: one row for each profile key with a control on the Settings tab. No toolkit
// here. Any thread.
#pragma once

#include <span>
#include <string>

#include "options/profile.h"

namespace gui {

enum class RowControl {
  text,    ///< a short entry beside its label
  path,    ///< an entry as wide as the card, below its label
  check,   ///< a box to tick that carries the label
  number,  ///< a spin button
};

struct NumberLimits {
  double lowest = 0;
  double highest = 0;
  double step = 1;
  int decimals = 0;
};

/// Texts are never null; an empty one is absent.
struct SettingRow {
  const char* key;  ///< of the profile
  const char* label;
  RowControl control;
  const char* fallback = "";            ///< the value of a profile without the key
  bool fallback_is_state_file = false;  ///< `fallback` names a file in the state directory
  const char* unwritten = "";           ///< the value that writes no key
  NumberLimits limits = {};             ///< of a number
  const char* help = "";                ///< of a path: a line under the control
  const char* tooltip = "";
  bool live = false;            ///< may be changed while receivers run
  bool needs_identity = false;  ///< off without a callsign and grid, and in audio mode
};

struct SettingCard {
  const char* heading;
  std::span<const SettingRow> rows;
  const char* closing_line;
};

/// "STATION & SPOTTING", "OUTPUT FILES" and "DECODER OPTIONS", in this order.
std::span<const SettingCard> setting_cards();

/// What the row's control shows for a profile: the value, brought into the row's limits and form, or the fallback. A
/// text's bytes stand as in the profile.
std::string shown_value(const SettingRow& row, const options::Profile& profile, const std::string& state_directory);
/// Puts what a control holds into a profile: sets the row's key, or erases it for the row's unwritten value.
void write_value(const SettingRow& row, const std::string& value, options::Profile& profile);

/// A number as the row writes it: with its decimals, and within its limits.
std::string number_text(const SettingRow& row, double number);

}  // namespace gui
