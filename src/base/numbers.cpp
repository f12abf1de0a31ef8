#include "base/numbers.h"

#include <charconv>

#include "base/text.h"

namespace base {
namespace {

template <typename T>
std::optional<T> whole(std::string_view text) {
  T value{};
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (text.empty() || result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

}  // namespace

std::optional<double> parse_double(std::string_view text) {
  const std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
  // from_chars also reads "inf" and "nan".
  if (digits.empty() || !(is_digit(digits[0]) || digits[0] == '.')) return std::nullopt;
  return whole<double>(text);
}

std::optional<std::int64_t> parse_int(std::string_view text) { return whole<std::int64_t>(text); }

std::optional<std::uint64_t> parse_unsigned(std::string_view text) { return whole<std::uint64_t>(text); }

}  // namespace base
