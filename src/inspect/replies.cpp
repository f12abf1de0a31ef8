// `meter` and `spectrum`: what a running engine's answer says.
#include <stdexcept>

#include "inspect/answer.h"
#include "inspect/input.h"
#include "inspect/subcommand.h"
#include "receiver/control_replies.h"

namespace inspect {
namespace {

namespace json = boost::json;

/// A reply as it stands in a file or comes through a pipe.
std::string read_reply(const Arguments& arguments) {
  std::optional<std::string_view> path;
  if (arguments.operand_count() > 0) path = arguments.operand(0, "FILE");
  return Input(path).read_all();
}

template <typename Parse>
auto parsed(const Arguments& arguments, const Parse& parse) {
  const std::string reply = read_reply(arguments);
  try {
    return parse(reply);
  } catch (const std::runtime_error& error) {
    throw Refusal("input", error.what());
  }
}

json::value number_if(bool known, double number) {
  return known ? json_number(number) : json::value(nullptr);
}

void run_meter(const Arguments& arguments) {
  const receiver::MeterReading reading = parsed(arguments, receiver::parse_meter);
  const bool ready = reading.level_state == "ready";
  json::value strongest;
  if (reading.strongest)
    strongest = json::object{{"frequency", json_number(reading.strongest->frequency)},
                             {"dbfs", json_number(reading.strongest->level)}};
  print_answer({{"level_state", reading.level_state},
                {"peak", number_if(ready, reading.peak)},
                {"rms", number_if(ready, reading.rms)},
                {"hold", number_if(ready, reading.hold)},
                {"age", number_if(ready, reading.age)},
                {"max", number_if(reading.max.has_value(), reading.max.value_or(0))},
                {"samples", reading.samples},
                {"overload_state", reading.overload_state},
                {"overload_events", reading.overload_events},
                {"if_state", reading.if_state},
                {"if_reduction", reading.if_reduction},
                {"tuner_state", reading.tuner_state},
                {"tuner_gain", number_if(reading.tuner_state != "unavailable", reading.tuner_gain)},
                {"strongest", strongest}});
}

void run_spectrum(const Arguments& arguments) {
  const receiver::Spectrum spectrum = parsed(arguments, receiver::parse_spectrum);
  json::array powers;
  for (const float power : spectrum.powers)
    powers.push_back(json_number(static_cast<double>(power)));
  print_answer({{"waiting", spectrum.waiting},
                {"sequence", spectrum.waiting ? json::value(nullptr) : json::value(spectrum.sequence)},
                {"lower", json_number(spectrum.lower)},
                {"upper", json_number(spectrum.upper)},
                {"bins", spectrum.bins},
                {"powers", spectrum.waiting ? json::value(nullptr) : json::value(powers)}});
}

}  // namespace

extern const Subcommand meter_subcommand{
    "meter",
    "[FILE]",
    "The levels, overload and gains that a receive engine's answer to RADIO METER tells of. Levels in dBFS.",
    {},
    1,
    run_meter};

extern const Subcommand spectrum_subcommand{
    "spectrum",
    "[FILE]",
    "The powers, in dBFS from the lower to the upper frequency, of a receive engine's answer to SPECTRUM.",
    {},
    1,
    run_spectrum};

}  // namespace inspect
