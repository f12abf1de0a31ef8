#include "sim/known_places.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "launcher/catalogue/known_selection.h"

namespace sim {
namespace {

using options::AnalysisChannel;
using sig::SignalMode;

constexpr double narrow = 2000;  ///< Hz; channels of a beacon or a bulletin in CW are not wider

/// Where a kind sounds and what lines call it.
struct Habit {
  SignalMode kind;
  std::string_view word;
  double low, high;  ///< Hz above the dial; a high of 0 is the passband's end
};
constexpr std::array<Habit, 8> habits{{
    {SignalMode::cw, "CW", 750, 850},
    {SignalMode::psk31, "PSK31", 600, 0},
    {SignalMode::rtty, "RTTY", 1000, 0},
    {SignalMode::olivia, "OLIVIA", 1500, 0},
    {SignalMode::jtty, "JTTY", 500, 2500},
    {SignalMode::msk144, "MSK144", 1500, 1500},
    {SignalMode::wefax, "WEFAX-120/576", 1900, 1900},
    {SignalMode::sstv, "SSTV-M1", 1900, 1900},
}};

bool contains(const std::vector<SignalMode>& modes, SignalMode mode) {
  return std::find(modes.begin(), modes.end(), mode) != modes.end();
}

bool listens_for(const AnalysisChannel& channel, SignalMode kind) {
  const auto& automatic = sig::automatic_modes;
  const bool in_auto = std::find(automatic.begin(), automatic.end(), kind) != automatic.end();
  return (channel.modes.empty() ? in_auto : contains(channel.modes, kind)) && !contains(channel.skip, kind);
}

/// What the decoders would find there, were there a real band.
bool is_at_home(const AnalysisChannel& channel, SignalMode kind) {
  switch (kind) {
    case SignalMode::cw:
      return channel.bandwidth < narrow;
    case SignalMode::psk31:
      return channel.bandwidth >= narrow && !channel.pairs;
    case SignalMode::rtty:
      return channel.pairs;
    case SignalMode::olivia:
      return !channel.olivia.empty();
    default:
      return true;
  }
}

void add_places(const AnalysisChannel& channel, std::vector<KnownPlace>& places) {
  const double side = channel.modulation == options::Modulation::lsb ? -1 : 1;
  for (const Habit& habit : habits) {
    if (!channel.enabled || !listens_for(channel, habit.kind) || !is_at_home(channel, habit.kind)) continue;
    const double low = channel.frequency + side * habit.low;
    const double high = channel.frequency + side * (habit.high > 0 ? habit.high : channel.bandwidth - 500);
    places.push_back({channel.id, std::string(habit.word), std::min(low, high), std::max(low, high)});
  }
}

}  // namespace

std::vector<KnownPlace> known_places(const options::ReceiverOptions& options) {
  std::vector<KnownPlace> places;
  const auto& known = options.known;
  if (known.known_channels && options.wideband()) {
    for (const auto& channel :
         sig::select_known_channels(known.filters, options.capture.center, options.capture.filter_bandwidth))
      add_places(channel, places);
  }
  for (const auto& channel : options.reception.analysis_channels)
    add_places(channel, places);
  return places;
}

}  // namespace sim
