// `channel`: one audio or analysis channel specification, field by field.
#include <stdexcept>

#include <fmt/format.h>

#include "inspect/answer.h"
#include "inspect/subcommand.h"
#include "options/channels/analysis_channel.h"
#include "options/channels/audio_channel.h"

namespace inspect {
namespace {

namespace json = boost::json;

json::value text_or_null(const std::string& text) {
  return text.empty() ? json::value(nullptr) : json_text(text);
}

json::value answer(json::object fields, const options::Passband& passband, const std::string& text) {
  return {{"channel", std::move(fields)},
          {"passband", json::array{json_number(passband.lower), json_number(passband.upper)}},
          {"text", json_text(text)}};
}

json::value audio_answer(std::string_view specification) {
  const auto channel = options::parse_audio_channel(specification);
  return answer({{"id", channel.id},
                 {"frequency", json_number(channel.frequency)},
                 {"modulation", options::modulation_text(channel.modulation)},
                 {"bandwidth", json_number(channel.bandwidth)},
                 {"audio-rate", channel.audio_rate},
                 {"audio-gain", json_number(channel.audio_gain)},
                 {"enabled", channel.enabled},
                 {"low-cut", json_number(channel.low_cut)},
                 {"agc", channel.agc},
                 {"wav", text_or_null(channel.wav)},
                 {"sink", text_or_null(channel.sink)},
                 {"socket", text_or_null(channel.socket)}},
                options::audio_passband(channel), options::format_audio_channel(channel));
}

json::value analysis_answer(std::string_view specification) {
  const auto channel = options::parse_analysis_channel(specification);
  return answer({{"id", channel.id},
                 {"frequency", json_number(channel.frequency)},
                 {"modulation", options::modulation_text(channel.modulation)},
                 {"bandwidth", json_number(channel.bandwidth)},
                 {"modes", options::analysis_modes_text(channel)},
                 {"rtty", channel.rtty},
                 {"wefax", channel.wefax},
                 {"report", channel.report},
                 {"enabled", channel.enabled},
                 {"olivia", options::analysis_olivia_text(channel)},
                 {"skip", options::analysis_skip_text(channel)},
                 {"pairs", channel.pairs}},
                options::analysis_passband(channel), options::format_analysis_channel(channel));
}

void run(const Arguments& arguments) {
  const std::string_view kind = arguments.operand(0, "audio or analysis");
  const std::string_view specification = arguments.operand(1, "SPEC");
  if (kind != "audio" && kind != "analysis")
    throw UsageError(fmt::format("channels are audio or analysis, not {}", kind));
  json::value answered;
  try {
    answered = kind == "audio" ? audio_answer(specification) : analysis_answer(specification);
  } catch (const std::runtime_error& error) {
    throw Refusal("input", error.what());
  }
  print_answer(answered);
}

}  // namespace

extern const Subcommand channel_subcommand{
    "channel",
    "audio|analysis SPEC",
    "One channel specification by its fields, with its passband in Hz and its canonical text.",
    {},
    2,
    run};

}  // namespace inspect
