// The kinds of option: how a value is judged and where it is kept. Each maker gives one row of the option table.
#pragma once

#include <cmath>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include <fmt/format.h>

#include "options/option_values.h"
#include "options/receiver_options.h"

namespace options {

enum class Takes : std::uint8_t {
  value,   ///< "--name VALUE"
  flag,    ///< "--name" or "--no-name"
  nothing  ///< "--name"
};

/// What a number must be. `refusal` holds the words for one that is not; empty where only the check judges it.
struct Limits {
  double least = 0, most = 0;
  std::string_view refusal{};
  bool whole = false;
};

/// One row of the option table.
struct Option {
  std::string_view argument;  ///< "--gain-reduction"
  Takes takes = Takes::value;
  std::string_view placeholder{};  ///< of the value, for the help text
  std::string_view about{};        ///< for the help text
  /// Judges a value's text and stores it. A flag gets "true" or "false", an option without a value gets "".
  void (*set)(ReceiverOptions&, const Option&, std::string_view) = nullptr;
  /// The number kept now, for the second look at limits; null for anything but a number with limits.
  double (*current)(const ReceiverOptions&) = nullptr;
  Limits limits{};
  std::string_view words{};    ///< the fixed words that it takes, parted by '|'
  bool in_profile = true;      ///< a profile key too
  bool per_receiver = false;   ///< may differ between the receivers of a station
  bool empty_is_given = true;  ///< false: an empty value leaves the option as if it had not been there

  [[nodiscard]] constexpr std::string_view name() const { return argument.substr(2); }
};

namespace kinds {

using Set = void (*)(ReceiverOptions&, const Option&, std::string_view);

template <auto Group, auto Field>
void set_text(ReceiverOptions& options, const Option& option, std::string_view text) {
  if (text.empty() && !option.limits.refusal.empty()) throw std::runtime_error(std::string(option.limits.refusal));
  options.*Group.*Field = text;
}

template <auto Group, auto Field>
void set_number(ReceiverOptions& options, const Option& option, std::string_view text) {
  auto& field = options.*Group.*Field;
  using Value = std::remove_reference_t<decltype(field)>;
  const double value = parse_option_number(text);
  check_limits(value, option.limits, option.limits.whole || std::is_integral_v<Value>);
  field = static_cast<Value>(value);
}

template <auto Group, auto Field>
double current_number(const ReceiverOptions& options) {
  return static_cast<double>(options.*Group.*Field);
}

template <auto Group, auto Field>
void set_small_integer(ReceiverOptions& options, const Option&, std::string_view text) {
  options.*Group.*Field = parse_small_integer(text);
}

template <auto Group, auto Field>
void set_on_off(ReceiverOptions& options, const Option& option, std::string_view text) {
  if (text != "on" && text != "off") throw std::runtime_error(fmt::format("{} must be on or off", option.argument));
  options.*Group.*Field = text == "on";
}

template <auto Group, auto Field>
void set_flag(ReceiverOptions& options, const Option&, std::string_view text) {
  options.*Group.*Field = text != "false";
}

template <auto Group, auto Field>
void set_word(ReceiverOptions& options, const Option& option, std::string_view text) {
  const int index = word_index(option.words, text);
  if (index < 0) throw std::runtime_error(std::string(option.limits.refusal));
  auto& field = options.*Group.*Field;
  if constexpr (std::is_enum_v<std::remove_reference_t<decltype(field)>>)
    field = static_cast<std::remove_reference_t<decltype(field)>>(index);
  else
    field = text;
}

/// Any text; with a refusal, any but the empty one.
template <auto Group, auto Field>
constexpr Option text(std::string_view argument, std::string_view placeholder, std::string_view about,
                      std::string_view refusal = {}) {
  return {.argument = argument,
          .placeholder = placeholder,
          .about = about,
          .set = set_text<Group, Field>,
          .limits = {0, 0, refusal}};
}

/// A text whose empty value says nothing.
template <auto Group, auto Field>
constexpr Option optional_text(std::string_view argument, std::string_view placeholder, std::string_view about) {
  Option option = text<Group, Field>(argument, placeholder, about);
  option.empty_is_given = false;
  return option;
}

/// A decimal number, with k or M behind it if wanted; whole where the field is an integer.
template <auto Group, auto Field>
constexpr Option number(std::string_view argument, std::string_view placeholder, std::string_view about,
                        Limits limits = {}) {
  return {.argument = argument,
          .placeholder = placeholder,
          .about = about,
          .set = set_number<Group, Field>,
          .current = limits.refusal.empty() ? nullptr : current_number<Group, Field>,
          .limits = limits,
          .empty_is_given = false};
}

/// 0 to 255, without a suffix.
template <auto Group, auto Field>
constexpr Option small_integer(std::string_view argument, std::string_view about) {
  return {.argument = argument,
          .placeholder = "N",
          .about = about,
          .set = set_small_integer<Group, Field>,
          .empty_is_given = false};
}

template <auto Group, auto Field>
constexpr Option on_off(std::string_view argument, std::string_view about) {
  return {.argument = argument, .placeholder = "on|off", .about = about, .set = set_on_off<Group, Field>};
}

/// One of the fixed words, exact in case.
template <auto Group, auto Field>
constexpr Option word(std::string_view argument, std::string_view words, std::string_view about,
                      std::string_view refusal) {
  return {.argument = argument,
          .placeholder = words,
          .about = about,
          .set = set_word<Group, Field>,
          .limits = {0, 0, refusal},
          .words = words};
}

template <auto Group, auto Field>
constexpr Option flag(std::string_view argument, std::string_view about) {
  return {.argument = argument, .takes = Takes::flag, .about = about, .set = set_flag<Group, Field>};
}

/// Anything else with a value.
constexpr Option custom(std::string_view argument, std::string_view placeholder, std::string_view about, Set set) {
  return {.argument = argument, .placeholder = placeholder, .about = about, .set = set};
}

/// A custom list: an empty value says nothing.
constexpr Option list(std::string_view argument, std::string_view placeholder, std::string_view about, Set set) {
  Option option = custom(argument, placeholder, about, set);
  option.empty_is_given = false;
  return option;
}

constexpr Option command_line(Option option) {
  option.in_profile = false;
  return option;
}

/// A switch of the command line alone.
constexpr Option action(std::string_view argument, std::string_view about, Set set) {
  return command_line({.argument = argument, .takes = Takes::nothing, .about = about, .set = set});
}

/// An option that stands in the table only to be refused, in these words.
constexpr Option refused(Option option, std::string_view words) {
  option.limits.refusal = words;
  return option;
}

constexpr Option per_receiver(Option option) {
  option.per_receiver = true;
  return option;
}

}  // namespace kinds
}  // namespace options
