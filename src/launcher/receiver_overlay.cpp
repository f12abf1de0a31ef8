#include "launcher/receiver_overlay.h"

#include <array>
#include <span>
#include <stdexcept>

#include <fmt/format.h>

#include "launcher/capture/capture.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;

// Keys that only one family of receivers takes; the other families' engines refuse them. Some of them can only stand
// among the common settings, where a station of several families must be able to have them all.
constexpr std::array rx888_keys{"rx888-rate",     "rx888-coverage",  "rx888-attenuation", "rx888-gain",
                                "rx888-bias-t",   "rx888-reference", "rx888-firmware",    "rx888-library",
                                "rx888-recovery", "rx888-receive",   "rx888-gpu"};
constexpr std::array rtl_keys{"rtl-gain", "direct-sampling", "rtl-bias-t", "rtl-host",
                              "rtl-port", "rtl-tcp-program", "rtl-library"};
constexpr std::array sdrplay_keys{"gain-reduction", "lna-state", "usb-mode", "api-library",
                                  "rf-notch",       "mw-notch",  "antenna",  "bias-t"};
// The RX-888 is found without a serial, has no automatic gain, and its rate follows from its channels.
constexpr std::array not_for_rx888{"serial", "agc", "sample-rate"};
constexpr std::array decided_by_plan{"decoders", "bands", "frequencies", "pid-file", "log-file"};

void remove_keys(Profile& profile, std::span<const char* const> keys) {
  for (const char* key : keys)
    profile.erase(key);
}

void put_settings(Profile& profile, const Profile& settings) {
  for (const auto& [key, value] : settings) {
    if (!options::is_receiver_setting(key))
      throw std::runtime_error(fmt::format("Unsupported receiver setting: {}", key));
    if (key.starts_with("remote-")) continue;
    if (value.empty())
      profile.erase(key);
    else
      profile[key] = value;
  }
}

void clean_up_for_family(Profile& profile, const std::string& serial) {
  const auto family = parse_family(value_or(profile, "backend", "sdrplay"));
  if (!family) throw std::runtime_error("Unsupported receiver backend");
  profile = without_foreign_keys(std::move(profile), *family);
  if (family != Family::rx888) profile["serial"] = serial;
}

}  // namespace

Profile receiver_overlay(const Profile& common, const ReceiverProfile& receiver) {
  Profile profile = common;
  std::erase_if(profile, [](const auto& entry) { return is_consumer_key(entry.first); });
  put_settings(profile, receiver.settings);
  clean_up_for_family(profile, receiver.serial);
  remove_keys(profile, decided_by_plan);
  profile["daemon"] = "false";
  if (!receiver.spot) profile["spot"] = "off";
  if (!receiver.share) profile["share"] = "off";
  return profile;
}

Profile without_foreign_keys(Profile profile, Family family) {
  if (family != Family::rx888) remove_keys(profile, rx888_keys);
  if (family != Family::rtl_sdr) remove_keys(profile, rtl_keys);
  if (family != Family::sdrplay) remove_keys(profile, sdrplay_keys);
  if (family == Family::rx888) remove_keys(profile, not_for_rx888);
  return profile;
}

std::string_view value_or(const Profile& profile, const char* key, const char* fallback) {
  const auto found = profile.find(key);
  return found == profile.end() ? std::string_view(fallback) : std::string_view(found->second);
}

bool is_consumer_key(std::string_view key) {
  return key.starts_with("audio.") || key.starts_with("analysis.");
}

}  // namespace launcher
