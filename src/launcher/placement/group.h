// What must lie inside one capture: a band, a typed frequency, or a listening or analysis channel. Frequencies in Hz.
// Everything throws std::runtime_error with the operator's words. Any thread.
#pragma once

#include <string>
#include <vector>

#include "launcher/capture/capture.h"
#include "options/profile.h"

namespace launcher {

struct Group {
  std::string band;         ///< its name, for a band
  std::string frequency;    ///< as typed, for one of `frequencies`
  double low{}, high{};     ///< from the lowest dial frequency to the highest; the passband of a channel
  std::string consumer_id;  ///< of a listening or analysis channel
  bool is_analysis = false;
  double ft8_top = -1, other_top = -1;  ///< the highest dial of FT8 and of any other mode; -1 without one
  unsigned channel_count = 0;           ///< decoder channels
  double center{};                      ///< where the channel is tuned
  std::vector<DecoderChannel> channels;
  // The same extremes on a receiver that does not decode: bands as a whole, with every mode's frequency.
  double listened_low{}, listened_ft8_top = -1, listened_other_top = -1;

  [[nodiscard]] bool is_consumer() const { return !consumer_id.empty(); }
  /// "20", "@voice1" or the frequency as typed: what pins and errors name.
  [[nodiscard]] std::string name() const;
  /// The profile key of a consumer.
  [[nodiscard]] std::string consumer_key() const { return (is_analysis ? "analysis." : "audio.") + consumer_id; }
};

/// A band with the modes that the common profile gives it; `text` is an entry of `bands`.
Group band_group(const options::Profile& common, const std::string& text);
/// `text` is an entry of `frequencies`.
Group frequency_group(const options::Profile& common, const std::string& text);
/// The enabled listening channels, then the enabled analysis channels, each in order of their keys.
std::vector<Group> consumer_groups(const options::Profile& common);

}  // namespace launcher
