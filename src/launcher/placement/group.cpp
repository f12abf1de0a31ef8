#include "launcher/placement/group.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "launcher/receiver_overlay.h"
#include "options/channels/analysis_channel.h"
#include "options/channels/audio_channel.h"
#include "options/command_line.h"

namespace launcher {
namespace {

using options::Profile;

/// A listened band reaches this far above its highest dial frequency.
constexpr double listened_width = 3000;

/// The common settings with one selection in place of theirs, on a receiver that would hold any band.
Profile group_reading(const Profile& common, const char* key, const std::string& text) {
  Profile profile = without_foreign_keys(common, Family::sdrplay);
  std::erase_if(profile, [](const auto& entry) { return is_consumer_key(entry.first); });
  for (const char* decided : {"bands", "frequencies", "serial", "center-frequency", "decoders"})
    profile.erase(decided);
  profile[key] = text;
  profile["sample-rate"] = "10000000";
  return profile;
}

void add_channels(Group& group, const std::vector<DecoderChannel>& channels) {
  Extent dials;
  for (const DecoderChannel& channel : channels) {
    dials.add(options::Passband{channel.frequency, channel.frequency});
    double& top = channel.mode == DigitalMode::ft8 ? group.ft8_top : group.other_top;
    top = std::max(top, channel.frequency);
  }
  group.low = dials.low;
  group.high = dials.high;
}

void listen_as_it_decodes(Group& group) {
  group.listened_low = group.low;
  group.listened_ft8_top = group.ft8_top;
  group.listened_other_top = group.other_top;
}

template <typename Channel>
Group consumer_group(const Channel& channel, const options::Passband& passband, bool is_analysis) {
  Group group;
  group.low = passband.lower;
  group.high = passband.upper;
  group.consumer_id = channel.id;
  group.is_analysis = is_analysis;
  group.center = channel.frequency;
  return group;
}

void judge_id(const std::string& key, const std::string& id, const char* words) {
  if (key.substr(key.find('.') + 1) != id) throw std::runtime_error(words);
}

}  // namespace

std::string Group::name() const {
  if (is_consumer()) return "@" + consumer_id;
  return band.empty() ? frequency : band;
}

Group band_group(const Profile& common, const std::string& text) {
  const options::ReceiverOptions read = options::check_profile(group_reading(common, "bands", text));
  const BandPreset& preset = band_preset(text);
  Group group;
  group.band = preset.name;
  group.channels = read.reception.channels;
  group.channel_count = static_cast<unsigned>(group.channels.size());
  const BandSpan span = band_span(preset);
  group.listened_low = span.low;
  group.listened_other_top = span.high - listened_width;
  if (group.channels.empty()) {
    group.low = span.low;
    group.high = span.high;
    group.other_top = group.listened_other_top;
  } else {
    add_channels(group, group.channels);
  }
  return group;
}

Group frequency_group(const Profile& common, const std::string& text) {
  const options::ReceiverOptions read = options::check_profile(group_reading(common, "frequencies", text));
  Group group;
  group.frequency = text;
  group.channels = read.reception.channels;
  group.channel_count = static_cast<unsigned>(group.channels.size());
  add_channels(group, group.channels.empty() ? read.reception.listened_channels : group.channels);
  listen_as_it_decodes(group);
  return group;
}

std::vector<Group> consumer_groups(const Profile& common) {
  std::vector<Group> groups;
  for (const auto& [key, specification] : common) {
    if (!key.starts_with("audio.")) continue;
    const options::AudioChannel channel = options::parse_audio_channel(specification);
    judge_id(key, channel.id, "Audio profile key and ID differ");
    if (channel.enabled) groups.push_back(consumer_group(channel, options::audio_passband(channel), false));
  }
  for (const auto& [key, specification] : common) {
    if (!key.starts_with("analysis.")) continue;
    const options::AnalysisChannel channel = options::parse_analysis_channel(specification);
    judge_id(key, channel.id, "Analysis profile key and ID differ");
    if (channel.enabled) groups.push_back(consumer_group(channel, options::analysis_passband(channel), true));
  }
  return groups;
}

}  // namespace launcher
