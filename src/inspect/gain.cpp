// `gain`: the RF gain states of an SDRplay receiver.
#include <fmt/format.h>

#include "base/numbers.h"
#include "inspect/answer.h"
#include "inspect/subcommand.h"
#include "launcher/catalogue/rf_gain.h"

namespace inspect {
namespace {

void run(const Arguments& arguments) {
  const std::string_view word = arguments.operand(2, "HZ");
  const auto frequency = base::parse_scaled(word);
  if (!frequency) throw UsageError(fmt::format("HZ is no number: {}", word));
  const auto table =
      launcher::rf_gain_table(arguments.operand(0, "MODEL"), arguments.operand(1, "ANTENNA"), *frequency);
  boost::json::value states;
  if (table) states = boost::json::array(table->begin(), table->end());
  print_answer({{"table", states}});
}

}  // namespace

extern const Subcommand gain_subcommand{
    "gain",
    "MODEL ANTENNA HZ",
    "The attenuation in dB of each RF gain state of a receiver, or null where it is not known. ANTENNA may be an\n"
    "empty word; HZ may end in k or M.",
    {},
    3,
    run};

}  // namespace inspect
