#include "launcher/catalogue/known_selection.h"

#include <algorithm>
#include <iterator>

namespace sig {
namespace {

/// A row as selection needs it, read once.
struct Candidate {
  const KnownChannel* row{};
  options::AnalysisChannel channel;
  std::vector<SignalMode> kinds;  ///< in the decoders' order
  std::string_view band;
  options::Passband passband;
};

std::vector<SignalMode> kinds_of(const options::AnalysisChannel& channel) {
  if (!channel.modes.empty()) return channel.modes;
  std::vector<SignalMode> kinds;
  std::copy_if(automatic_modes.begin(), automatic_modes.end(), std::back_inserter(kinds), [&](SignalMode mode) {
    return std::find(channel.skip.begin(), channel.skip.end(), mode) == channel.skip.end();
  });
  return kinds;
}

std::vector<Candidate> read_catalogue() {
  std::vector<Candidate> candidates;
  for (const auto& row : known_channels()) {
    Candidate candidate;
    candidate.row = &row;
    candidate.channel = options::parse_analysis_channel(known_channel_specification(row));
    candidate.kinds = kinds_of(candidate.channel);
    candidate.band = known_channel_band(row.dial_hz);
    candidate.passband = options::analysis_passband(candidate.channel);
    candidates.push_back(std::move(candidate));
  }
  return candidates;
}

const std::vector<Candidate>& candidates() {
  static const std::vector<Candidate> read = read_catalogue();
  return read;
}

/// The kinds that the filters take from a row; all of them for a row that they drop.
ModeSet excluded_from(const Candidate& candidate, const KnownFilters& filters) {
  if (filters.fax && is_fax_channel(*candidate.row) &&
      std::find(filters.fax->begin(), filters.fax->end(), candidate.row) == filters.fax->end())
    return ModeSet::all();
  if (!filters.bands) return filters.excluded;
  const auto entry = std::find_if(filters.bands->begin(), filters.bands->end(),
                                  [&](const BandFilter& filter) { return filter.band->name == candidate.band; });
  return entry == filters.bands->end() ? ModeSet::all() : entry->excluded;
}

std::vector<SignalMode> kept_kinds(const Candidate& candidate, const KnownFilters& filters) {
  const ModeSet excluded = excluded_from(candidate, filters);
  std::vector<SignalMode> kept = candidate.kinds;
  std::erase_if(kept, [excluded](SignalMode mode) { return excluded.contains(mode); });
  return kept;
}

options::AnalysisChannel narrowed(const Candidate& candidate, std::vector<SignalMode> kept) {
  options::AnalysisChannel channel = candidate.channel;
  if (kept.size() == candidate.kinds.size()) return channel;
  if (std::find(kept.begin(), kept.end(), SignalMode::olivia) == kept.end()) channel.olivia.clear();
  channel.modes = std::move(kept);
  return channel;
}

}  // namespace

std::vector<options::AnalysisChannel> select_known_channels(const KnownFilters& filters, double centre,
                                                            double bandwidth, std::size_t limit) {
  std::vector<options::AnalysisChannel> selected;
  for (const auto& candidate : candidates()) {
    if (selected.size() == limit) break;
    if (!options::lies_in_capture(candidate.passband, centre, bandwidth)) continue;
    std::vector<SignalMode> kept = kept_kinds(candidate, filters);
    if (!kept.empty()) selected.push_back(narrowed(candidate, std::move(kept)));
  }
  return selected;
}

bool band_has_known_channel(const KnownFilters& filters, const launcher::BandPreset& band) {
  const launcher::BandSpan span = launcher::band_span(band);
  const double width = std::max(2e6, (span.high - span.low) / 0.9);
  return !select_known_channels(filters, (span.low + span.high) / 2, width, 1).empty();
}

}  // namespace sig
