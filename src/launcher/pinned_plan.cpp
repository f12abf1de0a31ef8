#include "launcher/pinned_plan.h"

#include <stdexcept>

#include "base/text.h"
#include "launcher/catalogue/band_modes.h"
#include "launcher/catalogue/bands.h"
#include "launcher/receiver_overlay.h"
#include "options/station.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;

// Listening and analysis channels are placed like bands, by their id.
std::string consumer_group(const std::string& key) {
  return "@" + key.substr(key.find('.') + 1);
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
  if (value_or(profile, "spot", "on") == "off") return channels;
  for (const auto band : base::split(value_or(profile, "bands", ""), ',')) {
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
  launch.decode_path = value_or(profile, "all-txt", "");
  launch.writes_decodes = !launch.channels.empty() && !launch.decode_path.empty();
  launch.sink = value_or(profile, "sink", "");
  launch.virtual_audio = value_or(profile, "mode", "audio") == "audio" && launch.sink.empty();
  launch.profile = std::move(profile);
  return launch;
}

// For a receiver whose model is not known yet.
std::string family_name(const Profile& profile) {
  const std::string_view backend = value_or(profile, "backend", "sdrplay");
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
  const std::string_view bands = value_or(station.common, "bands", "");
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
  for (const char* key : {"modes", "band-modes", "pskreporter", "wsprnet"})
    profile.erase(key);
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
    Profile expanded = receiver_overlay(station.common, *receiver);
    put_on(expanded, load);
    const std::string model = receiver->model.empty() ? family_name(expanded) : receiver->model;
    launches.push_back(make_launch(receiver->serial, model, std::move(expanded)));
  }
  if (launches.empty()) throw std::runtime_error("Tick at least one band.");
  return launches;
}

}  // namespace launcher
