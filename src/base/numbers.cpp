#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

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

std::string_view without_scale(std::string_view text) {
  if (!text.empty() && std::string_view("kKmM").find(text.back()) != std::string_view::npos) text.remove_suffix(1);
  return text;
}

std::optional<double> parse_scaled(std::string_view text) {
  const std::string_view digits = without_scale(text);
  const auto number = parse_double(digits);
  if (!number || digits.size() == text.size()) return number;
  const bool thousands = text.back() == 'k' || text.back() == 'K';
  // 1.1 times a million is off in the last place; the decimal exponent is not.
  std::array<char, 32> buffer{};
  if (digits.find_first_of("eE") == std::string_view::npos && digits.size() + 2 <= buffer.size()) {
    char* end = std::copy(digits.begin(), digits.end(), buffer.begin());
    *end++ = 'e';
    *end++ = thousands ? '3' : '6';
    return parse_double({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
  }
  const double scaled = *number * (thousands ? 1e3 : 1e6);
  return std::isfinite(scaled) ? std::optional(scaled) : std::nullopt;
}

std::optional<std::int64_t> parse_int(std::string_view text) {
  return whole<std::int64_t>(text);
}

std::optional<std::uint64_t> parse_unsigned(std::string_view text) {
  return whole<std::uint64_t>(text);
}

}  // namespace base
