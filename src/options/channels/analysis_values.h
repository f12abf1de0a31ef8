// The values of an analysis channel that have a small grammar of their own: mode lists, fixed settings and Olivia
// decoders. They throw std::runtime_error with the operator's words. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "options/channels/analysis_channel.h"

namespace options {

/// "auto" gives an empty list; names joined by '+' keep their order.
std::vector<sig::SignalMode> read_analysis_modes(std::string_view text);
/// An empty text gives an empty list; a repeated name counts once.
std::vector<sig::SignalMode> read_analysis_skip(std::string_view text);
/// An empty text gives none.
std::vector<OliviaDecoder> read_olivia(std::string_view text);
std::string read_rtty(std::string_view text);
std::string read_wefax(std::string_view text);

}  // namespace options
