// `lines`: what the intake makes of each line that an engine prints.
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"
#include "inspect/answer.h"
#include "inspect/input.h"
#include "inspect/subcommand.h"
#include "results/line_class.h"
#include "results/megahertz.h"
#include "results/sig_line.h"
#include "results/spot_summary.h"
#include "results/stamp.h"

namespace inspect {
namespace {

namespace json = boost::json;

json::value callsign_list(const std::optional<std::string_view>& list) {
  if (!list) return nullptr;
  json::array callsigns;
  if (!list->empty())
    for (const auto callsign : base::split(*list, ','))
      callsigns.emplace_back(callsign);
  return callsigns;
}

json::value summary_value(std::string_view line) {
  const auto summary = results::parse_spot_summary(line);
  if (!summary) return nullptr;
  const auto time = results::stamp_seconds(summary->stamp);
  return {{"mode", summary->mode},
          {"stamp", summary->stamp},
          {"time", time ? json_number(*time) : nullptr},
          {"frequency", json_number(summary->frequency)},
          {"spots", summary->spots},
          {"callsigns", callsign_list(summary->callsigns)}};
}

json::value sig_value(std::string_view line) {
  const auto parsed = sig::parse_sig_line(line);
  if (!parsed) return nullptr;
  json::object fields;
  for (const auto& [key, value] : parsed->fields)
    fields[json_text(key)] = json_text(value);
  return {{"scope", parsed->scope},          {"mode", json_text(parsed->mode)},
          {"stamp", parsed->stamp},          {"frequency", json_number(results::hz_of_mhz(parsed->frequency))},
          {"kind", json_text(parsed->kind)}, {"fields", std::move(fields)}};
}

json::value line_value(std::string_view line, std::string_view label) {
  const auto line_class = results::classify_line(line);
  json::value shown;
  if (!line_class.hidden) {
    std::string text;
    results::append_display_text(text, line, label);
    shown = json_text(text);
  }
  return {{"pane", results::pane_name(line_class.pane)},
          {"tag", results::tag_name(line_class.tag)},
          {"shown", std::move(shown)},
          {"logged", !line_class.hidden},
          {"summary", line_class.summary ? summary_value(line) : nullptr},
          {"sig", sig_value(line)}};
}

void answer_line(std::string_view line, std::string_view label) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  print_answer(line_value(line, label));
}

// Answers as lines come, so that it can stand at the end of a pipe from a running engine.
void run(const Arguments& arguments) {
  const std::string_view label = arguments.value("--label").value_or("");
  Input input(arguments.operand_count() > 0 ? std::optional(arguments.operand(0, "FILE")) : std::nullopt);
  std::string block;
  std::string unfinished;
  while (input.read_block(block)) {
    std::string_view rest = block;
    for (auto end = rest.find('\n'); end != std::string_view::npos; end = rest.find('\n')) {
      unfinished += rest.substr(0, end);
      answer_line(unfinished, label);
      unfinished.clear();
      rest.remove_prefix(end + 1);
    }
    unfinished += rest;
    flush_output();
  }
  if (!unfinished.empty()) answer_line(unfinished, label);
}

constexpr std::array options{Option{"--label"}};

}  // namespace

extern const Subcommand lines_subcommand{
    "lines",
    "[--label LABEL] [FILE]",
    "How the launcher takes each line of an engine's output: one answer a line. FILE left out is standard input;\n"
    "LABEL is the receiver's label.",
    options,
    1,
    run};

}  // namespace inspect
