#include "receiver/live_pairs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"

namespace receiver {
namespace {

[[noreturn]] void fail(const std::string& words) {
  throw std::runtime_error(words);
}

bool is_number(const std::string& value) {
  const auto number = base::parse_scaled(value);
  return number && std::isfinite(*number);
}

void judge_number(const std::string&, const std::string& value) {
  if (!is_number(value)) fail("Invalid live SDR value: " + value);
}

void judge_rf_state(const std::string&, const std::string& value) {
  constexpr std::uint64_t highest = 255;
  const auto state = base::parse_unsigned(value);
  if (!state || *state > highest) fail("Invalid live SDR value: " + value);
}

/// dB below full IF gain, as the API takes it.
void judge_if_gain(const std::string&, const std::string& value) {
  constexpr double least = 20, most = 59;
  const auto number = base::parse_double(value);
  if (!number || *number < least || *number > most || *number != std::floor(*number)) fail("Invalid IF gain reduction");
}

void judge_antenna(const std::string&, const std::string& value) {
  constexpr std::size_t longest = 16;
  const bool plain = std::all_of(value.begin(), value.end(), [](char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
  });
  if (!plain || value.size() > longest) fail("Invalid antenna name");
}

void judge_switch(const std::string& key, const std::string& value) {
  if (value != "on" && value != "off") fail(fmt::format("{} must be on or off", key));
}

void judge_attenuation(const std::string&, const std::string& value) {
  constexpr double most = 31.5;
  const auto number = base::parse_double(value);
  if (!number || !(*number >= 0 && *number <= most) || *number * 2 != std::floor(*number * 2))
    fail("rx888-attenuation is 0..31.5 dB in 0.5 dB steps");
}

struct Rule {
  std::string_view key;
  void (*judge)(const std::string& key, const std::string& value);
};
constexpr std::array rules{
    Rule{"gain-reduction", judge_if_gain},
    Rule{"lna-state", judge_rf_state},
    Rule{"agc", judge_switch},
    Rule{"antenna", judge_antenna},
    Rule{"ppm", judge_number},
    Rule{"rf-notch", judge_switch},
    Rule{"mw-notch", judge_switch},
    Rule{"bias-t", judge_switch},
    Rule{"rx888-attenuation", judge_attenuation},
    Rule{"rx888-gain", judge_number},
    Rule{"rtl-gain", judge_number},
    Rule{"center-frequency", judge_number},
};

}  // namespace

Settings parse_live_pairs(std::string_view list) {
  if (list.empty()) fail("No live SDR settings supplied");
  Settings settings;
  if (list.back() == ',') fail("Trailing comma in live SDR settings");
  for (const std::string_view pair : base::split(list, ',')) {
    const auto equals = pair.find('=');
    if (equals == std::string_view::npos || equals == 0 || equals + 1 == pair.size())
      fail("Live SDR settings need nonempty key=value pairs");
    const std::string key(pair.substr(0, equals)), value(pair.substr(equals + 1));
    if (!settings.emplace(key, value).second) fail("Duplicate live SDR setting: " + key);
    const auto* const rule =
        std::find_if(rules.begin(), rules.end(), [&key](const Rule& each) { return each.key == key; });
    if (rule == rules.end()) fail("Setting requires restart or is unsupported live: " + key);
    rule->judge(key, value);
  }
  return settings;
}

std::string format_pairs(const Settings& settings) {
  std::string list;
  for (const auto& [key, value] : settings)
    list += fmt::format("{}{}={}", list.empty() ? "" : ",", key, value);
  return list;
}

}  // namespace receiver
