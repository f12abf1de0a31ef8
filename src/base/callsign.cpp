#include "base/callsign.h"

#include <algorithm>

#include "base/text.h"

namespace base {
namespace {

bool is_call_letter_or_digit(char c) {
  return is_upper(c) || is_digit(c);
}

// Prefix, digit, suffix; the suffix is all the letters at the end, so there is one way to read a part.
bool is_plain_call(std::string_view part) {
  const auto last_digit = part.find_last_of("0123456789");
  if (last_digit == std::string_view::npos) return false;
  const std::string_view prefix = part.substr(0, last_digit);
  const std::size_t suffix = part.size() - last_digit - 1;
  return !prefix.empty() && prefix.size() <= 6 && suffix >= 1 && suffix <= 6 &&
         std::any_of(prefix.begin(), prefix.end(), is_upper);
}

}  // namespace

bool is_callsign(std::string_view word) {
  if (word.size() < 3 || word.size() > 32) return false;
  bool plain = false;
  while (true) {
    const std::string_view part = word.substr(0, word.find('/'));
    // An empty part is a stroke at an end, or a doubled one.
    if (part.empty() || !std::all_of(part.begin(), part.end(), is_call_letter_or_digit)) return false;
    plain = plain || is_plain_call(part);
    if (part.size() == word.size()) return plain;
    word.remove_prefix(part.size() + 1);
  }
}

}  // namespace base
