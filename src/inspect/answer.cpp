#include "inspect/answer.h"

#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include <fmt/format.h>

#include "base/text.h"
#include "inspect/arguments.h"

namespace inspect {
namespace {

constexpr double exact_integers = 9007199254740992;  // 2^53

[[noreturn]] void fail() {
  throw UsageError(fmt::format("standard output: {}", std::strerror(errno)));
}

}  // namespace

boost::json::string json_text(std::string_view bytes) {
  boost::json::string text;
  for (const auto piece : base::split(bytes, '\0')) {
    if (piece.data() != bytes.data()) text += '\0';
    text += base::valid_utf8(piece);
  }
  return text;
}

boost::json::value json_number(double number) {
  if (!std::isfinite(number)) return nullptr;
  if (number == std::floor(number) && std::fabs(number) <= exact_integers) return static_cast<std::int64_t>(number);
  return number;
}

void print_text(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) fail();
}

void print_answer(const boost::json::value& answer) {
  print_text(boost::json::serialize(answer) + '\n');
}

void flush_output() {
  if (std::fflush(stdout) != 0) fail();
}

}  // namespace inspect
