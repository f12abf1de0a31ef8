#include "results/sig_line.h"

#include <array>

#include "base/numbers.h"
#include "base/text.h"
#include "results/scan.h"
#include "results/stamp.h"

namespace sig {
namespace {

using results::Scan;

bool is_blank(char c) {
  return c == ' ';
}
bool is_no_blank(char c) {
  return c != ' ';
}

std::string_view word(Scan& scan) {
  scan.run(is_blank);
  return scan.run(is_no_blank);
}

int hex_digit(char c) {
  if (base::is_digit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// What stands behind a backslash, of which there is at least one byte.
char escaped(Scan& scan) {
  const char c = scan.fixed(1).front();
  switch (c) {
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    case 'x': {
      const std::string_view rest = scan.rest();
      if (rest.size() < 2 || hex_digit(rest[0]) < 0 || hex_digit(rest[1]) < 0) return c;
      scan.fixed(2);
      return static_cast<char>(hex_digit(rest[0]) * 16 + hex_digit(rest[1]));
    }
    default:
      return c;
  }
}

// From behind the opening quote to behind the closing one, or to the end of the line.
std::string quoted_value(Scan& scan) {
  std::string value;
  while (!scan.done()) {
    value += scan.run([](char c) { return c != '"' && c != '\\'; });
    if (scan.literal("\"")) break;
    if (!scan.literal("\\")) continue;
    value += scan.done() ? '\\' : escaped(scan);
  }
  return value;
}

void read_fields(Scan& scan, ParsedSigLine& parsed) {
  for (scan.run(is_blank); !scan.done(); scan.run(is_blank)) {
    std::string key(scan.run([](char c) { return c != ' ' && c != '='; }));
    std::string value;
    if (scan.literal("=")) value = scan.literal("\"") ? quoted_value(scan) : std::string(scan.run(is_no_blank));
    parsed.fields.insert_or_assign(std::move(key), std::move(value));
  }
}

}  // namespace

std::optional<ParsedSigLine> parse_sig_line(std::string_view line) {
  const auto last = line.find_last_not_of(" \r\n");
  line = line.substr(0, last == std::string_view::npos ? 0 : last + 1);
  Scan scan(line);
  if (!scan.literal("SIG ")) return std::nullopt;

  ParsedSigLine parsed;
  parsed.mode = word(scan);
  if (parsed.mode == "HAM" || parsed.mode == "OTHER") {
    parsed.scope = std::move(parsed.mode);
    parsed.mode = word(scan);
  }
  parsed.stamp = word(scan);
  const auto frequency = base::parse_double(word(scan));
  const bool unit = word(scan) == "MHz:";
  parsed.kind = word(scan);
  // Words are missing from the end first, so the last one answers for all.
  if (!results::is_stamp_shaped(parsed.stamp) || !frequency || !unit || parsed.kind.empty()) return std::nullopt;
  parsed.frequency = *frequency;
  read_fields(scan, parsed);
  return parsed;
}

}  // namespace sig
