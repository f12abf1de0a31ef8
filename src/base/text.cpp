#include "base/text.h"

#include <algorithm>

#include <glib.h>

namespace base {

std::string_view trim(std::string_view text) {
  constexpr std::string_view blanks = " \t\r\n";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> found;
  for (;;) {
    const auto start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return found;
    const auto end = std::min(text.find_first_of(" \t", start), text.size());
    found.push_back(text.substr(start, end - start));
    text.remove_prefix(end);
  }
}

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (is_upper(c)) c = static_cast<char>(c - 'A' + 'a');
  return result;
}

std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (is_lower(c)) c = static_cast<char>(c - 'a' + 'A');
  return result;
}

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
  std::string result;
  for (const auto& part : parts) {
    if (&part != &parts.front()) result += separator;
    result += part;
  }
  return result;
}

std::string enumerate(const std::vector<std::string>& parts, std::string_view last) {
  std::string result;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0 && i + 1 == parts.size())
      result.append(" ").append(last).append(" ");
    else if (i > 0)
      result += ", ";
    result += parts[i];
  }
  return result;
}

std::string valid_utf8(std::string_view bytes) {
  std::string result;
  result.reserve(bytes.size());
  while (!bytes.empty()) {
    const char* end = nullptr;
    g_utf8_validate(bytes.data(), static_cast<gssize>(bytes.size()), &end);
    const auto good = static_cast<std::size_t>(end - bytes.data());
    result += bytes.substr(0, good);
    bytes.remove_prefix(good);
    if (bytes.empty()) break;
    result += "\xEF\xBF\xBD";
    bytes.remove_prefix(1);
  }
  return result;
}

}  // namespace base
