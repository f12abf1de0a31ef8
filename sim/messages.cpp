#include "sim/messages.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace sim {
namespace {

bool compound(const Station& station) {
  return station.call.find('/') != std::string::npos;
}

std::string general_call(const Station& from, Random& random) {
  static constexpr std::array<std::string_view, 6> directions{"DX ", "DX ", "POTA ", "NA ", "EU ", "TEST "};
  if (compound(from)) return "CQ " + from.call;
  const auto direction = random.chance(0.2) ? directions[random.below(directions.size())] : std::string_view();
  return fmt::format("CQ {}{} {}", direction, from.call, from.grid);
}

Said ft_message(const Station& from, const Station& to, int snr, Random& random) {
  if (random.chance(0.28)) return {general_call(from, random)};
  // A compound call fills the message, so the other side is hashed and nothing else fits.
  if (compound(from)) return {fmt::format("<{}> {} {}", to.call, from.call, random.chance(0.5) ? "RR73" : "73")};
  const std::string addressed = compound(to) ? "<" + to.call + ">" : to.call;
  if (random.chance(0.01)) return {fmt::format("{} <...> {:+03d}", addressed, snr), false};
  switch (random.below(6)) {
    case 0:
      return {fmt::format("{} {} {}", addressed, from.call, from.grid)};
    case 1:
      return {fmt::format("{} {} {:+03d}", addressed, from.call, snr)};
    case 2:
      return {fmt::format("{} {} R{:+03d}", addressed, from.call, snr)};
    case 3:
      return {fmt::format("{} {} RR73", addressed, from.call)};
    case 4:
      return {fmt::format("{} {} RRR", addressed, from.call)};
    default:
      return {fmt::format("{} {} 73", addressed, from.call)};
  }
}

Said js8_message(const Station& from, const Station& to, int snr, Random& random) {
  static constexpr std::array<std::string_view, 4> talk{"QSL? 73", "TNX FER CALL", "HW CPY?", "GM FROM A SUNNY QTH"};
  const std::string tail = fmt::format(" sender={} grid={}", from.call, random.chance(0.8) ? from.grid : "unknown");
  switch (random.below(4)) {
    case 0:
      return {fmt::format("{}: @HB HEARTBEAT {}{}", from.call, from.grid, tail)};
    case 1:
      return {fmt::format("{}: CQ CQ CQ {}{}", from.call, from.grid, tail)};
    case 2:
      return {fmt::format("{}: {} SNR {:+03d}{}", from.call, to.call, snr, tail)};
    default:
      return {fmt::format("{}: {} {}{}", from.call, to.call, talk[random.below(talk.size())], tail)};
  }
}

Said wspr_message(const Station& from, Random& random) {
  static constexpr std::array<int, 8> powers{10, 20, 23, 23, 30, 33, 37, 37};
  const int power = powers[random.below(powers.size())];
  if (random.chance(0.01)) return {fmt::format("<...> {} {}", from.grid, power), false};
  return {fmt::format("{} {} {}", from.call, from.grid, power)};
}

}  // namespace

Said say(Mode mode, const Station& from, const Station& to, int snr, Random& random) {
  const int report = std::clamp(snr, -30, 49);
  if (mode == Mode::wspr) return wspr_message(from, random);
  if (mode == Mode::ft8 || mode == Mode::ft4) return ft_message(from, to, report, random);
  return js8_message(from, to, report, random);
}

}  // namespace sim
