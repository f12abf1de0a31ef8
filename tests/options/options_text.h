// Short ways to ask the option check and the profile reader what they say.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "options/command_line.h"
#include "options/profile.h"

namespace options_test {

/// What an action throws; empty when it doesn't.
inline std::string refusal(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    return error.what();
  }
  return {};
}

/// A command line, its words parted by blanks; "''" is an empty word.
inline std::vector<std::string_view> command_words(std::string_view line) {
  auto words = base::words(line);
  for (auto& word : words)
    if (word == "''") word = {};
  return words;
}

inline options::ReceiverOptions parse_line(std::string_view line) {
  return options::parse(command_words(line));
}

inline std::string refusal_of_line(std::string_view line) {
  return refusal([&] { (void)parse_line(line); });
}

}  // namespace options_test
