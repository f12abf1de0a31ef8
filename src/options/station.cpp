#include "options/station.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/catalogue/bands.h"
#include "options/option_table.h"

namespace options {
namespace {

constexpr std::string_view receiver_prefix = "receiver.", band_prefix = "band.", format_key = "gui-format";

/// By serial, so that each stands once and in order.
using Receivers = std::map<std::string, ReceiverProfile, std::less<>>;

bool truth(std::string_view value, const char* refusal) {
  if (value != "true" && value != "false") throw std::runtime_error(refusal);
  return value == "true";
}

bool is_plain_text(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; });
}

void set_section_option(ReceiverProfile& receiver, std::string_view option, const std::string& value) {
  if (option == "enabled") {
    receiver.enabled = truth(value, "Receiver enabled must be true or false");
  } else if (option == "spot") {
    receiver.spot = truth(value, "Receiver spot must be true or false");
  } else if (option == "share") {
    receiver.share = truth(value, "Receiver share must be true or false");
  } else if (option == "model") {
    if (!is_plain_text(value)) throw std::runtime_error("Receiver model in profile is not plain text");
    receiver.model = value;
  } else if (is_receiver_setting(option)) {
    receiver.settings.emplace(option, value);
  } else {
    throw std::runtime_error(fmt::format("Unsupported receiver profile option: {}", option));
  }
}

/// `rest` is the key behind "receiver.".
void read_section(Receivers& receivers, std::string_view rest, const std::string& value) {
  const auto dot = rest.find('.');
  if (dot == std::string_view::npos) throw std::runtime_error("Malformed receiver profile key");
  if (dot == 0) throw std::runtime_error("Invalid receiver serial in profile");
  const std::string serial(rest.substr(0, dot));
  ReceiverProfile& receiver = receivers[serial];
  receiver.serial = serial;
  set_section_option(receiver, rest.substr(dot + 1), value);
}

bool is_assignable(std::string_view group) {
  if (!group.starts_with('@'))
    return std::any_of(launcher::band_presets.begin(), launcher::band_presets.end(),
                       [&](const launcher::BandPreset& band) { return band.name == group; });
  const std::string_view id = group.substr(1);
  return !id.empty() && id.size() <= 32 && std::all_of(id.begin(), id.end(), [](char c) {
    return base::is_letter(c) || base::is_digit(c) || c == '_' || c == '-';
  });
}

/// `rest` is the key behind "band.".
void read_assignment(Station& station, std::string_view rest, const std::string& serial) {
  const auto dot = rest.rfind('.');
  if (dot == std::string_view::npos || rest.substr(dot + 1) != "receiver")
    throw std::runtime_error("Malformed band assignment key");
  const std::string_view group = rest.substr(0, dot);
  if (!is_assignable(group)) throw std::runtime_error("Unsupported assigned band");
  if (serial.empty() || serial.find('.') != std::string::npos)
    throw std::runtime_error("Invalid assigned receiver serial");
  station.assignments.emplace(group, serial);
}

Station single_receiver(const Profile& profile) {
  Station station{profile, {}, {}};
  const auto serial = profile.find("serial");
  if (serial == profile.end() || serial->second.empty()) return station;
  ReceiverProfile receiver;
  receiver.serial = serial->second;
  receiver.enabled = true;
  for (const auto& [key, value] : profile)
    if (is_receiver_setting(key)) receiver.settings.emplace(key, value);
  station.receivers.push_back(std::move(receiver));
  return station;
}

}  // namespace

std::string ReceiverProfile::label() const {
  return model.empty() ? serial : model + " · " + serial;
}

bool is_receiver_setting(std::string_view key) {
  const Option* option = find_option(key);
  return (option != nullptr && option->per_receiver) || key.starts_with("remote-");
}

Station parse_station(const Profile& profile) {
  const auto format = profile.find(std::string(format_key));
  if (format == profile.end()) return single_receiver(profile);
  if (format->second != station_format) throw std::runtime_error("Unsupported GUI profile format");
  Station station;
  Receivers receivers;
  for (const auto& [key, value] : profile) {
    const std::string_view name = key;
    if (name == format_key) continue;
    if (name.starts_with(band_prefix))
      read_assignment(station, name.substr(band_prefix.size()), value);
    else if (name.starts_with(receiver_prefix))
      read_section(receivers, name.substr(receiver_prefix.size()), value);
    else
      station.common.emplace(key, value);
  }
  for (auto& [serial, receiver] : receivers)
    station.receivers.push_back(std::move(receiver));
  return station;
}

Profile render_station(const Station& station) {
  Profile profile = station.common;
  profile[std::string(format_key)] = station_format;
  const auto word = [](bool value) { return std::string(value ? "true" : "false"); };
  for (const ReceiverProfile& receiver : station.receivers) {
    const std::string section = fmt::format("{}{}.", receiver_prefix, receiver.serial);
    profile[section + "enabled"] = word(receiver.enabled);
    profile[section + "spot"] = word(receiver.spot);
    profile[section + "share"] = word(receiver.share);
    if (!receiver.model.empty()) profile[section + "model"] = receiver.model;
    for (const auto& [key, value] : receiver.settings)
      profile[section + key] = value;
  }
  for (const auto& [group, serial] : station.assignments)
    if (!serial.empty()) profile[fmt::format("{}{}.receiver", band_prefix, group)] = serial;
  return profile;
}

}  // namespace options
