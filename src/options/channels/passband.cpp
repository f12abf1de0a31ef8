#include "options/channels/passband.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace options {
namespace {

constexpr std::array<std::string_view, 4> modulation_texts{"USB", "LSB", "AM", "FM"};

}  // namespace

std::string_view modulation_text(Modulation modulation) {
  return modulation_texts.at(static_cast<std::size_t>(modulation));
}

std::optional<Modulation> parse_modulation(std::string_view text) {
  const auto* const found = std::find(modulation_texts.begin(), modulation_texts.end(), base::upper(text));
  if (found == modulation_texts.end()) return std::nullopt;
  return static_cast<Modulation>(found - modulation_texts.begin());
}

Passband passband(Modulation modulation, double dial, double bandwidth, double low_cut) {
  switch (modulation) {
    case Modulation::usb:
      return {dial + low_cut, dial + bandwidth};
    case Modulation::lsb:
      return {dial - bandwidth, dial - low_cut};
    case Modulation::am:
    case Modulation::fm:
      break;
  }
  return {dial - bandwidth / 2, dial + bandwidth / 2};
}

bool is_receivable(const Passband& band) {
  return band.lower >= 1000 && band.upper <= 2e9;
}

bool lies_in_capture(const Passband& band, double centre, double bandwidth) {
  return band.lower - centre >= -0.45 * bandwidth && band.upper - centre <= 0.45 * bandwidth;
}

}  // namespace options
