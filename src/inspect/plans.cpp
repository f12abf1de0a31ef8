// `plan` and `choices`: which receiver would take what, and why not.
#include <algorithm>
#include <array>
#include <chrono>
#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"
#include "inspect/answer.h"
#include "inspect/plan_refusal.h"
#include "inspect/profile_input.h"
#include "inspect/subcommand.h"
#include "launcher/band_choices.h"
#include "launcher/planner.h"
#include "options/receiver_options.h"
#include "options/station.h"

namespace inspect {
namespace {

namespace json = boost::json;

/// Every ticked receiver counts as attached unless it is named absent.
options::Station read_station(const Arguments& arguments) {
  const options::Profile profile = read_profile_operand(arguments, true);
  options::Station station;
  try {
    station = options::parse_station(profile);
  } catch (const std::runtime_error& error) {
    throw Refusal("settings", error.what());
  }
  const auto absent = arguments.values("--absent");
  for (options::ReceiverProfile& receiver : station.receivers)
    receiver.available = std::find(absent.begin(), absent.end(), receiver.serial) == absent.end();
  return station;
}

unsigned read_repeats(const Arguments& arguments) {
  const auto word = arguments.value("--repeat");
  if (!word) return 1;
  const auto repeats = base::parse_unsigned(*word);
  if (!repeats || *repeats == 0) throw UsageError(fmt::format("--repeat is no number of times: {}", *word));
  return static_cast<unsigned>(std::min<std::uint64_t>(*repeats, 1000000));
}

/// The median seconds of one run of `model`, which is run as often as asked.
template <typename Model>
double median_seconds(unsigned repeats, const Model& model) {
  std::vector<double> seconds;
  for (unsigned turn = 0; turn < repeats; ++turn) {
    const auto begin = std::chrono::steady_clock::now();
    model();
    seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
  }
  std::nth_element(seconds.begin(), seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2), seconds.end());
  return seconds[seconds.size() / 2];
}

json::array texts(const std::vector<std::string>& list) {
  json::array array;
  for (const std::string& text : list)
    array.push_back(json::value(json_text(text)));
  return array;
}

json::object launch_value(const launcher::ReceiverLaunch& launch) {
  json::array channels;
  for (const launcher::LaunchChannel& channel : launch.channels)
    channels.push_back(json::object{{"mode", channel.mode}, {"frequency", json_number(channel.frequency)}});
  json::object profile;
  for (const auto& [key, value] : launch.profile)
    profile[json_text(key)] = json_text(value);
  return {{"serial", json_text(launch.name)},
          {"model", json_text(launch.model)},
          {"label", json_text(launch.label())},
          {"backend", launch.options->reception.backend},
          {"groups", texts(launch.groups)},
          {"center", json_number(launch.capture.center)},
          {"rate", json_number(launch.capture.sample_rate)},
          {"span", json_number(launch.capture.usable_span())},
          {"channels", std::move(channels)},
          {"profile", std::move(profile)}};
}

/// The launches, or the refusal as an exception of the planner.
void run_plan(const Arguments& arguments) {
  const options::Station station = read_station(arguments);
  const unsigned repeats = read_repeats(arguments);
  std::vector<launcher::ReceiverLaunch> launches;
  std::exception_ptr refused;
  const double seconds = median_seconds(repeats, [&] {
    try {
      launches = launcher::plan_uncached(station);
    } catch (const std::runtime_error&) {
      refused = std::current_exception();
    }
  });
  const auto refuse = [seconds](Refusal refusal) {
    refusal.beside["seconds"] = seconds;
    throw std::move(refusal);
  };
  try {
    if (refused) std::rethrow_exception(refused);
  } catch (const launcher::PlanError& error) {
    refuse(plan_refusal(error));
  } catch (const std::runtime_error& error) {
    refuse(Refusal("settings", error.what()));
  }
  json::array list;
  for (const auto& launch : launches)
    list.push_back(launch_value(launch));
  print_answer({{"launches", std::move(list)}, {"seconds", seconds}});
}

json::value text_or_null(const std::string& text) {
  return text.empty() ? json::value(nullptr) : json::value(json_text(text));
}

json::object choices_value(const launcher::BandChoices& choices) {
  json::array notes, bands, receivers;
  for (const launcher::PlanNote& note : choices.notes)
    notes.push_back(json::object{{"code", static_cast<int>(note.code)},
                                 {"band", json_text(note.band)},
                                 {"serial", json_text(note.serial)},
                                 {"key", json_text(note.key)},
                                 {"value", json_text(note.value)},
                                 {"text", json_text(note.text)}});
  for (const launcher::BandChoice& band : choices.bands)
    bands.push_back(json::object{{"band", json_text(band.band)},
                                 {"ticked", band.ticked},
                                 {"allowed", band.allowed},
                                 {"reason", text_or_null(band.reason)},
                                 {"assigned", text_or_null(band.assigned)},
                                 {"carrier", text_or_null(band.carrier)}});
  for (const launcher::ReceiverChoice& receiver : choices.receivers)
    receivers.push_back(json::object{{"serial", json_text(receiver.serial)},
                                     {"label", json_text(receiver.label)},
                                     {"groups", texts(receiver.groups)},
                                     {"rate", json_number(receiver.rate)},
                                     {"span", json_number(receiver.span)},
                                     {"state", text_or_null(receiver.state)}});
  return {{"notes", std::move(notes)}, {"bands", std::move(bands)}, {"receivers", std::move(receivers)}};
}

void run_choices(const Arguments& arguments) {
  const options::Station station = read_station(arguments);
  launcher::BandChoices choices;
  const double seconds =
      median_seconds(read_repeats(arguments), [&] { choices = launcher::band_choices_uncached(station); });
  json::object answer = choices_value(choices);
  answer["error"] = nullptr;
  if (choices.error) {
    const bool planned = choices.error->code != launcher::PlanCode::other;
    json::object error{{"text", json_text(choices.error->text())}, {"kind", planned ? "plan" : "settings"}};
    const json::object details = plan_refusal(*choices.error).details;
    if (planned) error.insert(details.begin(), details.end());
    answer["error"] = std::move(error);
  }
  answer["seconds"] = seconds;
  print_answer(answer);
}

constexpr std::array options_taken{Option{"--absent"}, Option{"--repeat"}};

}  // namespace

extern const Subcommand plan_subcommand{
    "plan",
    "[--absent SERIAL]... [--repeat N] FILE",
    "Which receiver of a station would carry what, or why there is no way. Every ticked receiver counts as attached\n"
    "unless it is named absent. With --repeat the plan is computed N times and \"seconds\" is the median of one.",
    options_taken,
    1,
    run_plan};

extern const Subcommand choices_subcommand{
    "choices",
    "[--absent SERIAL]... [--repeat N] FILE",
    "What the table of bands would show of a station: which bands may be ticked, which receiver carries what, and the\n"
    "reasons. The options are those of plan.",
    options_taken,
    1,
    run_choices};

}  // namespace inspect
