#include "gui/settings/settings_rows.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/numbers.h"

namespace gui {
namespace {

constexpr SettingRow station_rows[] = {
    {.key = "callsign", .label = "Callsign", .control = RowControl::text},
    {.key = "grid", .label = "Maidenhead grid", .control = RowControl::text},
    {.key = "pskreporter",
     .label = "Send spots to PSK Reporter",
     .control = RowControl::check,
     .fallback = "false",
     .live = true,
     .needs_identity = true},
    {.key = "wsprnet",
     .label = "Send WSPR spots to WSPRnet",
     .control = RowControl::check,
     .fallback = "false",
     .tooltip = "Optional live WSPRnet uploads; independent of PSK Reporter uploads, which also include WSPR.",
     .live = true,
     .needs_identity = true},
    {.key = "known-channels-report",
     .label = "Send PSK, CW, RTTY and Olivia callsigns (known-frequency channels) to PSK Reporter",
     .control = RowControl::check,
     .fallback = "false",
     .tooltip =
         "Off by default. Callsigns read from PSK, CW, RTTY and Olivia are less sure than FT8 ones (a CW callsign "
         "can lose its first letter), so they are shown on the Live Text Modes tab but not sent anywhere unless "
         "this is ticked. JTTY spots are as sure as FT8 ones and go with them whenever \"Send spots to PSK "
         "Reporter\" is ticked. Takes effect when the receivers are next started.",
     .live = true},
    {.key = "online-callsign-check",
     .label = "Also check PSK, CW, RTTY and Olivia callsigns against live spots online",
     .control = RowControl::check,
     .fallback = "true",
     .tooltip = "Callsigns read from PSK, CW, RTTY and Olivia are always checked against lists of known callsigns, and "
                "count as surer when they are read again. With this ticked, the receivers also look whether a callsign "
                "was spotted online in the last hour. What is decoded is shown either way. "
                "Apply and Save changes it on the running receivers without restarting them.",
     .live = true},
};

constexpr SettingRow output_rows[] = {
    {.key = "all-txt",
     .label = "ALL.TXT",
     .control = RowControl::path,
     .fallback = "ALL.TXT",
     .fallback_is_state_file = true,
     .help = "Decoder spots append in WSJT-X format. Existing files are preserved."},
    {.key = "wav",
     .label = "Audio WAV (optional)",
     .control = RowControl::path,
     .help = "Virtual audio mode only. Blank leaves recording off."},
    {.key = "sink",
     .label = "Custom audio sink",
     .control = RowControl::path,
     .help = "Virtual audio mode only. Blank creates the standard decoder input."},
};

constexpr SettingRow decoder_rows[] = {
    {.key = "js8-decoder",
     .label = "JS8 decoder program",
     .control = RowControl::path,
     .help = "Path to the separately built js8-wav program; default js8-wav on PATH."},
    {.key = "wspr-decoder",
     .label = "WSPR decoder program",
     .control = RowControl::path,
     .help = "Path to wsprd from the installed WSJT-X package; default wsprd on PATH."},
    {.key = "history-db",
     .label = "History database",
     .control = RowControl::path,
     .fallback = "history.sqlite3",
     .fallback_is_state_file = true,
     .help = "Use off to disable recording. Receiver services keep recording while this GUI is closed."},
    {.key = "history-days",
     .label = "History retention (days)",
     .control = RowControl::number,
     .fallback = "7",
     .limits = {1, 365}},
    {.key = "workers",
     .label = "Workers (0 = auto)",
     .control = RowControl::number,
     .fallback = "0",
     .unwritten = "0",
     .limits = {0, 32}},
    {.key = "decode-depth",
     .label = "Decode depth",
     .control = RowControl::number,
     .fallback = "2",
     .limits = {1, 3},
     .live = true},
    {.key = "decoder-timeout",
     .label = "Job timeout (seconds)",
     .control = RowControl::number,
     .fallback = "12",
     .limits = {0.1, 60, 0.5, 1}},
    {.key = "wspr-timeout",
     .label = "WSPR timeout (seconds)",
     .control = RowControl::number,
     .fallback = "60",
     .limits = {1, 110},
     .tooltip = "WSPR decodes run on a two-minute cycle and can take much longer than the other modes on a busy band."},
    {.key = "stats",
     .label = "Include periodic receiver and decoder statistics",
     .control = RowControl::check,
     .fallback = "true"},
};

constexpr SettingCard cards[] = {
    {"STATION & SPOTTING", station_rows,
     "Reporting uses your receiving station identity. Changes take effect when you start reception again."},
    {"OUTPUT FILES", output_rows,
     "Virtual audio creates sdrplay_rx_input for your desktop decoder. External decoding uses jt9 without a desktop "
     "audio feed."},
    {"DECODER OPTIONS", decoder_rows,
     "Loaded CLI settings without a dedicated control are retained when compatible with the selected mode."},
};

}  // namespace

std::span<const SettingCard> setting_cards() {
  return cards;
}

std::string number_text(const SettingRow& row, double number) {
  const NumberLimits& limits = row.limits;
  return fmt::format("{:.{}f}", std::clamp(number, limits.lowest, limits.highest), limits.decimals);
}

std::string shown_value(const SettingRow& row, const options::Profile& profile, const std::string& state_directory) {
  const auto found = profile.find(row.key);
  const bool given = found != profile.end();
  switch (row.control) {
    case RowControl::check: {
      const std::string value = given ? found->second : row.fallback;
      return value == "true" ? value : "false";
    }
    case RowControl::number: {
      const auto number = given ? base::parse_double(found->second) : std::nullopt;
      return number_text(row, number ? *number : base::parse_double(row.fallback).value());
    }
    default:
      if (given) return found->second;
      return row.fallback_is_state_file ? state_directory + "/" + row.fallback : row.fallback;
  }
}

void write_value(const SettingRow& row, const std::string& value, options::Profile& profile) {
  // A file with a place of its own is never left to be guessed: a blank one is judged by the option check.
  if (value == row.unwritten && !row.fallback_is_state_file)
    profile.erase(row.key);
  else
    profile[row.key] = value;
}

}  // namespace gui
