#include <fmt/format.h>

#include "options/command_line.h"
#include "options/option_table.h"

namespace options {

std::string help_text(std::string_view program) {
  std::string text = fmt::format("Usage: {} [OPTION]...\n\n", program);
  for (const Option& option : option_table) {
    std::string spelling(option.argument);
    if (option.takes == Takes::flag) spelling = fmt::format("--[no-]{}", option.name());
    for (const auto& alias : option_rows::aliases)
      if (alias.argument == option.argument) spelling = fmt::format("{}, {}", alias.spelling, spelling);
    if (!option.placeholder.empty()) spelling += fmt::format(" {}", option.placeholder);
    text += fmt::format("  {}\n        {}\n", spelling, option.about);
  }
  return text;
}

}  // namespace options
