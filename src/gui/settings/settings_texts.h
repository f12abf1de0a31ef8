// What the Settings tab says and allows, decided from plain values. No toolkit here. Any thread.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "gui/settings/settings_rows.h"

namespace gui {

/// Whether a station may report under this callsign and grid: both well-formed, in letters of either size, blanks
/// around them allowed.
bool identity_is_valid(std::string_view callsign, std::string_view grid);

struct ReportingFacts {
  bool audio_mode = false;
  bool identity_valid = false;
  bool wanted = false;  ///< "Send spots to PSK Reporter"
};
/// The reporting state under STATION & SPOTTING.
std::string reporting_text(const ReportingFacts& facts);

struct RowState {
  bool sensitive = true;
  std::string tooltip;
};
/// `may_report`: the identity is valid and the mode is not audio.
RowState row_state(const SettingRow& row, bool receiving, bool may_report);

/// The fixed interface sizes, in percent; 0 stands for automatic.
std::span<const int> interface_sizes();
/// "150 %", or "Automatic ({n} %)" with what it comes to now.
std::string interface_size_label(int percent, int automatic_percent);
/// The form in which a size is kept: "auto" or "150". What is none of the sizes reads as automatic.
std::string interface_size_value(int percent);
int interface_size_percent(std::string_view value);

extern const char* const interface_size_tooltip;

}  // namespace gui
