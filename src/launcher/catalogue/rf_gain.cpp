#include "launcher/catalogue/rf_gain.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include <fmt/format.h>

namespace launcher {
namespace {

enum class Antenna : std::uint8_t { any, hi_z };

struct Row {
  std::array<std::string_view, 3> models;
  Antenna antenna;
  double below_mhz;
  std::span<const std::uint8_t> attenuation;  ///< empty: not known
};

template <std::uint8_t... db>
constexpr std::array<std::uint8_t, sizeof...(db)> states{db...};
constexpr std::span<const std::uint8_t> unknown;
constexpr double above = std::numeric_limits<double>::infinity();

/// The receivers' gain reduction tables as the maker's API documents them. The first row that fits counts.
constexpr Row rows[] = {
    {{{"RSP1"}}, Antenna::any, 420, states<0, 24, 19, 43>},
    {{{"RSP1"}}, Antenna::any, 1000, states<0, 7, 19, 26>},
    {{{"RSP1"}}, Antenna::any, above, states<0, 5, 19, 24>},
    {{{"RSP2"}}, Antenna::hi_z, 60, states<0, 6, 12, 18, 37>},
    {{{"RSP2"}}, Antenna::hi_z, above, unknown},
    {{{"RSP2"}}, Antenna::any, 420, states<0, 10, 15, 21, 24, 34, 39, 45, 64>},
    {{{"RSP2"}}, Antenna::any, 1000, states<0, 7, 10, 17, 22, 41>},
    {{{"RSP2"}}, Antenna::any, above, states<0, 5, 21, 15, 15, 34>},
    {{{"RSPduo"}}, Antenna::hi_z, 60, states<0, 6, 12, 18, 37>},
    {{{"RSPduo"}}, Antenna::hi_z, above, unknown},
    {{{"RSP1A", "RSPduo"}}, Antenna::any, 60, states<0, 6, 12, 18, 37, 42, 61>},
    {{{"RSP1B"}}, Antenna::any, 50, states<0, 6, 12, 18, 37, 42, 61>},
    {{{"RSP1A", "RSP1B", "RSPduo"}}, Antenna::any, 420, states<0, 6, 12, 18, 20, 26, 32, 38, 57, 62>},
    {{{"RSP1A", "RSP1B", "RSPduo"}}, Antenna::any, 1000, states<0, 7, 13, 19, 20, 27, 33, 39, 45, 64>},
    {{{"RSP1A", "RSP1B", "RSPduo"}}, Antenna::any, above, states<0, 6, 12, 20, 26, 32, 38, 43, 62>},
    {{{"RSPdx", "RSPdxR2"}}, Antenna::any, 2, unknown},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     12,
     states<0, 3, 6, 9, 12, 15, 24, 27, 30, 33, 36, 39, 42, 45, 48, 51, 54, 57, 60>},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     50,
     states<0, 3, 6, 9, 12, 15, 18, 24, 27, 30, 33, 36, 39, 42, 45, 48, 51, 54, 57, 60>},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     60,
     states<0, 3, 6, 9, 12, 20, 23, 26, 29, 32, 35, 38, 44, 47, 50, 53, 56, 59, 62, 65, 68, 71, 74, 77, 80>},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     250,
     states<0, 3, 6, 9, 12, 15, 24, 27, 30, 33, 36, 39, 42, 45, 48, 51, 54, 57, 60, 63, 66, 69, 72, 75, 78, 81, 84>},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     420,
     states<0, 3, 6, 9, 12, 15, 18, 24, 27, 30, 33, 36, 39, 42, 45, 48, 51, 54, 57, 60, 63, 66, 69, 72, 75, 78, 81,
            84>},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     1000,
     states<0, 7, 10, 13, 16, 19, 22, 25, 31, 34, 37, 40, 43, 46, 49, 52, 55, 58, 61, 64, 67>},
    {{{"RSPdx", "RSPdxR2"}},
     Antenna::any,
     above,
     states<0, 5, 8, 11, 14, 17, 20, 32, 35, 38, 41, 44, 47, 50, 53, 56, 59, 62, 65>},
};

bool needs_antenna(std::string_view model) {
  return model == "RSP2" || model == "RSPduo";
}

bool fits(const Row& row, std::string_view model, std::string_view antenna, double frequency_hz) {
  return std::find(row.models.begin(), row.models.end(), model) != row.models.end() &&
         (row.antenna == Antenna::any || antenna == "HiZ") && frequency_hz < row.below_mhz * 1e6;
}

}  // namespace

std::optional<std::span<const std::uint8_t>> rf_gain_table(std::string_view model, std::string_view antenna,
                                                           double frequency_hz) {
  const bool in_range = frequency_hz >= 1000 && frequency_hz <= 2e9;
  if (!in_range || model.empty() || (needs_antenna(model) && antenna.empty())) return std::nullopt;
  const auto* const row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& candidate) {
    return fits(candidate, model, antenna, frequency_hz);
  });
  if (row == std::end(rows) || row->attenuation.empty()) return std::nullopt;
  return row->attenuation;
}

double rf_gain_frequency(double capture_centre_hz) {
  constexpr double offset = 8000;
  const double below = capture_centre_hz - offset;
  return std::min(below < 1000 ? capture_centre_hz + offset : below, 2e9);
}

void check_rf_gain_state(std::string_view model, std::string_view antenna, double frequency_hz, int state) {
  const auto table = rf_gain_table(model, antenna, frequency_hz);
  const int limit = table ? static_cast<int>(table->size()) : 256;
  if (state >= 0 && state < limit) return;
  throw std::runtime_error(fmt::format("RF gain state {} is not available with this antenna and frequency{}", state,
                                       table ? fmt::format(" (0-{})", limit - 1) : ""));
}

}  // namespace launcher
