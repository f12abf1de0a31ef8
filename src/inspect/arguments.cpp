#include "inspect/arguments.h"

#include <algorithm>

#include <fmt/format.h>

namespace inspect {
namespace {

const Option& find_option(std::span<const Option> options, std::string_view name) {
  const auto found = std::find_if(options.begin(), options.end(), [name](const Option& o) { return o.name == name; });
  if (found == options.end()) throw UsageError(fmt::format("unknown option {}", name));
  return *found;
}

}  // namespace

Arguments::Arguments(std::span<const std::string_view> words, std::span<const Option> options, std::size_t most) {
  bool reading_options = true;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (reading_options && words[i] == "--") {
      reading_options = false;
    } else if (reading_options && words[i].starts_with("--")) {
      const auto equals = words[i].find('=');
      const Option& option = find_option(options, words[i].substr(0, equals));
      std::string_view value;
      if (equals != std::string_view::npos && !option.takes_value)
        throw UsageError(fmt::format("{} takes no value", option.name));
      if (equals != std::string_view::npos)
        value = words[i].substr(equals + 1);
      else if (option.takes_value && ++i < words.size())
        value = words[i];
      else if (option.takes_value)
        throw UsageError(fmt::format("{} needs a value", option.name));
      options_.emplace_back(option.name, value);
    } else {
      operands_.push_back(words[i]);
    }
  }
  if (operands_.size() > most) throw UsageError(fmt::format("one argument too many: {}", operands_[most]));
}

std::optional<std::string_view> Arguments::value(std::string_view name) const {
  const auto all = values(name);
  if (all.empty()) return std::nullopt;
  return all.back();
}

std::vector<std::string_view> Arguments::values(std::string_view name) const {
  std::vector<std::string_view> found;
  for (const auto& [option, value] : options_)
    if (option == name) found.push_back(value);
  return found;
}

std::string_view Arguments::operand(std::size_t index, std::string_view what) const {
  if (index >= operands_.size()) throw UsageError(fmt::format("{} is missing", what));
  return operands_[index];
}

}  // namespace inspect
