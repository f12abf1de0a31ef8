// What thins out the known channels: the values of `known-modes`, `known-band-modes` and `fax-channels`. Everything
// throws std::runtime_error in the command line's words. Any thread.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "launcher/catalogue/bands.h"
#include "launcher/catalogue/known_channels.h"
#include "launcher/catalogue/mode_set.h"

namespace sig {

/// A word by which the operator names one kind or several.
struct FilterWord {
  std::string_view word;
  ModeSet kinds;
};

inline constexpr std::array<FilterWord, 8> filter_words{{
    {"cw", {SignalMode::cw}},
    {"psk31", {SignalMode::psk31, SignalMode::qpsk31, SignalMode::psk63}},
    {"rtty", {SignalMode::rtty}},
    {"olivia", {SignalMode::olivia}},
    {"jtty", {SignalMode::jtty}},
    {"sstv", {SignalMode::sstv}},
    {"wefax", {SignalMode::wefax}},
    {"msk144", {SignalMode::msk144}},
}};

/// One entry of `known-band-modes`.
struct BandFilter {
  const launcher::BandPreset* band{};
  ModeSet excluded;
};

/// A parsed set of filters; the default lets every row pass.
struct KnownFilters {
  ModeSet excluded;                                     ///< by `known-modes`; unused when `bands` is there
  std::optional<std::vector<BandFilter>> bands;         ///< other bands have no known channels at all
  std::optional<std::vector<const KnownChannel*>> fax;  ///< the fax rows that pass; absent: all of them
};

/// The kinds that "all", "none" or a comma list of filter words excludes. Case and spaces don't matter.
ModeSet parse_known_modes(std::string_view value);
std::vector<BandFilter> parse_known_band_modes(std::string_view value);
/// Empty or "none" gives no row; repeats count once.
std::vector<const KnownChannel*> parse_fax_channels(std::string_view value);

/// All three as a profile holds them; nullopt where a key is absent.
KnownFilters parse_known_filters(std::optional<std::string_view> known_modes,
                                 std::optional<std::string_view> known_band_modes,
                                 std::optional<std::string_view> fax_channels);

}  // namespace sig
