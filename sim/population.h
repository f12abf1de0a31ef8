// Who is on the air: the stations that this receiver site hears over some weeks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sim {

struct Station {
  std::string call;
  std::string grid;  ///< four characters
};

/// Distinct calls in the order of how often they are heard. The shares of the prefixes, and the number that a site
/// hears in some weeks, are those of public spot statistics (K, N, W, EA, VE, F and DL lead).
std::vector<Station> make_population(std::uint64_t seed, std::size_t size = 5400);

}  // namespace sim
