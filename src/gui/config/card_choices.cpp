#include "gui/config/card_choices.h"

#include <algorithm>
#include <array>
#include <limits>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "launcher/capability.h"
#include "launcher/catalogue/bands.h"
#include "launcher/catalogue/receiver_models.h"
#include "launcher/catalogue/rf_gain.h"

namespace gui {
namespace {

using launcher::Family;
using launcher::mega_text;

constexpr std::array sdrplay_rates{2048e3, 3e6, 4e6, 5e6, 6e6, 7e6, 8e6, 10e6};
constexpr std::array rtl_rates{250e3, 1024e3, 1536e3, 2048e3, 2400e3, 2560e3, 3200e3};
constexpr std::array<std::string_view, 4> every_antenna{"A", "B", "C", "HiZ"};
// As many states as the largest of all tables has.
constexpr int most_states = 28;

/// What the tuner's filter leaves of a rate.
double usable_span(Family family, double rate) {
  return 0.9 * (family == Family::sdrplay ? launcher::sdrplay_filter_bandwidth(rate) : rate);
}

std::string rate_label(Family family, double rate) {
  const double span = usable_span(family, rate);
  return fmt::format("{} MS/s · {} MHz{}", mega_text(rate, 3), mega_text(span, 2),
                     holds_one_band(span) ? ", one band" : "");
}

std::string automatic_label(Family family) {
  const bool sdrplay = family == Family::sdrplay;
  const double rate = sdrplay ? 10e6 : 2.4e6;
  return fmt::format("Automatic ({} MS/s{} · {} MHz)", mega_text(rate, 3), sdrplay ? " decoding" : "",
                     mega_text(usable_span(family, rate), 2));
}

std::optional<double> gain_frequency(const GainPlace& place) {
  if (!place.centre) return std::nullopt;
  return launcher::rf_gain_frequency(*place.centre);
}

std::optional<std::span<const std::uint8_t>> gain_table(const GainPlace& place) {
  const auto frequency = gain_frequency(place);
  if (!frequency) return std::nullopt;
  return launcher::rf_gain_table(place.model, place.antenna, *frequency);
}

/// The states that the model has at any frequency.
int state_count(const std::string& model) {
  std::size_t most = 0;
  for (const double frequency : {10e6, 30e6, 55e6, 100e6, 300e6, 500e6, 1500e6})
    if (const auto table = launcher::rf_gain_table(model, "A", frequency)) most = std::max(most, table->size());
  return most == 0 ? most_states : static_cast<int>(most);
}

}  // namespace

bool holds_one_band(double span) {
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < launcher::band_presets.size(); ++i)
    least = std::min(least, launcher::band_presets[i].ft8 - launcher::band_presets[i - 1].ft8);
  return span < least;
}

std::vector<CardChoice> rate_choices(Family family) {
  std::vector<CardChoice> choices{{"", automatic_label(family)}};
  const auto add = [&](double rate) { choices.push_back({plain_number(rate), rate_label(family, rate)}); };
  if (family == Family::sdrplay)
    std::for_each(sdrplay_rates.begin(), sdrplay_rates.end(), add);
  else
    std::for_each(rtl_rates.begin(), rtl_rates.end(), add);
  return choices;
}

std::string rate_value(Family family, std::string_view text) {
  const std::string_view typed = base::trim(text);
  for (const CardChoice& choice : rate_choices(family))
    if (choice.text == typed) return choice.value;
  if (base::lower(typed) == "automatic") return "";
  const auto number = base::parse_scaled(typed);
  return number ? plain_number(*number) : std::string(typed);
}

std::string rate_text(Family family, std::string_view value) {
  const auto rate = base::parse_scaled(value);
  for (const CardChoice& choice : rate_choices(family))
    if (choice.value == (rate ? plain_number(*rate) : std::string(value))) return choice.text;
  return std::string(value);
}

std::vector<CardChoice> gain_choices(const GainPlace& place) {
  const auto table = gain_table(place);
  std::vector<CardChoice> choices;
  const int count = table ? static_cast<int>(table->size()) : state_count(place.model);
  for (int state = 0; state < count; ++state)
    choices.push_back({std::to_string(state),
                       table ? fmt::format("State {} · −{} dB", state, (*table)[static_cast<std::size_t>(state)])
                             : fmt::format("State {}", state)});
  return choices;
}

std::string gain_tooltip(const GainPlace& place) {
  if (!gain_table(place)) return std::string(launcher::rf_gain_unknown);
  return fmt::format(
      "Reduction from maximum RF gain for {} at {} MHz. Applies to the whole capture; separate from IF and audio gain.",
      place.model, mega_text(gain_frequency(place).value_or(0), 3));
}

std::vector<CardChoice> antenna_choices(std::string_view model, std::string_view now, bool running) {
  std::vector<CardChoice> choices;
  if (!running || now.empty()) choices.push_back({"", "Automatic"});
  std::span<const std::string_view> antennas = launcher::model_antennas(model);
  if (!launcher::model_notches(model).known) antennas = every_antenna;
  for (const std::string_view antenna : antennas)
    choices.push_back({std::string(antenna), std::string(antenna)});
  return choices;
}

}  // namespace gui
