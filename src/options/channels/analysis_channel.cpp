#include "options/channels/analysis_channel.h"

#include <fmt/format.h>

#include "base/text.h"
#include "options/channels/analysis_values.h"
#include "options/channels/specification.h"

namespace options {
namespace {

constexpr SpecificationWords words{"Invalid analysis channel specification",
                                   "Analysis channel fields must be unique key=value pairs (separate modes with '+')",
                                   "Unknown analysis channel field: ", "Missing analysis channel number",
                                   "Invalid analysis channel number"};

Modulation read_modulation(std::string_view text) {
  const auto modulation = parse_modulation(text);
  if (modulation != Modulation::usb && modulation != Modulation::lsb)
    throw std::runtime_error("Analysis modulation must be USB or LSB");
  return *modulation;
}

bool read_switch(std::string_view field, std::string_view text) {
  if (const auto value = parse_switch(text)) return *value;
  throw std::runtime_error(fmt::format("Analysis {} must be on or off", field));
}

using Channel = AnalysisChannel;
constexpr FieldReader<Channel> readers[] = {
    {"bandwidth", [](Channel& channel, std::string_view value) { channel.bandwidth = read_number(value, words); }},
    {"enabled", [](Channel& channel, std::string_view value) { channel.enabled = read_switch("enabled", value); }},
    {"frequency", [](Channel& channel, std::string_view value) { channel.frequency = read_number(value, words); }},
    {"id", [](Channel& channel, std::string_view value) { channel.id = value; }},
    {"modes", [](Channel& channel, std::string_view value) { channel.modes = read_analysis_modes(value); }, true},
    {"modulation", [](Channel& channel, std::string_view value) { channel.modulation = read_modulation(value); }},
    {"olivia", [](Channel& channel, std::string_view value) { channel.olivia = read_olivia(value); }, true},
    {"pairs", [](Channel& channel, std::string_view value) { channel.pairs = read_switch("pairs", value); }},
    {"report", [](Channel& channel, std::string_view value) { channel.report = read_switch("report", value); }},
    {"rtty", [](Channel& channel, std::string_view value) { channel.rtty = read_rtty(value); }},
    {"skip", [](Channel& channel, std::string_view value) { channel.skip = read_analysis_skip(value); }, true},
    {"wefax", [](Channel& channel, std::string_view value) { channel.wefax = read_wefax(value); }},
};

}  // namespace

AnalysisChannel parse_analysis_channel(std::string_view specification) {
  AnalysisChannel channel;
  const auto fields = read_specification(specification, words, readers, channel);
  if (!has_field(fields, "frequency")) throw std::runtime_error("Analysis channel frequency is required");
  validate_analysis_channel(channel);
  return channel;
}

void validate_analysis_channel(const AnalysisChannel& channel) {
  if (!is_channel_id(channel.id))
    throw std::runtime_error("Analysis channel ID must be 1..32 letters, digits, underscores or hyphens");
  if (!(channel.bandwidth >= 200 && channel.bandwidth <= 20000))
    throw std::runtime_error("Analysis channel requires 200..20000 Hz bandwidth");
  if (!is_receivable(analysis_passband(channel)))
    throw std::runtime_error("Analysis passband must be within 1k..2000M Hz");
}

std::string format_analysis_channel(const AnalysisChannel& channel) {
  validate_analysis_channel(channel);
  std::string text = fmt::format(
      "id={},frequency={},modulation={},bandwidth={},modes={},rtty={},wefax={},report={},enabled={}", channel.id,
      number_text(channel.frequency), modulation_text(channel.modulation), number_text(channel.bandwidth),
      analysis_modes_text(channel), channel.rtty, channel.wefax, channel.report ? "on" : "off", channel.enabled);
  if (!channel.olivia.empty()) text += ",olivia=" + analysis_olivia_text(channel);
  if (!channel.skip.empty()) text += ",skip=" + analysis_skip_text(channel);
  if (channel.pairs) text += ",pairs=on";
  return text;
}

Passband analysis_passband(const AnalysisChannel& channel) {
  return passband(channel.modulation, channel.frequency, channel.bandwidth);
}

void check_analysis_in_capture(const AnalysisChannel& channel, double centre_hz, double sample_rate_hz) {
  validate_analysis_channel(channel);
  if (channel.enabled && !lies_in_capture(analysis_passband(channel), centre_hz, sample_rate_hz))
    throw CaptureFitError("Analysis passband is outside the running capture; receiver restart required");
}

}  // namespace options
