// The kinds of signal that the analysis decoders tell apart, and their names in channel specifications and output
// lines. Constant data, any thread.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace sig {

/// Values are stored: append only.
enum class SignalMode : std::uint8_t {
  unknown,
  psk31,
  qpsk31,
  psk63,
  rtty,
  olivia,
  cw,
  wefax,
  sstv,
  jtty,
  msk144,
};

inline constexpr std::array<std::string_view, 11> signal_mode_texts{
    "UNKNOWN", "PSK31", "QPSK31", "PSK63", "RTTY", "OLIVIA", "CW", "WEFAX", "SSTV", "JTTY", "MSK144"};

/// "PSK31", ...; "UNKNOWN" for a value outside the enumeration.
constexpr std::string_view signal_mode_text(SignalMode mode) {
  const auto index = static_cast<std::size_t>(mode);
  return signal_mode_texts[index < signal_mode_texts.size() ? index : 0];
}

/// Exact and case-sensitive, "UNKNOWN" included.
constexpr std::optional<SignalMode> parse_signal_mode(std::string_view text) {
  for (std::size_t i = 0; i < signal_mode_texts.size(); ++i)
    if (signal_mode_texts[i] == text) return static_cast<SignalMode>(i);
  return std::nullopt;
}

/// What a channel set to `auto` listens for, in the decoders' order.
inline constexpr std::array<SignalMode, 6> automatic_modes{SignalMode::cw,    SignalMode::psk31, SignalMode::qpsk31,
                                                           SignalMode::psk63, SignalMode::rtty,  SignalMode::olivia};

}  // namespace sig
