#include "options/option_values.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "options/option_kinds.h"

namespace options {
namespace {

constexpr std::size_t dx_cluster_limit = 8;

/// The factor of a suffix, which is then cut from the text.
double take_suffix(std::string_view& text) {
  if (text.empty()) return 1;
  const char last = text.back();
  const double factor = last == 'k' || last == 'K' ? 1e3 : last == 'm' || last == 'M' ? 1e6 : 1;
  if (factor != 1) text.remove_suffix(1);
  return factor;
}

DxCluster parse_dx_cluster(std::string_view text) {
  const auto colon = text.rfind(':');
  if (colon != 0 && colon != std::string_view::npos) {
    const auto port = base::parse_unsigned(text.substr(colon + 1));
    if (port && *port >= 1 && *port <= 65535)
      return {std::string(text.substr(0, colon)), static_cast<std::uint16_t>(*port)};
  }
  throw std::runtime_error(fmt::format(
      "Invalid --dx-clusters: cannot read DX cluster \"{}\"; expected host:port, for example dxc.example.org:7300",
      text));
}

template <typename Channel>
void replace_or_add(std::vector<Channel>& channels, Channel channel) {
  const auto same =
      std::find_if(channels.begin(), channels.end(), [&](const Channel& c) { return c.id == channel.id; });
  if (same == channels.end())
    channels.push_back(std::move(channel));
  else
    *same = std::move(channel);
}

template <typename Channel>
void remove_by_id(std::vector<Channel>& channels, std::string_view id) {
  std::erase_if(channels, [&](const Channel& channel) { return channel.id == id; });
}

}  // namespace

double parse_option_number(std::string_view text) {
  std::string_view digits = text;
  const double factor = take_suffix(digits);
  const auto number = base::parse_double(digits);
  if (!number || !std::isfinite(*number * factor)) throw std::runtime_error(fmt::format("Invalid number: {}", text));
  return *number * factor;
}

unsigned parse_small_integer(std::string_view text) {
  const auto number = base::parse_double(text);
  if (!number) throw std::runtime_error(fmt::format("Invalid number: {}", text));
  if (!(*number >= 0 && *number <= 255) || *number != std::floor(*number))
    throw std::runtime_error(fmt::format("Expected an integer between 0 and 255: {}", text));
  return static_cast<unsigned>(*number);
}

void check_limits(double value, const Limits& limits, bool whole) {
  if (limits.refusal.empty()) return;
  if (value >= limits.least && value <= limits.most && (!whole || value == std::floor(value))) return;
  throw std::runtime_error(std::string(limits.refusal));
}

int word_index(std::string_view words, std::string_view word) {
  for (int index = 0;; ++index) {
    const auto end = words.find('|');
    if (words.substr(0, end) == word) return index;
    if (end == std::string_view::npos) return -1;
    words.remove_prefix(end + 1);
  }
}

std::string_view word_at(std::string_view words, std::size_t index) {
  const auto all = base::split(words, '|');
  return index < all.size() ? all[index] : std::string_view();
}

namespace values {

void set_modes(ReceiverOptions& options, const Option&, std::string_view text) {
  options.reception.modes = text.empty() ? std::vector<launcher::DigitalMode>() : launcher::parse_modes(text);
}

void set_bands(ReceiverOptions& options, const Option&, std::string_view text) {
  options.reception.bands.clear();
  for (const std::string_view band : base::split(text, ','))
    options.reception.bands.push_back({&launcher::band_preset(band), std::string(band)});
}

void set_band_modes(ReceiverOptions& options, const Option&, std::string_view text) {
  options.reception.band_modes = launcher::parse_band_modes(text);
}

void set_frequencies(ReceiverOptions& options, const Option&, std::string_view text) {
  options.reception.frequencies.clear();
  for (const std::string_view entry : base::split(text, ',')) {
    ListedFrequency listed;
    const auto colon = entry.find(':');
    if (colon != std::string_view::npos) listed.mode = entry.substr(0, colon);
    listed.frequency = parse_option_number(entry.substr(colon == std::string_view::npos ? 0 : colon + 1));
    options.reception.frequencies.push_back(std::move(listed));
  }
}

void set_known_modes(ReceiverOptions& options, const Option&, std::string_view text) {
  options.known.filters.excluded = sig::parse_known_modes(text);
}

void set_known_band_modes(ReceiverOptions& options, const Option&, std::string_view text) {
  options.known.filters.bands = sig::parse_known_band_modes(text);
}

void set_fax_channels(ReceiverOptions& options, const Option&, std::string_view text) {
  options.known.filters.fax = sig::parse_fax_channels(text);
}

void set_dx_clusters(ReceiverOptions& options, const Option&, std::string_view text) {
  std::vector<DxCluster> clusters;
  for (const std::string_view cluster : base::split(text, ','))
    clusters.push_back(parse_dx_cluster(cluster));
  if (clusters.size() > dx_cluster_limit)
    throw std::runtime_error(fmt::format("Invalid --dx-clusters: at most {} DX clusters", dx_cluster_limit));
  options.reporting.dx_clusters = std::move(clusters);
}

void add_audio_channel(ReceiverOptions& options, const Option&, std::string_view text) {
  replace_or_add(options.reception.audio_channels, parse_audio_channel(text));
}

void add_analysis_channel(ReceiverOptions& options, const Option&, std::string_view text) {
  replace_or_add(options.reception.analysis_channels, parse_analysis_channel(text));
}

void remove_audio_channel(ReceiverOptions& options, const Option&, std::string_view text) {
  remove_by_id(options.reception.audio_channels, text);
}

void remove_analysis_channel(ReceiverOptions& options, const Option&, std::string_view text) {
  remove_by_id(options.reception.analysis_channels, text);
}

void clear_audio_channels(ReceiverOptions& options, const Option&, std::string_view) {
  options.reception.audio_channels.clear();
}

void clear_analysis_channels(ReceiverOptions& options, const Option&, std::string_view) {
  options.reception.analysis_channels.clear();
}

void refuse(ReceiverOptions&, const Option& option, std::string_view) {
  throw std::runtime_error(std::string(option.limits.refusal));
}

}  // namespace values
}  // namespace options
