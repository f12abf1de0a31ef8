#include "results/line_class.h"

#include <algorithm>
#include <array>

#include <glib.h>

#include "base/text.h"
#include "results/scan.h"

namespace results {
namespace {

struct Prefix {
  std::string_view text;
  Pane pane;
};
// How a summary begins. "JS8" is without a blank because its variants go on with a stroke.
constexpr std::array<Prefix, 4> summary_prefixes{{
    {"FT8 ", Pane::ft8},
    {"FT4 ", Pane::ft8},
    {"JS8", Pane::js8},
    {"WSPR ", Pane::wspr},
}};

struct Colour {
  std::string_view word;
  Tag tag;
};
// The first word that a line contains decides.
constexpr std::array<Colour, 8> colours{{
    {"Error", Tag::error},
    {"failed", Tag::error},
    {"exited with an error", Tag::error},
    {"dropped", Tag::warning},
    {"Clipped", Tag::warning},
    {"discontinuity", Tag::warning},
    {"Overload", Tag::warning},
    {"spots", Tag::good},
}};

constexpr std::string_view list_mark = " spots; callsigns=";

bool holds(std::string_view line, std::string_view word) {
  return line.find(word) != std::string_view::npos;
}

const Prefix* summary_prefix(std::string_view line) {
  for (const auto& prefix : summary_prefixes)
    if (line.starts_with(prefix.text)) return &prefix;
  return nullptr;
}

Tag colour_of(std::string_view line) {
  for (const auto& colour : colours)
    if (holds(line, colour.word)) return colour.tag;
  return Tag::normal;
}

bool tells_of_listener(std::string_view line) {
  constexpr std::string_view head = "listener ";
  for (auto at = line.find(head); at != std::string_view::npos; at = line.find(head, at + head.size())) {
    Scan scan(line.substr(at + head.size()));
    if (!scan.run(base::is_digit).empty() && scan.literal(" joined from ")) return true;
  }
  return false;
}

}  // namespace

std::string_view pane_name(Pane pane) {
  constexpr std::array<std::string_view, 5> names{"FT8", "JS8", "WSPR", "Signals", "program"};
  return names[static_cast<std::size_t>(pane)];
}

std::string_view tag_name(Tag tag) {
  constexpr std::array<std::string_view, 4> names{"normal", "good", "warning", "error"};
  return names[static_cast<std::size_t>(tag)];
}

LineClass classify_line(std::string_view line) {
  LineClass result{Pane::program, colour_of(line), false, false};
  const Prefix* prefix = summary_prefix(line);
  if (prefix && holds(line, " MHz:")) {
    result.summary = !holds(line, "failed");
    if (result.summary) result.pane = prefix->pane;
    result.hidden = result.summary && holds(line, " MHz: 0 spots");
  } else if (line.starts_with("SIG ")) {
    result.pane = Pane::signals;
  }
  return result;
}

void append_display_text(std::string& out, std::string_view line, std::string_view label) {
  if (!label.empty()) {
    out += '[';
    out += label;
    out += "] ";
  }
  if (summary_prefix(line)) {
    const auto list = line.find(list_mark);
    if (list != std::string_view::npos) line = line.substr(0, list + std::string_view(" spots").size());
  }
  if (g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr))
    out += line;
  else
    out += base::valid_utf8(line);
}

bool is_result_line(std::string_view line) {
  return (summary_prefix(line) && holds(line, " MHz:") && !holds(line, "failed")) || line.starts_with("SIG ") ||
         holds(line, "callsigns=") || tells_of_listener(line);
}

}  // namespace results
