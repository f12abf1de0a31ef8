#include "base/scaled_css.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"

namespace ui_scale {
namespace {

// Lengths up to here are borders and hairlines: cut to whole pixels, and always drawn.
constexpr double hairline = 2;
// Keeps a product such as 0.1 * 10, which is a little less than 1 in binary, from being cut to the pixel below.
constexpr double cut_tolerance = 1e-9;
// No screen is wider; a number of a hundred digits must not leave the range of what it is rounded to.
constexpr double longest = 1e9;

bool is_name(char c) {
  return base::is_lower(c) || c == '-';
}
bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// The number that ends at `end`: digits, with a fraction or as one. Answers `end` when there is none.
std::size_t number_start(std::string_view text, std::size_t begin, std::size_t end) {
  const auto digits_before = [&](std::size_t i) {
    while (i > begin && base::is_digit(text[i - 1]))
      --i;
    return i;
  };
  const std::size_t last_digits = digits_before(end);
  if (last_digits == end || last_digits == begin || text[last_digits - 1] != '.') return last_digits;
  return digits_before(last_digits - 1);
}

double number_value(std::string_view digits) {
  const std::string text = digits.front() == '.' ? "0" + std::string(digits) : std::string(digits);
  // Beyond a double's range the whole part tells which end was passed.
  const double beyond = text.find_first_not_of('0') == text.find('.') ? 0 : longest;
  return std::min(base::parse_double(text).value_or(beyond), longest);
}

void append_length(std::string& out, double length, double factor, bool is_font) {
  if (is_font)
    fmt::format_to(std::back_inserter(out), "{:.1f}px", length * factor);
  else if (length > hairline)
    fmt::format_to(std::back_inserter(out), "{}px", std::lround(length * factor));
  else
    out += length > 0 ? fmt::format("{}px", std::max(1L, static_cast<long>(length * factor + cut_tolerance))) : "0px";
}

void append_value(std::string& out, std::string_view value, double factor, bool is_font) {
  std::size_t copied = 0;
  for (std::size_t unit = value.find("px"); unit != value.npos; unit = value.find("px", unit + 2)) {
    const std::size_t start = number_start(value, copied, unit);
    if (start == unit) continue;
    out += value.substr(copied, start - copied);
    append_length(out, number_value(value.substr(start, unit - start)), factor, is_font);
    copied = unit + 2;
  }
  out += value.substr(copied);
}

}  // namespace

double limited_factor(double factor) {
  return std::isfinite(factor) ? std::clamp(factor, smallest_factor, largest_factor) : 1.0;
}

// A declaration is a name of small letters and dashes, a colon, and everything up to a semicolon or brace.
std::string scaled_css(std::string_view css, double wanted_factor) {
  const double factor = limited_factor(wanted_factor);
  const auto skip = [css](std::size_t i, bool (*belongs)(char)) {
    while (i < css.size() && belongs(css[i]))
      ++i;
    return i;
  };
  std::string out;
  out.reserve(css.size() + css.size() / 8);
  for (std::size_t i = 0; i < css.size();) {
    if (!is_name(css[i])) {
      out += css[i++];
      continue;
    }
    const std::size_t name_end = skip(i, is_name);
    const std::size_t colon = skip(name_end, is_space);
    const bool is_font = css.substr(i, name_end - i) == "font-size";
    if (colon == css.size() || css[colon] != ':') {
      out += css.substr(i, colon - i);
      i = colon;
      continue;
    }
    const std::size_t value_end = std::min(css.find_first_of(";{}", colon), css.size());
    out += css.substr(i, colon - i);
    append_value(out, css.substr(colon, value_end - colon), factor, is_font);
    i = value_end;
  }
  return out;
}

}  // namespace ui_scale
