#include "options/channels/audio_channel.h"

#include <cmath>

#include <fmt/format.h>

#include "options/channels/specification.h"

namespace options {
namespace {

constexpr SpecificationWords words{
    "Invalid audio channel specification", "Audio channel fields must be unique key=value pairs",
    "Unknown audio channel field: ", "Missing audio channel number", "Invalid audio channel number"};

bool read_switch(std::string_view text) {
  if (const auto value = parse_switch(text)) return *value;
  throw std::runtime_error("Audio enabled must be true or false");
}

std::int32_t read_rate(std::string_view text) {
  const double rate = read_number(text, words);
  if (!(rate >= 8000 && rate <= 192000) || rate != std::floor(rate))
    throw std::runtime_error("Invalid audio output rate");
  return static_cast<std::int32_t>(rate);
}

Modulation read_modulation(std::string_view text) {
  if (const auto modulation = parse_modulation(text)) return *modulation;
  throw std::runtime_error("Audio modulation must be USB, LSB, AM or FM");
}

using Channel = AudioChannel;
constexpr FieldReader<Channel> readers[] = {
    {"agc", [](Channel& channel, std::string_view value) { channel.agc = read_switch(value); }},
    {"audio-gain", [](Channel& channel, std::string_view value) { channel.audio_gain = read_number(value, words); }},
    {"audio-rate", [](Channel& channel, std::string_view value) { channel.audio_rate = read_rate(value); }},
    {"bandwidth", [](Channel& channel, std::string_view value) { channel.bandwidth = read_number(value, words); }},
    {"enabled", [](Channel& channel, std::string_view value) { channel.enabled = read_switch(value); }},
    {"frequency", [](Channel& channel, std::string_view value) { channel.frequency = read_number(value, words); }},
    {"id", [](Channel& channel, std::string_view value) { channel.id = value; }},
    {"low-cut", [](Channel& channel, std::string_view value) { channel.low_cut = read_number(value, words); }},
    {"modulation", [](Channel& channel, std::string_view value) { channel.modulation = read_modulation(value); }},
    {"sink", [](Channel& channel, std::string_view value) { channel.sink = value; }},
    {"socket", [](Channel& channel, std::string_view value) { channel.socket = value; }},
    {"wav", [](Channel& channel, std::string_view value) { channel.wav = value; }},
};

double default_bandwidth(Modulation modulation) {
  switch (modulation) {
    case Modulation::am:
      return 6000;
    case Modulation::fm:
      return 10000;
    case Modulation::usb:
    case Modulation::lsb:
      break;
  }
  return 3000;
}

}  // namespace

AudioChannel parse_audio_channel(std::string_view specification) {
  AudioChannel channel;
  const auto fields = read_specification(specification, words, readers, channel);
  if (!has_field(fields, "frequency")) throw std::runtime_error("Audio channel frequency is required");
  if (!has_field(fields, "bandwidth")) channel.bandwidth = default_bandwidth(channel.modulation);
  validate_audio_channel(channel);
  return channel;
}

std::string format_audio_channel(const AudioChannel& channel) {
  validate_audio_channel(channel);
  std::string text =
      fmt::format("id={},frequency={},modulation={},bandwidth={},audio-rate={},audio-gain={},enabled={}", channel.id,
                  number_text(channel.frequency), modulation_text(channel.modulation), number_text(channel.bandwidth),
                  channel.audio_rate, number_text(channel.audio_gain), channel.enabled);
  if (channel.low_cut != 0) text += ",low-cut=" + number_text(channel.low_cut);
  if (!channel.agc) text += ",agc=off";
  if (!channel.wav.empty()) text += ",wav=" + channel.wav;
  if (!channel.sink.empty()) text += ",sink=" + channel.sink;
  if (!channel.socket.empty()) text += ",socket=" + channel.socket;
  if (text.size() > longest_specification) throw std::runtime_error(std::string(words.invalid));
  return text;
}

Passband audio_passband(const AudioChannel& channel) {
  return passband(channel.modulation, channel.frequency, channel.bandwidth, channel.low_cut);
}

void check_audio_in_capture(const AudioChannel& channel, double centre_hz, double sample_rate_hz) {
  validate_audio_channel(channel);
  if (channel.enabled && !lies_in_capture(audio_passband(channel), centre_hz, sample_rate_hz))
    throw CaptureFitError("Audio passband is outside the running capture; receiver restart required");
}

}  // namespace options
