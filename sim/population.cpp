#include "sim/population.h"

#include <array>
#include <numeric>
#include <string_view>
#include <unordered_set>

#include <fmt/format.h>

#include "base/text.h"
#include "sim/random.h"

namespace sim {
namespace {

struct Country {
  int weight;                 ///< of a thousand or so
  std::string_view prefixes;  ///< one of these, blank-separated
  std::string_view fields;    ///< locator fields, most of them with the first digit of the square
  int suffix_letters;         ///< the longest suffix
};

constexpr std::array<Country, 44> countries{{
    {105, "K KA KB KC KD KE KF KG KI KJ KK KM KN KO", "EM FN FM EN DM DN CN EL CM", 3},
    {85, "N N N NA NE NI NN NU", "EM FN FM EN DM DN CN EL", 3},
    {85, "W W W WA WB WD WX", "EM FN FM EN DM DN CN EL", 3},
    {20, "AA AB AC AD AE AI AJ", "EM FN EN DM CN", 2},
    {70, "EA EA EB EC", "IN IM JN JM", 3},
    {60, "VE VE VA", "FN EN DO CN FO", 3},
    {55, "F", "JN IN JO", 3},
    {55, "DL DL DJ DK DF DG DO", "JO JN", 3},
    {50, "IK IZ IU IW IV", "JN JM", 3},
    {40, "G M", "IO JO", 3},
    {35, "JA JA JE JF JH JK JR", "PM QM QN", 3},
    {25, "SP SQ SO", "JO KO", 3},
    {20, "PY PU PP", "GG GF GH", 3},
    {20, "UA R RA RW UB", "KO LO KN MO", 3},
    {18, "OK OK OL", "JN JO", 3},
    {16, "PA PD PE", "JO", 3},
    {15, "LU LU LW", "GF FF", 3},
    {14, "ON ON OT", "JO", 3},
    {14, "YO", "KN", 3},
    {13, "UR US UT", "KN KO", 3},
    {12, "OE", "JN", 3},
    {12, "HA HG", "JN KN", 3},
    {12, "SM SA", "JO JP", 3},
    {12, "SV SW", "KM", 3},
    {12, "CT CT CR", "IM IN", 3},
    {10, "OH OG", "KP", 3},
    {10, "OZ OU", "JO", 3},
    {10, "HB", "JN", 3},
    {10, "XE", "EK DL DK", 3},
    {10, "VK", "QF PF OF QG", 3},
    {10, "LZ", "KN", 3},
    {9, "YU YT", "KN JN", 3},
    {8, "LA LB", "JO JP", 2},
    {8, "OM", "JN KN", 3},
    {8, "EI MI MM", "IO", 3},
    {8, "S5", "JN", 2},
    {8, "YB YC", "OI", 3},
    {7, "HK", "FJ", 3},
    {7, "CO CL", "EL FL", 3},
    {7, "CE CA", "FF", 3},
    {6, "ZL", "RF RE", 3},
    {6, "BG BH BD", "OM OL PM", 3},
    {5, "ZS", "KG JF", 2},
    {5, "4X 4Z", "KM", 3},
}};

std::string_view pick(Random& random, std::string_view blank_separated) {
  const auto choices = base::words(blank_separated);
  return choices[random.below(choices.size())];
}

const Country& pick_country(Random& random) {
  static const int total = std::accumulate(countries.begin(), countries.end(), 0,
                                           [](int sum, const Country& row) { return sum + row.weight; });
  auto ticket = static_cast<int>(random.below(static_cast<std::size_t>(total)));
  for (const Country& country : countries) {
    if ((ticket -= country.weight) < 0) return country;
  }
  return countries.back();
}

std::string make_call(Random& random, const Country& country) {
  std::string call(pick(random, country.prefixes));
  call += static_cast<char>('0' + random.below(10));
  const auto letters = 2 + random.below(static_cast<std::size_t>(country.suffix_letters) - 1);
  for (std::size_t i = 0; i < letters; ++i)
    call += static_cast<char>('A' + random.below(26));
  return random.chance(0.008) ? call + "/P" : call;
}

}  // namespace

std::vector<Station> make_population(std::uint64_t seed, std::size_t size) {
  Random random(seed_of(seed, hash_text("population")));
  std::vector<Station> stations;
  std::unordered_set<std::string> taken;
  while (stations.size() < size) {
    const Country& country = pick_country(random);
    std::string call = make_call(random, country);
    if (!taken.insert(call).second) continue;
    stations.push_back(
        {std::move(call), fmt::format("{}{}{}", pick(random, country.fields), random.below(10), random.below(10))});
  }
  return stations;
}

}  // namespace sim
