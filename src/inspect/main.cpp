// tarnwick-inspect: the launcher's models from a terminal, for people over ssh, scripts and bug reports. Reads only.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "inspect/answer.h"
#include "inspect/subcommand.h"

namespace {

using inspect::Subcommand;

constexpr int answered = 0;
constexpr int refused = 1;
constexpr int misused = 2;

void print_usage() {
  inspect::print_text("usage: tarnwick-inspect SUBCOMMAND [ARGUMENTS]\n\nsubcommands:\n");
  for (const Subcommand* subcommand : inspect::subcommands())
    inspect::print_text(fmt::format("  {} {}\n", subcommand->name, subcommand->synopsis));
  inspect::print_text(
      "\nThe answer is JSON on standard output. Exit status: 0 answered, 1 refused with {\"error\": ...},\n"
      "2 wrong command line or unreadable input. tarnwick-inspect SUBCOMMAND --help tells more.\n");
}

void print_usage(const Subcommand& subcommand) {
  inspect::print_text(fmt::format("usage: tarnwick-inspect {} {}\n\n{}\n", subcommand.name, subcommand.synopsis,
                                  subcommand.description));
}

const Subcommand& find_subcommand(std::string_view name) {
  for (const Subcommand* subcommand : inspect::subcommands())
    if (subcommand->name == name) return *subcommand;
  throw inspect::UsageError(fmt::format("unknown subcommand {}; --help lists them", name));
}

// Help is asked for anywhere among the options, but not behind the "--" that ends them.
bool asks_help(const std::vector<std::string_view>& words) {
  const auto end = std::find(words.begin(), words.end(), "--");
  return std::find(words.begin(), end, "--help") != end;
}

boost::json::object answer_of(const inspect::Refusal& refusal) {
  boost::json::object error{{"text", inspect::json_text(refusal.what())}, {"kind", refusal.kind()}};
  error.insert(refusal.details.begin(), refusal.details.end());
  boost::json::object answer{{"error", std::move(error)}};
  answer.insert(refusal.beside.begin(), refusal.beside.end());
  return answer;
}

void run(std::vector<std::string_view> words) {
  if (words.empty()) throw inspect::UsageError("a subcommand is needed; --help lists them");
  if (words.front() == "--help") return print_usage();
  const Subcommand& subcommand = find_subcommand(words.front());
  words.erase(words.begin());
  if (asks_help(words)) return print_usage(subcommand);
  subcommand.run(inspect::Arguments(words, subcommand.options, subcommand.most_operands));
}

}  // namespace

int main(int argc, char** argv) try {
  try {
    run({argv + std::min(argc, 1), argv + argc});
    inspect::flush_output();
    return answered;
  } catch (const inspect::Refusal& refusal) {
    inspect::print_answer(answer_of(refusal));
    inspect::flush_output();
    return refused;
  }
} catch (const std::exception& error) {
  fmt::print(stderr, "tarnwick-inspect: {}\n", error.what());
  return misused;
}
