#include "sim/traffic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

#include "sim/activity.h"
#include "sim/messages.h"

namespace sim {
namespace {

constexpr double visit = 600;             ///< seconds for which the same stations stay on a channel
constexpr std::size_t most_decodes = 48;  ///< of one cycle

/// Slow fading of a whole band: a factor that wanders from visit to visit without jumps.
double band_mood(std::uint64_t seed, double start) {
  const double position = start / visit;
  const auto slot = static_cast<std::int64_t>(std::floor(position));
  const auto mood = [&](std::int64_t n) { return 0.65 + 0.6 * Random(seed_of(seed, n)).uniform(); };
  const double blend = position - static_cast<double>(slot);
  return mood(slot) * (1 - blend) + mood(slot + 1) * blend;
}

bool takes_turns(Mode mode) {
  return mode == Mode::ft8 || mode == Mode::ft4;
}

int audio_offset(Mode mode, Random& random) {
  return static_cast<int>(mode == Mode::wspr ? random.between(1400, 1600) : random.between(200, 2900));
}

}  // namespace

/// A station during one visit to a channel.
struct Traffic::Visitor {
  const Station* station;
  int snr;  ///< dB, before it fades
  int audio;
  bool odd;  ///< it sends in odd cycles, where a mode takes turns
};

int snr_quantile(double chance) {
  struct Point {
    double chance, snr;
  };
  static constexpr std::array<Point, 7> curve{
      {{0, -24}, {0.01, -24}, {0.1, -18}, {0.5, -6}, {0.9, 12}, {0.99, 26}, {1, 58}}};
  const double wanted = std::clamp(chance, 0.0, 1.0);
  const auto upper =
      std::find_if(curve.begin() + 1, curve.end(), [&](const Point& point) { return point.chance >= wanted; });
  const auto lower = upper - 1;
  const double part = (wanted - lower->chance) / (upper->chance - lower->chance);
  return static_cast<int>(std::lround(lower->snr + part * (upper->snr - lower->snr)));
}

Traffic::Traffic(std::uint64_t seed, double activity, double longitude)
    : seed_(seed), activity_(activity), longitude_(longitude), population_(make_population(seed)) {}

double Traffic::expected(const Channel& channel, double start) const {
  const double local_hour = std::fmod(start / 3600 + longitude_ / 15 + 24, 24);
  const auto mood_seed = seed_of(seed_, hash_text("mood"), std::llround(channel.frequency));
  return busy_decodes(channel, local_hour) * activity_ * band_mood(mood_seed, start);
}

std::vector<Traffic::Visitor> Traffic::visitors(const Channel& channel, double start, double mean) const {
  const auto slot = static_cast<std::int64_t>(std::floor(start / visit));
  Random random(seed_of(seed_, static_cast<int>(channel.mode), std::llround(channel.frequency), slot));
  // A station sends every other cycle where modes take turns, and not in each of its turns.
  const auto wanted = static_cast<std::size_t>(std::ceil(mean * (takes_turns(channel.mode) ? 3.2 : 2.5))) + 2;
  std::vector<Visitor> chosen;
  std::unordered_set<std::size_t> taken;
  while (chosen.size() < std::min(wanted, population_.size())) {
    // Some are on the air every day, most now and then.
    const auto rank =
        static_cast<std::size_t>(std::pow(random.uniform(), 1.8) * static_cast<double>(population_.size()));
    if (!taken.insert(rank).second) continue;
    chosen.push_back(
        {&population_[rank], snr_quantile(random.uniform()), audio_offset(channel.mode, random), random.chance(0.5)});
  }
  return chosen;
}

std::vector<Decode> Traffic::cycle(const Channel& channel, double start) const {
  const double length = mode_timing(channel.mode).cycle;
  const auto number = static_cast<std::int64_t>(std::llround(start / length));
  const double mean = expected(channel, start);
  Random random(
      seed_of(seed_, hash_text("cycle"), static_cast<int>(channel.mode), std::llround(channel.frequency), number));
  const auto count = std::min(static_cast<std::size_t>(random.poisson(mean)), most_decodes);

  auto present = visitors(channel, start, mean);
  const std::vector<Visitor> everybody = present;
  if (takes_turns(channel.mode))
    std::erase_if(present, [&](const Visitor& who) { return who.odd != (number % 2 != 0); });
  std::vector<Decode> decodes;
  while (decodes.size() < count && !present.empty()) {
    const auto index = random.below(present.size());
    const Visitor who = present[index];
    present.erase(present.begin() + static_cast<std::ptrdiff_t>(index));
    const int snr = std::clamp(who.snr + static_cast<int>(random.below(5)) - 2, -24, 58);
    const Station& other = *everybody[random.below(everybody.size())].station;
    Said said = say(channel.mode, *who.station, &other == who.station ? population_.front() : other, snr, random);
    decodes.push_back({snr, random.between(-0.3, 0.6) + random.between(-0.3, 0.3), who.audio, std::move(said.message),
                       said.sender_known ? who.station->call : std::string()});
  }
  return decodes;
}

}  // namespace sim
