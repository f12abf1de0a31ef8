// `profile` and `check`: what a profile says, and what the engine would make of it.
#include <array>
#include <stdexcept>

#include "inspect/answer.h"
#include "inspect/profile_input.h"
#include "inspect/subcommand.h"
#include "options/command_line.h"
#include "options/profile.h"

namespace inspect {
namespace {

namespace json = boost::json;

/// Runs a model, its refusals sorted by what was at fault.
template <typename Model>
auto judged(Model model) {
  try {
    return model();
  } catch (const options::CaptureFitError& error) {
    throw Refusal("capture-fit", error.what());
  } catch (const std::runtime_error& error) {
    throw Refusal("settings", error.what());
  }
}

void run_profile(const Arguments& arguments) {
  const options::Profile profile = read_profile_operand(arguments, true);
  if (arguments.has("--render")) return print_text(judged([&] { return options::render_profile(profile); }));
  json::object keys;
  for (const auto& [key, value] : profile)
    keys[json_text(key)] = json_text(value);
  print_answer({{"keys", keys}});
}

template <typename Channels>
json::array ids(const Channels& channels) {
  json::array list;
  for (const auto& channel : channels)
    list.push_back(json::value(json_text(channel.id)));
  return list;
}

json::array channel_list(const options::Reception& reception) {
  json::array list;
  for (const auto& channel : reception.channels)
    list.push_back(json::object{{"mode", launcher::digital_mode_text(channel.mode)},
                                {"frequency", json_number(channel.frequency)}});
  return list;
}

json::object answer_of(const options::ReceiverOptions& options) {
  const options::Reception& reception = options.reception;
  return {{"mode", options::reception_mode_text(reception.mode)},
          {"backend", reception.backend},
          {"sample_rate", json_number(options.wideband() ? options.capture.sample_rate : options.hardware.sample_rate)},
          {"center_frequency", json_number(reception.center_frequency)},
          {"bandwidth", json_number(options.hardware.bandwidth)},
          {"decoders", options.decoding.decoders},
          {"workers", options.decoding.workers},
          {"spot", options.known.spot},
          {"known_channels", options.known.known_channels},
          {"channels", channel_list(reception)},
          {"audio", ids(reception.audio_channels)},
          {"analysis", ids(reception.analysis_channels)}};
}

void run_check(const Arguments& arguments) {
  const options::Profile profile = read_profile_operand(arguments, false);
  const auto checked = judged([&] { return options::check_profile(profile); });
  print_answer({{"options", answer_of(checked)}});
}

constexpr std::array profile_options{Option{"--render", false}};

}  // namespace

extern const Subcommand profile_subcommand{
    "profile",
    "[--render] FILE",
    "The keys of a profile, of one receiver or of a whole station. With --render the text of the file as the\n"
    "launcher would save it; what would not load again is refused.",
    profile_options,
    1,
    run_profile};

extern const Subcommand check_subcommand{
    "check",
    "FILE",
    "A single receiver's profile as the receive engine understands it, or its refusal in the engine's words.",
    {},
    1,
    run_check};

}  // namespace inspect
