// Chance that repeats: the same seeds give the same station, so that a restarted engine hears the same band.
#pragma once

#include <cmath>
#include <cstdint>
#include <string_view>

namespace sim {

/// One round of splitmix64 (Steele, Lea, Flood 2014): every bit of the input changes half of the output.
constexpr std::uint64_t scramble(std::uint64_t x) {
  x += 0x9e3779b97f4a7c15ULL;
  x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
  x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
  return x ^ (x >> 31);
}

/// A seed of several parts, in order.
template <typename... Parts>
constexpr std::uint64_t seed_of(std::uint64_t first, Parts... rest) {
  std::uint64_t seed = scramble(first);
  ((seed = scramble(seed ^ static_cast<std::uint64_t>(rest))), ...);
  return seed;
}

/// FNV-1a, for words in a seed.
constexpr std::uint64_t hash_text(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : text)
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  return hash;
}

class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t bits() { return scramble(state_++); }
  /// 0 <= x < 1
  double uniform() { return static_cast<double>(bits() >> 11) * 0x1p-53; }
  double between(double low, double high) { return low + (high - low) * uniform(); }
  /// 0 <= n < limit; limit above 0.
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(bits() % limit); }
  bool chance(double probability) { return uniform() < probability; }
  /// Knuth's product method: fine for the means below 100 of a decode cycle.
  int poisson(double mean) {
    const double floor = std::exp(-mean);
    int count = 0;
    for (double product = uniform(); product > floor; product *= uniform())
      ++count;
    return count;
  }

 private:
  std::uint64_t state_;
};

}  // namespace sim
