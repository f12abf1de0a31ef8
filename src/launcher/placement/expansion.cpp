#include "launcher/placement/expansion.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/capture/direct_sampling.h"
#include "launcher/catalogue/radios.h"
#include "launcher/catalogue/receiver_models.h"
#include "launcher/catalogue/rf_gain.h"
#include "launcher/receiver_overlay.h"
#include "options/command_line.h"
#include "options/paths.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverOptions;
using options::ReceiverProfile;

/// What mode receivers, which listens only, does not take.
constexpr std::array decoding_keys{"modes", "bands", "frequencies", "band-modes", "decoders"};

bool is_carried(Mask mask, std::size_t group) {
  return (mask >> group & 1) != 0;
}

/// The entries of `known-band-modes` whose band this receiver has.
void keep_known_bands(Profile& profile, const std::vector<std::string>& bands) {
  const auto found = profile.find("known-band-modes");
  if (found == profile.end()) return;
  std::vector<std::string> kept;
  for (const auto entry : base::split(found->second, ',')) {
    const std::string band = normalise_band(base::trim(entry.substr(0, entry.find(':'))));
    if (std::find(bands.begin(), bands.end(), band) != bands.end()) kept.emplace_back(entry);
  }
  if (kept.empty())
    profile.erase(found);
  else
    found->second = base::join(kept, ",");
}

void listen_only(Profile& profile) {
  profile["mode"] = "receivers";
  for (const char* key : decoding_keys)
    profile.erase(key);
  for (const char* report : {"pskreporter", "wsprnet"})
    if (profile.contains(report)) profile[report] = "false";
}

void put_groups(Profile& profile, const Profile& common, const std::vector<Group>& groups, Mask mask) {
  std::vector<std::string> selected, bands;
  for (std::size_t index = 0; index < groups.size(); ++index) {
    if (!is_carried(mask, index)) continue;
    const Group& group = groups[index];
    if (group.is_consumer()) {
      profile[group.consumer_key()] = common.at(group.consumer_key());
      continue;
    }
    selected.push_back(group.name());
    if (!group.band.empty()) bands.push_back(group.band);
  }
  keep_known_bands(profile, bands);
  if (selected.empty())
    listen_only(profile);
  else
    profile[bands.empty() ? "frequencies" : "bands"] = base::join(selected, ",");
}

void put_center(Profile& profile, const std::vector<Group>& groups, Mask mask) {
  const bool listens =
      std::any_of(groups.begin(), groups.end(), [](const Group& group) { return group.is_consumer(); });
  if (!listens || profile.contains("center-frequency")) return;
  Extent carried;
  for (std::size_t index = 0; index < groups.size(); ++index)
    if (is_carried(mask, index)) {
      const Group& group = groups[index];
      carried.add(options::Passband{group.low, group.high + (group.is_consumer() ? 0 : band_margin)});
    }
  profile["center-frequency"] = fmt::format("{:.6f}", launch_center(carried));
}

void put_control(Profile& profile, const std::string& serial) {
  std::string& path = profile["audio-control"];
  if (path.empty()) {
    path = options::state_file(fmt::format("audio-control/service-{}.sock", serial));
    return;
  }
  constexpr std::string_view placeholder = "{serial}";
  if (const auto at = path.find(placeholder); at != std::string::npos) path.replace(at, placeholder.size(), serial);
}

/// A dongle's way of hearing follows from where its capture lies, which a first reading tells.
void put_direct_sampling(Profile& profile, const std::string& model) {
  const ReceiverOptions read = options::check_profile(profile);
  if (!read.wideband()) return;
  profile["direct-sampling"] =
      choose_direct_sampling(read.rtl.direct_sampling, dongle_hf_class(model), read.capture, model);
}

}  // namespace

double launch_center(const Extent& carried) {
  // Nothing carried: where a receiver cannot disturb anything, and its engine starts all the same.
  constexpr double nowhere = 1e9;
  return carried.empty() ? automatic_center(nowhere, nowhere) : automatic_center(carried.low, carried.high);
}

bool is_known_model(const std::string& model) {
  return !base::trim(model).empty() && model != "Unknown RSP";
}

radios::HfClass dongle_hf_class(const std::string& model) {
  return radios::hf_class(radios::catalogue(options::config_file("radios.conf")), model);
}

void judge_model(const ReceiverOptions& options, const std::string& model) {
  if (options.reception.family != Family::sdrplay || !is_known_model(model)) return;
  check_antenna(model, options.sdrplay.antenna);
  check_notches(model, options.sdrplay.rf_notch, options.sdrplay.mw_notch);
}

void judge_rf_gain(const ReceiverOptions& options, const std::string& model, double center) {
  if (options.reception.family != Family::sdrplay) return;
  const std::string_view known = is_known_model(model) ? std::string_view(model) : std::string_view();
  check_rf_gain_state(known, options.sdrplay.antenna, rf_gain_frequency(center),
                      static_cast<int>(options.sdrplay.lna_state));
}

Profile expanded_profile(const Profile& common, const ReceiverProfile& receiver, const std::vector<Group>& groups,
                         Mask mask) {
  Profile profile = receiver_overlay(common, receiver);
  if (value_or(profile, "mode", "audio") == "audio")
    profile.erase("center-frequency");
  else
    put_groups(profile, common, groups, mask);
  if (value_or(profile, "backend", "sdrplay") != family_text(Family::rx888) &&
      value_or(profile, "mode", "audio") != "audio")
    put_center(profile, groups, mask);
  put_control(profile, receiver.serial);
  return profile;
}

ReceiverLaunch expand(const Profile& common, const ReceiverProfile& receiver, const std::vector<Group>& groups,
                      Mask mask) {
  Profile profile = expanded_profile(common, receiver, groups, mask);
  if (value_or(profile, "backend", "sdrplay") == family_text(Family::rtl_sdr))
    put_direct_sampling(profile, receiver.model);
  ReceiverLaunch launch;
  launch.name = receiver.serial;
  launch.model = receiver.model;
  launch.control_path = profile.at("audio-control");
  take_profile(launch, std::move(profile));
  judge_model(*launch.options, receiver.model);
  judge_rf_gain(*launch.options, receiver.model, launch.capture.center);
  for (std::size_t index = 0; index < groups.size(); ++index)
    if (is_carried(mask, index)) launch.groups.push_back(groups[index].name());
  return launch;
}

}  // namespace launcher
