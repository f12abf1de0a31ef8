#include "gui/settings/settings_texts.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/callsign.h"
#include "base/locator.h"
#include "base/numbers.h"
#include "base/text.h"

namespace gui {
namespace {

constexpr int sizes[] = {0, 100, 125, 150, 175, 200, 225, 250};

}  // namespace

bool identity_is_valid(std::string_view callsign, std::string_view grid) {
  return base::is_callsign(base::upper(base::trim(callsign))) && base::is_locator(base::upper(base::trim(grid)));
}

std::string reporting_text(const ReportingFacts& facts) {
  if (facts.audio_mode) return "PSK Reporter: off in audio mode.";
  if (!facts.identity_valid)
    return "PSK Reporter: off. Enter a valid callsign and a 4, 6 or 8 character grid to enable reporting.";
  return facts.wanted ? "PSK Reporter: enabled. Station identity is valid."
                      : "PSK Reporter: off. Station identity is valid.";
}

RowState row_state(const SettingRow& row, bool receiving, bool may_report) {
  if (receiving && !row.live) return {false, "Stop reception to change this setting."};
  return {may_report || !row.needs_identity, row.tooltip};
}

std::span<const int> interface_sizes() {
  return sizes;
}

std::string interface_size_label(int percent, int automatic_percent) {
  return percent > 0 ? fmt::format("{} %", percent) : fmt::format("Automatic ({} %)", automatic_percent);
}

std::string interface_size_value(int percent) {
  return percent > 0 ? fmt::format("{}", percent) : "auto";
}

int interface_size_percent(std::string_view value) {
  const auto percent = base::parse_int(value).value_or(0);
  return std::ranges::count(sizes, percent) ? static_cast<int>(percent) : 0;
}

const char* const interface_size_tooltip =
    "The size of the launcher's text, controls and graphs. Automatic follows the scale of the monitor the window is on "
    "(Windows display scale, or the desktop's scale and text size on Linux) and changes as the window moves to another "
    "monitor.";

}  // namespace gui
