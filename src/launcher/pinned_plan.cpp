#include "launcher/pinned_plan.h"

#include <array>
#include <span>
#include <stdexcept>

#include "base/text.h"
#include "launcher/catalogue/band_modes.h"
#include "launcher/catalogue/bands.h"
#include "options/station.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;

// Keys that only one family of receivers takes; the other families' engines refuse them.
constexpr std::array rx888_keys{"rx888-rate",   "rx888-coverage",  "rx888-attenuation", "rx888-gain",
                                "rx888-bias-t", "rx888-reference", "rx888-firmware",    "rx888-library"};
constexpr std::array rtl_keys{"rtl-gain", "direct-sampling", "rtl-bias-t"};
constexpr std::array sdrplay_keys{"gain-reduction", "lna-state", "usb-mode", "api-library",
                                  "rf-notch",       "mw-notch",  "antenna"};

std::string value_of(const Profile& profile, const char* key, const char* fallback) {
  const auto found = profile.find(key);
  return found == profile.end() ? fallback : found->second;
}

void remove_keys(Profile& profile, std::span<const char* const> keys) {
  for (const char* key : keys)
    profile.erase(key);
}

void clean_up_for_family(Profile& profile, const std::string& serial) {
  const std::string backend = value_of(profile, "backend", "sdrplay");
  if (backend != "rx888") remove_keys(profile, rx888_keys);
  if (backend != "rtl-sdr") remove_keys(profile, rtl_keys);
  if (backend != "sdrplay") remove_keys(profile, sdrplay_keys);
  if (backend == "rx888") {
    remove_keys(profile, std::array{"serial", "agc", "sample-rate"});
  } else if (backend == "sdrplay" || backend == "rtl-sdr") {
    profile["serial"] = serial;
  } else {
    throw std::runtime_error("Unsupported receiver backend");
  }
}

// Listening and analysis channels: placed like bands, by their id.
bool is_consumer_key(const std::string& key) {
  return key.starts_with("audio.") || key.starts_with("analysis.");
}

std::string consumer_group(const std::string& key) {
  return "@" + key.substr(key.find('.') + 1);
}

Profile overlay(const options::Station& station, const ReceiverProfile& receiver) {
  Profile profile = station.common;
  std::erase_if(profile, [](const auto& entry) { return is_consumer_key(entry.first); });
  for (const auto& [key, value] : receiver.settings) {
    if (key.starts_with("remote-")) continue;
    if (value.empty())
      profile.erase(key);
    else
      profile[key] = value;
  }
  clean_up_for_family(profile, receiver.serial);
  remove_keys(profile, std::array{"decoders", "pid-file", "log-file"});
  profile["daemon"] = "false";
  if (!receiver.spot) profile["spot"] = "off";
  if (!receiver.share) profile["share"] = "off";
  return profile;
}

// The entries of `known-band-modes` whose band is one of these.
void keep_known_bands(Profile& profile, const std::vector<std::string>& bands) {
  const auto found = profile.find("known-band-modes");
  if (found == profile.end()) return;
  std::vector<std::string> kept;
  for (const auto entry : base::split(found->second, ',')) {
    const std::string band = normalise_band(entry.substr(0, entry.find(':')));
    for (const auto& own : bands)
      if (normalise_band(own) == band) kept.emplace_back(entry);
  }
  if (kept.empty())
    profile.erase(found);
  else
    found->second = base::join(kept, ",");
}

std::vector<LaunchChannel> channels_of(const Profile& profile) {
  std::vector<LaunchChannel> channels;
  const auto optional_value = [&profile](const char* key) {
    const auto found = profile.find(key);
    return found == profile.end() ? std::nullopt : std::optional<std::string_view>(found->second);
  };
  if (value_of(profile, "spot", "on") == "off") return channels;
  for (const auto band : base::split(value_of(profile, "bands", ""), ',')) {
    const BandPreset* preset = find_band(band);
    if (!preset) continue;
    for (const auto mode : modes_of_band(band, optional_value("band-modes"), optional_value("modes")))
      if (const auto digital = parse_digital_mode(mode))
        if (const double frequency = dial_frequency(*preset, *digital); frequency > 0)
          channels.push_back({std::string(mode), frequency});
  }
  return channels;
}

ReceiverLaunch make_launch(std::string name, std::string model, Profile profile) {
  ReceiverLaunch launch;
  launch.name = std::move(name);
  launch.model = std::move(model);
  launch.channels = channels_of(profile);
  launch.decode_path = value_of(profile, "all-txt", "");
  launch.writes_decodes = !launch.channels.empty() && !launch.decode_path.empty();
  launch.sink = value_of(profile, "sink", "");
  launch.virtual_audio = value_of(profile, "mode", "audio") == "audio" && launch.sink.empty();
  launch.profile = std::move(profile);
  return launch;
}

// For a receiver whose model is not known yet.
std::string family_name(const Profile& profile) {
  const std::string backend = value_of(profile, "backend", "sdrplay");
  return backend == "rx888" ? "RX-888" : backend == "rtl-sdr" ? "RTL-SDR" : "RSP";
}

// A profile without receivers: whatever the engine finds is its receiver.
ReceiverLaunch launch_as_it_stands(const Profile& profile) {
  return make_launch("default", family_name(profile), profile);
}

std::string carrier_of(const std::string& group, const options::Station& station,
                       const std::vector<const ReceiverProfile*>& ticked) {
  const auto pin = station.assignments.find(group);
  if (pin != station.assignments.end())
    for (const auto* receiver : ticked)
      if (receiver->serial == pin->second) return pin->second;
  return ticked.front()->serial;
}

// What one receiver carries.
struct Load {
  std::vector<std::string> bands;
  Profile consumers;  ///< "audio.{id}" and "analysis.{id}" with their specifications
};

std::map<std::string, Load> distribute(const options::Station& station,
                                       const std::vector<const ReceiverProfile*>& ticked) {
  std::map<std::string, Load> loads;
  const std::string bands = value_of(station.common, "bands", "");
  if (!bands.empty())
    for (const auto band : base::split(bands, ','))
      loads[carrier_of(normalise_band(band), station, ticked)].bands.emplace_back(band);
  for (const auto& [key, specification] : station.common)
    if (is_consumer_key(key)) loads[carrier_of(consumer_group(key), station, ticked)].consumers[key] = specification;
  return loads;
}

void put_on(Profile& profile, const Load& load) {
  profile.insert(load.consumers.begin(), load.consumers.end());
  keep_known_bands(profile, load.bands);
  if (!load.bands.empty()) {
    profile["bands"] = base::join(load.bands, ",");
    return;
  }
  remove_keys(profile, std::array{"bands", "modes", "band-modes", "frequencies", "pskreporter", "wsprnet"});
  profile["mode"] = "receivers";
}

}  // namespace

std::vector<ReceiverLaunch> pinned_plan(const Profile& profile) {
  const options::Station station = options::parse_station(profile);
  if (station.receivers.empty()) return {launch_as_it_stands(station.common)};

  std::vector<const ReceiverProfile*> ticked;
  for (const auto& receiver : station.receivers)
    if (receiver.enabled) ticked.push_back(&receiver);
  if (ticked.empty()) throw std::runtime_error("Tick at least one receiver.");

  auto loads = distribute(station, ticked);
  std::vector<ReceiverLaunch> launches;
  for (const auto* receiver : ticked) {
    const Load& load = loads[receiver->serial];
    if (load.bands.empty() && load.consumers.empty()) continue;
    Profile expanded = overlay(station, *receiver);
    put_on(expanded, load);
    const std::string model = receiver->model.empty() ? family_name(expanded) : receiver->model;
    launches.push_back(make_launch(receiver->serial, model, std::move(expanded)));
  }
  if (launches.empty()) throw std::runtime_error("Tick at least one band.");
  return launches;
}

}  // namespace launcher
