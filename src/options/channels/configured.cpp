#include "options/channels/configured.h"

namespace options {
namespace {

template <typename Channel>
std::vector<Channel> configured(const std::map<std::string, std::string>& settings, const std::string& prefix,
                                Channel (*parse)(std::string_view specification)) {
  std::vector<Channel> channels;
  for (auto row = settings.lower_bound(prefix); row != settings.end() && row->first.starts_with(prefix); ++row)
    channels.push_back(parse(row->second));
  return channels;
}

}  // namespace

std::vector<AudioChannel> configured_audio(const std::map<std::string, std::string>& settings) {
  return configured(settings, "audio.", parse_audio_channel);
}

std::vector<AnalysisChannel> configured_analysis(const std::map<std::string, std::string>& settings) {
  return configured(settings, "analysis.", parse_analysis_channel);
}

}  // namespace options
