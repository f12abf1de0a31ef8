#include "options/command_line.h"

#include <span>
#include <stdexcept>

#include <fmt/format.h>

#include "options/check.h"
#include "options/option_table.h"

namespace options {
namespace {

[[noreturn]] void unknown_option(std::string_view argument) {
  throw std::runtime_error(fmt::format("Unknown option: {}", argument));
}

void apply(ReceiverOptions& options, const Option& option, std::string_view text) {
  const bool given = option.empty_is_given || !text.empty();
  options.given[option_index(option)] = given;
  if (given) option.set(options, option, text);
}

/// An option as it stands on a command line. The text is empty where none follows.
struct Argument {
  const Option* option;
  std::string_view text;
};

std::string_view full_spelling(std::string_view argument) {
  for (const auto& alias : option_rows::aliases)
    if (alias.spelling == argument) return alias.argument;
  return argument;
}

/// Takes the next option, with its value, from the front of the arguments.
Argument take(std::span<const std::string_view>& arguments) {
  const std::string_view typed = arguments.front();
  const std::string_view argument = full_spelling(typed);
  arguments = arguments.subspan(1);
  if (!argument.starts_with("--")) unknown_option(typed);
  if (const Option* option = find_option(argument.substr(2))) {
    if (option->takes == Takes::flag) return {option, "true"};
    if (option->takes == Takes::nothing) return {option, {}};
    if (arguments.empty()) throw std::runtime_error(fmt::format("Missing value for {}", typed));
    const std::string_view text = arguments.front();
    arguments = arguments.subspan(1);
    return {option, text};
  }
  if (argument.starts_with("--no-")) {
    const Option* option = find_option(argument.substr(5));
    if (option != nullptr && option->takes == Takes::flag) return {option, "false"};
  }
  unknown_option(typed);
}

const Option& option_of_key(std::string_view key) {
  if (key.starts_with("audio.")) return *find_option("audio-channel");
  if (key.starts_with("analysis.")) return *find_option("analysis-channel");
  const Option* option = find_option(key);
  if (option == nullptr || !option->in_profile) unknown_option(fmt::format("--{}", key));
  return *option;
}

void apply_profile(ReceiverOptions& options, const Profile& profile) {
  for (const auto& [key, value] : profile) {
    const Option& option = option_of_key(key);
    apply(options, option, option.takes != Takes::flag ? std::string_view(value) : value == "true" ? "true" : "false");
  }
}

}  // namespace

ReceiverOptions parse(int argc, const char* const* argv) {
  return parse(std::vector<std::string_view>(argv + (argc > 0 ? 1 : 0), argv + argc));
}

ReceiverOptions parse(const std::vector<std::string_view>& arguments) {
  std::vector<Argument> taken;
  for (std::span<const std::string_view> rest(arguments); !rest.empty();)
    taken.push_back(take(rest));
  ReceiverOptions options;
  for (const Argument& argument : taken)
    if (argument.option->name() == "config") apply_profile(options, parse_config(std::string(argument.text), false));
  for (const Argument& argument : taken)
    apply(options, *argument.option, argument.text);
  check(options);
  return options;
}

ReceiverOptions scan_profile(const Profile& profile) {
  ReceiverOptions options;
  apply_profile(options, profile);
  return options;
}

ReceiverOptions check_profile(const Profile& profile) {
  ReceiverOptions options = scan_profile(profile);
  check(options);
  return options;
}

}  // namespace options
