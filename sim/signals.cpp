#include "sim/signals.h"

#include <array>
#include <cmath>

#include <fmt/format.h>

#include "base/time_text.h"
#include "sim/lines.h"
#include "sim/random.h"

namespace sim {
namespace {

constexpr int transmission_steps = 18;  ///< a transmission and the pause behind it: 90 seconds
constexpr int chart_steps = 120;        ///< a weather chart: ten minutes
constexpr int picture_steps = 23;       ///< an SSTV picture: just under two minutes
constexpr std::size_t letters_per_step = 12;
constexpr double lines_per_second = 2;  ///< of a chart sent with 120 lines a minute

struct Place {
  std::int64_t number;  ///< of the transmission, since the epoch
  int step;             ///< within it
};

Place place_in(double time, int steps) {
  const auto step = static_cast<std::int64_t>(std::llround(time / KnownSignals::step)) - 1;
  return {step / steps, static_cast<int>(step % steps)};
}

std::string head(const KnownPlace& place, double time, double hz, std::string_view kind) {
  return fmt::format("SIG {} {} {:.6f} MHz: {}", place.mode, base::stamp_time(time), hz / 1e6, kind);
}

bool is_picture(const KnownPlace& place) {
  return place.mode.starts_with("WEFAX") || place.mode.starts_with("SSTV");
}

/// A transmission whose sender is read once the second call has come through.
std::string call_text(const Station& from, Random& random) {
  static constexpr std::array<std::string_view, 3> forms{"cq cq cq de {0} {0} {0} pse k  ",
                                                         "{1} de {0} {0} ur 599 599 in {2} bk  ",
                                                         "{1} {1} de {0} tnx fer qso es 73 sk  "};
  return fmt::format(fmt::runtime(forms[random.below(forms.size())]), from.call, "K1ABC", from.grid);
}

}  // namespace

KnownSignals::KnownSignals(std::uint64_t seed, std::vector<KnownPlace> places, const std::vector<Station>& population)
    : seed_(seed), places_(std::move(places)), population_(population) {}

std::vector<std::string> KnownSignals::lines(double time) const {
  std::vector<std::string> lines;
  for (const KnownPlace& place : places_) {
    if (is_picture(place))
      add_picture_lines(place, time, lines);
    else
      add_text_lines(place, time, lines);
  }
  return lines;
}

void KnownSignals::add_text_lines(const KnownPlace& place, double time, std::vector<std::string>& lines) const {
  static constexpr std::array<std::string_view, 4> checks{"KNOWN", "SCP", "ONLINE", "REPEAT"};
  const auto [number, now] = place_in(time, transmission_steps);
  Random random(seed_of(seed_, hash_text(place.channel), hash_text(place.mode), number));
  if (!random.chance(0.25)) return;
  const Station& station = population_[random.below(population_.size())];
  const double hz = std::round(random.between(place.low, place.high));
  const double snr = random.between(6, 25);
  const std::string text = call_text(station, random);
  const auto from = static_cast<std::size_t>(now) * letters_per_step;
  if (from >= text.size()) return;
  const auto until = std::min(from + letters_per_step, text.size());
  const std::string common = fmt::format(" track={} ch={} snr={:.1f}", number % 1000000, place.channel, snr);
  const auto read = text.rfind(station.call) + station.call.size();
  const bool known_now = read > from && read <= until;
  lines.push_back(head(place, time, hz, "text") + common +
                  " text=" + quoted(std::string_view(text).substr(from, until - from)) +
                  (known_now ? fmt::format(" calls={}:{:.2f}", station.call, random.between(0.6, 0.99)) : ""));
  if (known_now)
    lines.push_back(head(place, time, hz, "spot") + common +
                    fmt::format(" call={} check={}", station.call, checks[random.below(checks.size())]));
}

void KnownSignals::add_picture_lines(const KnownPlace& place, double time, std::vector<std::string>& lines) const {
  const bool fax = place.mode.starts_with("WEFAX");
  const int length = fax ? chart_steps : picture_steps;
  const auto [number, now] = place_in(time, length);
  if (!Random(seed_of(seed_, hash_text(place.channel), number)).chance(fax ? 0.3 : 0.1)) return;
  const double hz = (place.low + place.high) / 2;
  const std::string common =
      fmt::format(" track={} ch={}", 2147483648U + static_cast<unsigned>(number % 1000000), place.channel);
  const int received = static_cast<int>(now * step * lines_per_second);
  if (now == 0)
    lines.push_back(head(place, time, hz, "wefax-start") + common + " lines=0");
  else if (now == length - 1)
    lines.push_back(head(place, time, hz, "wefax-stop") + common);
  else if (now % 6 == 0)
    lines.push_back(head(place, time, hz, "wefax-progress") + common + fmt::format(" lines={}", received));
}

}  // namespace sim
