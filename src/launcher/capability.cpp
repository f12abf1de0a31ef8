#include "launcher/capability.h"

#include <array>

#include <fmt/format.h>

#include "launcher/capture/capture.h"
#include "launcher/receiver_overlay.h"
#include "launcher/setting_names.h"
#include "options/command_line.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;

/// A receiver's own value, which may be an empty one over a common value, before the common one.
std::string setting_of(const Profile& common, const ReceiverProfile& receiver, const char* key) {
  const auto own = receiver.settings.find(key);
  return std::string(own != receiver.settings.end() ? own->second : value_or(common, key, ""));
}

/// What mode audio listens to. It says nothing about the receiver and is refused beside bands.
constexpr std::array audio_keys{"frequency", "modulation", "audio-rate", "sink", "wav"};

/// The receiver on 20 m, which is narrow enough for every rate, with rate and centre automatic.
Profile test_profile(const Profile& common, const ReceiverProfile& receiver) {
  Profile profile = receiver_overlay(common, receiver);
  for (const char* key : audio_keys)
    profile.erase(key);
  profile.erase("sample-rate");
  profile.erase("center-frequency");
  // A station that only listens, or only decodes on known frequencies, ticks no mode.
  if (value_or(profile, "modes", "FT8").empty()) profile.erase("modes");
  profile["mode"] = "decoder";
  profile["bands"] = "20";
  return profile;
}

/// An RX-888's rate follows from its channels, so this is its widest capture.
void measure_rx888(CaptureCapability& record, const Profile& test) {
  const bool all = value_or(test, "rx888-coverage", "bands") == "all";
  const bool full = value_or(test, "rx888-rate", "full") != "half";
  record.set_rate = all && full ? 64e6 : 32e6;
  record.set_span = record.full_span = 0.9 * record.set_rate;
  (void)options::check_profile(test);
}

void measure_tuner(CaptureCapability& record, Profile& test) {
  Capture capture = options::check_profile(test).capture;
  record.full_span = capture.usable_span();
  if (!record.rate_text.empty()) {
    test["sample-rate"] = record.rate_text;
    capture = options::check_profile(test).capture;
  }
  record.set_rate = capture.sample_rate;
  record.set_span = capture.usable_span();
}

/// Refuses a centre that is none.
void judge_center(const CaptureCapability& record, Profile& test) {
  if (record.center_text.empty()) return;
  test["center-frequency"] = record.center_text;
  try {
    (void)options::check_profile(test);
  } catch (const CaptureFitError&) {
    // Only far from 20 m.
  }
}

}  // namespace

CaptureCapability capability_of(const Profile& common, const ReceiverProfile& receiver) {
  CaptureCapability record;
  record.label = receiver.label();
  record.backend = setting_of(common, receiver, "backend");
  if (record.backend.empty()) record.backend = family_text(Family::sdrplay);
  record.center_text = setting_of(common, receiver, "center-frequency");
  record.rate_text = setting_of(common, receiver, "sample-rate");
  if (!record.center_text.empty()) record.limit_keys.emplace_back("center-frequency");
  try {
    Profile test = test_profile(common, receiver);
    if (record.backend == family_text(Family::rx888))
      measure_rx888(record, test);
    else
      measure_tuner(record, test);
    judge_center(record, test);
  } catch (const std::exception& error) {
    record.unusable_reason = error.what();
    return record;
  }
  if (record.center_text.empty() && record.full_span - 1 > record.set_span)
    record.limit_keys.emplace_back("sample-rate");
  return record;
}

std::string capture_text(const CaptureCapability& record, std::string_view key) {
  if (key == "sample-rate")
    return fmt::format("{} is set to {} MS/s and captures only {} MHz", record.label, mega_text(record.set_rate, 3),
                       mega_text(record.set_span, 2));
  return fmt::format("{} has {} fixed at {}", record.label, setting_name(key), record.center_text);
}

std::string mega_text(double value, int decimals) {
  std::string text = fmt::format("{:.{}f}", value / 1e6, decimals);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace launcher
