// Numbers as text, always with a decimal point, whatever the locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace base {

/// A plain decimal number with an optional minus sign, fraction and exponent, converted in full. Refuses blanks, a
/// leading plus, hexadecimal, inf, nan and anything out of a double's range.
std::optional<double> parse_double(std::string_view text);
/// A plain decimal number, as above, with an optional last character k or K (thousands), m or M (millions):
/// "7.0475M" is exactly 7047500.
std::optional<double> parse_scaled(std::string_view text);
/// The text without that last character; what is empty then was no number at all.
std::string_view without_scale(std::string_view text);
/// Decimal digits with an optional minus sign, in full and in range.
std::optional<std::int64_t> parse_int(std::string_view text);
/// Decimal digits only, in full and in range.
std::optional<std::uint64_t> parse_unsigned(std::string_view text);

}  // namespace base
