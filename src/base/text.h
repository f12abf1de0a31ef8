// Small text tools shared by all parsers. Byte-wise and locale-independent: letters are ASCII letters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace base {

/// Cuts blanks, tabs, line feeds and carriage returns from both ends.
std::string_view trim(std::string_view text);
/// The pieces between separators; "a,,b" gives three, "" gives one empty piece.
std::vector<std::string_view> split(std::string_view text, char separator);
/// The runs between blanks and tabs, without empty ones.
std::vector<std::string_view> words(std::string_view text);
std::string lower(std::string_view text);
std::string upper(std::string_view text);
std::string join(const std::vector<std::string>& parts, std::string_view separator);
/// A list as a sentence says it: "a", "a or b", "a, b or c" with `last` "or".
std::string enumerate(const std::vector<std::string>& parts, std::string_view last);
/// The text with every invalid UTF-8 byte sequence replaced by U+FFFD; NUL counts as invalid, as widgets end there.
std::string valid_utf8(std::string_view bytes);

inline bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
inline bool is_upper(char c) {
  return c >= 'A' && c <= 'Z';
}
inline bool is_lower(char c) {
  return c >= 'a' && c <= 'z';
}
inline bool is_letter(char c) {
  return is_upper(c) || is_lower(c);
}

}  // namespace base
