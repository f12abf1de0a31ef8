// `scale`: a style sheet as the interface size would have it.
#include <fmt/format.h>

#include "base/numbers.h"
#include "base/scaled_css.h"
#include "inspect/answer.h"
#include "inspect/input.h"
#include "inspect/subcommand.h"

namespace inspect {
namespace {

void run(const Arguments& arguments) {
  const std::string_view word = arguments.operand(0, "FACTOR");
  const auto factor = base::parse_double(word);
  if (!factor) throw UsageError(fmt::format("FACTOR is no number: {}", word));
  print_text(ui_scale::scaled_css(Input(std::nullopt).read_all(), *factor));
}

}  // namespace

extern const Subcommand scale_subcommand{
    "scale",
    "FACTOR",
    "The style sheet on standard input with its lengths multiplied, as the launcher does for its interface size;\n"
    "plain text. FACTOR is limited to 0.5..2.5.",
    {},
    1,
    run};

}  // namespace inspect
