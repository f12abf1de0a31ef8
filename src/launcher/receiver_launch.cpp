#include "launcher/receiver_launch.h"

#include <algorithm>

#include "launcher/catalogue/bands.h"
#include "launcher/receiver_overlay.h"
#include "options/command_line.h"

namespace launcher {
namespace {

using options::ReceiverOptions;

/// Mode audio fits nothing, but its tuner runs all the same: around the one channel.
Capture audio_capture(const ReceiverOptions& read) {
  const double rate = read.hardware.sample_rate, dial = read.hardware.frequency;
  const bool sdrplay = read.reception.family == Family::sdrplay;
  return {automatic_center(dial, dial), rate, sdrplay ? sdrplay_filter_bandwidth(rate) : rate};
}

std::vector<LaunchChannel> channels_of(const ReceiverOptions& read) {
  std::vector<LaunchChannel> channels;
  for (const DecoderChannel& channel : read.reception.channels)
    channels.push_back({std::string(digital_mode_text(channel.mode)), channel.frequency});
  std::stable_sort(channels.begin(), channels.end(),
                   [](const LaunchChannel& a, const LaunchChannel& b) { return a.frequency < b.frequency; });
  return channels;
}

}  // namespace

void take_profile(ReceiverLaunch& launch, std::map<std::string, std::string> profile) {
  ReceiverOptions read = options::check_profile(profile);
  if (!read.wideband()) read.capture = audio_capture(read);
  launch.channels = channels_of(read);
  launch.decode_path = value_or(profile, "all-txt", "");
  launch.writes_decodes = !launch.channels.empty() && !launch.decode_path.empty();
  launch.sink = value_or(profile, "sink", "");
  launch.virtual_audio = !read.wideband() && launch.sink.empty();
  launch.capture = read.capture;
  launch.options = std::make_shared<const ReceiverOptions>(std::move(read));
  launch.profile = std::move(profile);
}

void keep_control(ReceiverLaunch& launch, const ReceiverLaunch& running) {
  launch.control_path = running.control_path;
  const auto path = running.profile.find("audio-control");
  if (path == running.profile.end())
    launch.profile.erase("audio-control");
  else
    launch.profile["audio-control"] = path->second;
}

}  // namespace launcher
