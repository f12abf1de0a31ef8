// Which known channels one capture carries. Never fails. Frequencies in Hz. Any thread.
#pragma once

#include <cstddef>
#include <vector>

#include "launcher/catalogue/known_filters.h"
#include "options/channels/analysis_channel.h"

namespace sig {

/// The engine's limit on analysis windows in a capture.
inline constexpr std::size_t most_known_channels = 128;

/// The rows that pass the filters and lie whole in centre ± 0.45 × `bandwidth`, in catalogue order, at most `limit`.
/// A row that loses some of its kinds names the others.
std::vector<options::AnalysisChannel> select_known_channels(const KnownFilters& filters, double centre,
                                                            double bandwidth, std::size_t limit = most_known_channels);

/// Whether a capture of the band would carry any row at all.
bool band_has_known_channel(const KnownFilters& filters, const launcher::BandPreset& band);

}  // namespace sig
