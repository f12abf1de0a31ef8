// How answers are written: one JSON value and a line feed, UTF-8.
#pragma once

#include <string_view>

#include <boost/json.hpp>

namespace inspect {

/// Any bytes as JSON text: what is no UTF-8 becomes U+FFFD, NUL stays.
boost::json::string json_text(std::string_view bytes);
/// A whole number is printed without fraction or exponent, as long as a double holds it exactly. Infinity and NaN,
/// which JSON does not know, become null.
boost::json::value json_number(double number);

/// To standard output, which keeps it until flush_output(). Throws UsageError when that cannot be written.
void print_text(std::string_view text);
void print_answer(const boost::json::value& answer);
void flush_output();

}  // namespace inspect
