// What decoding the known frequencies costs in CPU, and the words for it. Any thread.
// The figures were measured per band with nothing to decode; busy bands take more.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/catalogue/known_filters.h"

namespace known_cost {

/// One kind of signal, in the order of sig::filter_words.
struct ModeCost {
  std::string_view kind;   ///< its filter word
  std::string_view shown;  ///< its name on screen
  double cores{};          ///< per ticked band
};

inline constexpr std::array<ModeCost, 8> mode_costs{{
    {"cw", "CW", 0.04},
    {"psk31", "PSK31", 0.04},
    {"rtty", "RTTY", 0.07},
    {"olivia", "Olivia", 0.08},
    {"jtty", "JTTY", 0.01},
    {"sstv", "SSTV", 0.0},
    {"wefax", "WEFAX", 0.01},
    {"msk144", "MSK144", 0.06},
}};

/// Cores for one kind on one band in catalogue form ("20"); on a typical band when it is empty. Zero for no such kind.
double cost(std::string_view kind, std::string_view band);

/// The physical cores of this PC, at least 1. Read once.
int physical_cores();
/// The distinct sets of thread siblings among cpu0..cpu{logical-1} below `directory`; `logical` when none can be read.
int count_physical_cores(const std::string& directory, int logical);

/// One decimal below 10 cores, none from there on.
std::string format_cores(double cores);

struct Estimate {
  std::string line;
  bool warning = false;  ///< more than half of the PC
};
/// What the kinds that pass the filters cost on the ticked bands ("20", "70cm"); nullopt when they cost nothing. The
/// caller asks only while the known frequencies are on at all.
std::optional<Estimate> estimate(const sig::KnownFilters& filters, const std::vector<std::string>& bands, int cores);

/// The tooltip of a box that turns a kind on; nothing for a kind that costs nothing on these bands.
std::string cost_tooltip(std::string_view kind, const std::vector<std::string>& bands);

}  // namespace known_cost
