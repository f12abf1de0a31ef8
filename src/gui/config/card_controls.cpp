#include "gui/config/card_controls.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "gui/config/card_choices.h"
#include "gui/config/card_tables.h"
#include "launcher/catalogue/receiver_models.h"
#include "launcher/receiver_overlay.h"
#include "launcher/setting_kinds.h"

namespace gui {
namespace {

using launcher::Family;
using launcher::value_or;

constexpr const char* stop_first = "Stop reception to change this setting.";

bool is(const CardControl& control, std::string_view key) {
  return control.key == key;
}

std::string_view antenna_of(const CardFacts& facts) {
  return value_or(facts.settings, "antenna", "");
}

/// A notch that the model lacks is offered only to be turned off.
ControlState notch_state(const CardControl& control, const CardFacts& facts, bool fitted, const char* not_fitted) {
  ControlState state;
  const bool may_have = fitted || !launcher::model_notches(facts.model).known;
  state.exists = may_have || shown_setting(control, facts.settings) == "on";
  state.tooltip = may_have ? control.tooltip : not_fitted;
  return state;
}

ControlState state_by_model(const CardControl& control, const CardFacts& facts) {
  const launcher::ModelNotches notches = launcher::model_notches(facts.model);
  if (is(control, "rf-notch"))
    return notch_state(control, facts, notches.rf_notch,
                       "This receiver has no switchable MW/FM notch. Turn off any imported enabled setting.");
  if (is(control, "mw-notch"))
    return notch_state(control, facts, notches.mw_notch,
                       "Separate Hi-Z MW notch is available only on RSPduo; turn off any imported enabled setting.");
  ControlState state{true, true, control.tooltip};
  if (is(control, "antenna"))
    state.exists = !notches.known || !launcher::model_antennas(facts.model).empty() || !antenna_of(facts).empty();
  if (is(control, "rtl-gain")) state.exists = !agc_is_on(facts) && !samples_directly(facts);
  if (is(control, "gain-reduction")) state.sensitive = !agc_is_on(facts);
  if (is(control, "lna-state"))
    state.tooltip += "\n" + gain_tooltip({facts.model, std::string(antenna_of(facts)), facts.centre});
  return state;
}

}  // namespace

Family family_of(const options::Profile& settings) {
  return launcher::parse_family(value_or(settings, "backend", "sdrplay")).value_or(Family::sdrplay);
}

std::span<const CardControl> card_controls(Family family) {
  switch (family) {
    case Family::rx888:
      return card_tables::rx888;
    case Family::rtl_sdr:
      return card_tables::rtl_sdr;
    default:
      return card_tables::sdrplay;
  }
}

const CardControl* find_control(Family family, std::string_view key) {
  for (const CardControl& control : card_controls(family))
    if (control.key == key) return &control;
  return nullptr;
}

options::Profile effective_settings(const options::Profile& common, const options::Profile& own) {
  options::Profile settings = own;
  settings.insert(common.begin(), common.end());
  std::erase_if(settings, [](const auto& setting) { return setting.second.empty(); });
  return settings;
}

std::string shown_setting(const CardControl& control, const options::Profile& settings) {
  return std::string(value_or(settings, control.key, control.fallback));
}

ControlState control_state(const CardControl& control, const CardFacts& facts) {
  ControlState state = state_by_model(control, facts);
  if (facts.running && !launcher::is_sent_at_once(control.key, facts.family)) return {state.exists, false, stop_first};
  return state;
}

std::vector<CardChoice> choices_of(const CardControl& control, const CardFacts& facts) {
  std::vector<CardChoice> choices;
  for (const FixedChoice& choice : control.choices)
    choices.push_back({choice.value, choice.text});
  const std::string antenna(antenna_of(facts));
  if (is(control, "antenna")) choices = antenna_choices(facts.model, antenna, facts.running);
  if (is(control, "lna-state")) choices = gain_choices({facts.model, antenna, facts.centre});
  const std::string now = shown_setting(control, facts.settings);
  const bool offered =
      std::any_of(choices.begin(), choices.end(), [&](const CardChoice& choice) { return choice.value == now; });
  if (!offered)
    choices.push_back(
        {now, fmt::format("{}{} (unavailable)", is(control, "lna-state") ? "State " : "", base::valid_utf8(now))});
  return choices;
}

bool goes_live(const CardControl& control, const CardFacts& facts) {
  return facts.running && launcher::is_sent_at_once(control.key, facts.family);
}

bool samples_directly(const CardFacts& facts) {
  if (facts.family != Family::rtl_sdr) return false;
  std::string_view setting = value_or(facts.settings, "direct-sampling", "auto");
  if (setting == "auto") setting = facts.direct_sampling;
  return setting == "i" || setting == "q" || setting == "q-check";
}

bool agc_is_on(const CardFacts& facts) {
  return facts.family != Family::rx888 && value_or(facts.settings, "agc", "on") != "off";
}

std::string plain_number(double value) {
  return fmt::format("{:.15g}", value == 0 ? 0 : value);
}

double slider_value(const SliderLimits& limits, double position) {
  const double reached = std::clamp(position, limits.lowest, limits.highest);
  const double value = limits.scale == SliderScale::negative  ? -reached
                       : limits.scale == SliderScale::decibel ? std::pow(10, reached / 20)
                                                              : reached;
  const double grain = std::pow(10, limits.decimals);
  return std::round(value * grain) / grain;
}

double slider_position(const SliderLimits& limits, double value) {
  const double position = limits.scale == SliderScale::negative  ? -value
                          : limits.scale == SliderScale::decibel ? (value > 0 ? 20 * std::log10(value) : limits.lowest)
                                                                 : value;
  return std::clamp(position, limits.lowest, limits.highest);
}

std::string slider_text(const SliderLimits& limits, double position) {
  const double grain = std::pow(10, limits.decimals);
  const double shown = std::round(position * grain) / grain;
  const std::string number = fmt::format("{}{}{}", shown < 0 ? "−" : "", plain_number(std::abs(shown)), limits.unit);
  const bool named = *limits.highest_name != '\0' && position >= limits.highest;
  return named ? fmt::format("{} ({})", limits.highest_name, number) : number;
}

}  // namespace gui
