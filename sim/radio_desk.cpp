#include "sim/radio_desk.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "receiver/live_pairs.h"

namespace sim {
namespace {

constexpr std::array live_keys{"online-callsign-check", "decode-depth", "pskreporter", "wsprnet",
                               "known-channels-report"};

[[noreturn]] void refuse(const std::string& words) {
  throw std::runtime_error(words);
}

/// What stands behind a command's words.
std::optional<std::string_view> behind(std::string_view request, std::string_view command) {
  if (request == command) return std::string_view();
  if (!request.starts_with(command) || request[command.size()] != ' ') return std::nullopt;
  return request.substr(command.size() + 1);
}

double frequency(std::string_view text) {
  const auto value = base::parse_double(text);
  if (!value || !std::isfinite(*value) || *value < 0) refuse("Invalid frequency: " + std::string(text));
  return *value;
}

Channel channel(std::string_view item) {
  const auto colon = item.find(':');
  if (colon == std::string_view::npos) refuse("Invalid retune channel: " + std::string(item));
  const auto mode = launcher::parse_digital_mode(item.substr(0, colon));
  if (!mode) refuse("Invalid retune mode: " + std::string(item.substr(0, colon)));
  return {frequency(item.substr(colon + 1)), *mode};
}

/// A signal that stands out of the whole capture: a broadcaster beside the channels.
double strongest_of(const std::vector<Channel>& channels, const launcher::Capture& capture) {
  return channels.empty() ? capture.center : channels.front().frequency + 31000;
}

}  // namespace

RadioDesk::RadioDesk(const options::ReceiverOptions& options, std::vector<std::string> refused)
    : family_(options.reception.family),
      bandwidth_(options.hardware.bandwidth),
      capture_(options.capture),
      channels_(options.reception.channels),
      refused_(std::move(refused)),
      front_end_(options) {
  for (const auto& audio : options.reception.audio_channels)
    audio_.emplace(audio.id, audio);
  front_end_.tune(capture_.center, strongest_of(channels_, capture_));
}

std::string RadioDesk::answer(std::string_view request, double now) {
  try {
    return perform(request, now);
  } catch (const std::exception& error) {
    return fmt::format("ERR {}", error.what());
  }
}

std::string RadioDesk::perform(std::string_view request, double now) {
  if (request == "RADIO METER" || request == "RADIO STATUS") return front_end_.meter(now);
  if (const auto list = behind(request, "RADIO SETTING")) return set_live(*list);
  if (const auto list = behind(request, "RADIO SET")) return set_hardware(*list);
  if (const auto words = behind(request, "RADIO RETUNE CHECK")) return (void)judged_retune(*words), "OK";
  if (const auto words = behind(request, "RADIO RETUNE APPLY")) return apply_retune(*words);
  if (const auto text = behind(request, "SET")) return set_audio(*text, false);
  if (const auto text = behind(request, "ADD")) return set_audio(*text, true);
  if (const auto id = behind(request, "REMOVE")) return remove_audio(*id);
  if (const auto words = behind(request, "SPECTRUM")) return spectrum(*words, now);
  if (request == "STATUS")
    return fmt::format("OK receiving capture={:.17g} span={:.17g}", capture_.center, capture_.usable_span());
  refuse("Unknown request");
}

void RadioDesk::refuse_scenario_keys(const std::map<std::string, std::string>& settings) const {
  for (const std::string& key : refused_)
    if (settings.contains(key)) refuse("The hardware refused " + key);
}

std::string RadioDesk::set_hardware(std::string_view list) {
  const receiver::Settings settings = receiver::parse_live_pairs(list);
  refuse_scenario_keys(settings);
  if (const auto center = settings.find("center-frequency"); center != settings.end()) {
    launcher::CaptureNeeds needs;
    for (const Channel& each : channels_)
      needs.all.add(launcher::channel_span(each, bandwidth_));
    const double moved = base::parse_scaled(center->second).value_or(0);
    if (!options::lies_in_capture({needs.all.low, needs.all.high}, moved, capture_.filter_bandwidth))
      refuse("The channels would leave the capture");
    capture_.center = moved;
  }
  front_end_.set(settings);
  return "OK RADIO " + receiver::format_pairs(settings);
}

std::string RadioDesk::set_live(std::string_view list) {
  std::map<std::string, std::string> settings;
  for (const std::string_view pair : base::split(list, ',')) {
    const auto equals = pair.find('=');
    if (equals == std::string_view::npos) refuse("Settings need key=value pairs");
    const std::string key(pair.substr(0, equals));
    if (std::find(live_keys.begin(), live_keys.end(), key) == live_keys.end())
      refuse("Setting requires restart: " + key);
    settings.emplace(key, pair.substr(equals + 1));
  }
  refuse_scenario_keys(settings);
  return "OK";
}

RadioDesk::Retune RadioDesk::judged_retune(std::string_view words) const {
  Retune retune;
  const auto items = base::split(words, ' ');
  retune.center = frequency(items.front());
  for (std::size_t item = 1; item < items.size(); ++item)
    if (!items[item].empty() && !items[item].starts_with("KNOWN=")) retune.channels.push_back(channel(items[item]));
  if (std::find(refused_.begin(), refused_.end(), "retune") != refused_.end()) refuse("The hardware refused a retune");
  const auto inside = [&](const options::Passband& band) {
    return options::lies_in_capture(band, retune.center, capture_.filter_bandwidth);
  };
  for (const Channel& each : retune.channels)
    if (!inside(launcher::channel_span(each, bandwidth_)))
      refuse(fmt::format("{} at {:.6f} MHz is outside the capture", launcher::digital_mode_text(each.mode),
                         each.frequency / 1e6));
  for (const auto& [id, audio] : audio_)
    if (audio.enabled && !inside(options::audio_passband(audio)))
      refuse(fmt::format("Audio receiver {} would leave the capture", id));
  return retune;
}

std::string RadioDesk::apply_retune(std::string_view words) {
  Retune retune = judged_retune(words);
  capture_.center = retune.center;
  channels_ = retune.channels;
  front_end_.tune(capture_.center, strongest_of(channels_, capture_));
  retuned_ = std::move(retune.channels);
  return "OK retuned";
}

std::optional<std::vector<Channel>> RadioDesk::take_retune() {
  return std::exchange(retuned_, std::nullopt);
}

std::string RadioDesk::set_audio(std::string_view specification, bool is_new) {
  const options::AudioChannel channel = options::parse_audio_channel(specification);
  if (is_new == audio_.contains(channel.id))
    refuse(is_new ? "Audio channel exists already: " + channel.id : "No such audio channel: " + channel.id);
  options::check_audio_in_capture(channel, capture_.center, capture_.filter_bandwidth);
  audio_[channel.id] = channel;
  return "OK " + channel.id;
}

std::string RadioDesk::remove_audio(std::string_view id) {
  if (audio_.erase(std::string(id)) == 0) refuse("No such audio channel: " + std::string(id));
  views_.erase(std::string(id));
  return "OK";
}

/// A noise floor with each channel's signals as a hump of some hundred hertz.
std::string RadioDesk::spectrum(std::string_view words, double now) {
  const auto items = base::split(words, ' ');
  if (items.size() != 4) refuse("SPECTRUM needs id, lower, upper and bins");
  const std::string id(items[0]);
  const double lower = frequency(items[1]), upper = frequency(items[2]);
  const auto bins = base::parse_unsigned(items[3]);
  if (!audio_.contains(id) || !(lower < upper) || !bins || *bins < 16 || *bins > 1024) refuse("Invalid spectrum view");
  const std::uint64_t sequence = views_[id]++;
  if (sequence == 0) return fmt::format("OK WAIT {:.17g} {:.17g} {}", lower, upper, *bins);
  std::string reply = fmt::format("OK SPECTRUM {} {:.17g} {:.17g} {}", sequence, lower, upper, *bins);
  for (std::uint64_t bin = 0; bin < *bins; ++bin) {
    const double at = lower + (upper - lower) * (static_cast<double>(bin) + 0.5) / static_cast<double>(*bins);
    double level = -110 + 2 * std::sin(at * 0.37 + now);
    for (const Channel& each : channels_) {
      const double away = (at - each.frequency - 1500) / 900;
      level = std::max(level, -70 - 12 * away * away);
    }
    reply += fmt::format(" {:.1f}", std::max(level, -159.0));
  }
  return reply;
}

}  // namespace sim
