// The seven digital modes as the engine names them, and what depends on them: cycle length and dashboard.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace results {

/// The dashboards, rate stores and decode panes come one per family.
enum class Family { ft, js8, wspr };

struct DecodeMode {
  std::string_view text;  ///< "JS8-FAST", as in lines and profiles
  double cycle_seconds;   ///< transmit period
  int cycle_samples;      ///< the period at 12000 samples a second; 0 where none is used
  Family family;
};

/// Tables by mode are indexed in this order.
inline constexpr std::array<DecodeMode, 7> decode_modes{{
    {"FT8", 15, 0, Family::ft},
    {"FT4", 7.5, 90000, Family::ft},
    {"JS8", 15, 180000, Family::js8},
    {"JS8-FAST", 10, 120000, Family::js8},
    {"JS8-TURBO", 6, 72000, Family::js8},
    {"JS8-SLOW", 30, 360000, Family::js8},
    {"WSPR", 120, 1440000, Family::wspr},
}};

/// Null for a text that names no mode.
constexpr const DecodeMode* find_mode(std::string_view text) {
  for (const auto& mode : decode_modes)
    if (mode.text == text) return &mode;
  return nullptr;
}

/// The mode's place in decode_modes; -1 for none.
constexpr int mode_index(std::string_view text) {
  const DecodeMode* mode = find_mode(text);
  return mode ? static_cast<int>(mode - decode_modes.data()) : -1;
}

/// Seconds; a mode that we do not know is taken for one of 15 seconds.
constexpr double cycle_seconds(std::string_view text) {
  const DecodeMode* mode = find_mode(text);
  return mode ? mode->cycle_seconds : 15;
}

/// Modes that we do not know are shown with FT8 and FT4.
constexpr Family family_of(std::string_view text) {
  const DecodeMode* mode = find_mode(text);
  return mode ? mode->family : Family::ft;
}

}  // namespace results
