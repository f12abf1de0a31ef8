#include "results/channel_key.h"

#include <cmath>
#include <cstdint>
#include <iterator>

#include <fmt/format.h>

namespace results {
namespace {

void append_mhz(std::string& out, double hz) {
  // Whole Hz, as nearly all are, need no floating-point printing; below 1e15 both ways give the same text.
  if (hz >= 0 && hz < 1e15 && hz == std::floor(hz)) {
    const auto whole = static_cast<std::uint64_t>(hz);
    fmt::format_to(std::back_inserter(out), "{}.{:06}", whole / 1000000, whole % 1000000);
  } else {
    fmt::format_to(std::back_inserter(out), "{:.6f}", hz / 1e6);
  }
}

}  // namespace

ChannelKey::ChannelKey(std::string_view mode_text, double frequency_hz) : mode(mode_text) {
  append_mhz(frequency, frequency_hz);
}

ChannelKey ChannelKey::from_text(std::string_view text) {
  ChannelKey key;
  const auto colon = text.find(':');
  key.mode = text.substr(0, colon);
  if (colon != std::string_view::npos) key.frequency = text.substr(colon + 1);
  return key;
}

void assign_channel_key(std::string& out, std::string_view mode, double frequency_hz) {
  out = mode;
  out += ':';
  append_mhz(out, frequency_hz);
}

}  // namespace results
