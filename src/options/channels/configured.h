// The channels that a profile configures, one per key "audio.{id}" or "analysis.{id}". Any thread.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "options/channels/analysis_channel.h"
#include "options/channels/audio_channel.h"

namespace options {

// Ordered by id. Both throw std::runtime_error in the words of the first specification that does not read.
std::vector<AudioChannel> configured_audio(const std::map<std::string, std::string>& settings);
std::vector<AnalysisChannel> configured_analysis(const std::map<std::string, std::string>& settings);

}  // namespace options
