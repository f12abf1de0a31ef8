// What the known-frequency decoders hear: texts, spots and charts as SIG lines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sim/population.h"

namespace sim {

/// A place on the dial where something other than the digital modes is decoded.
struct KnownPlace {
  std::string channel;  ///< its id in the catalogue of known channels
  std::string mode;     ///< "CW", "PSK31", "RTTY", "OLIVIA-8/250", "JTTY", "MSK144", "WEFAX-120/576" or "SSTV-M1"
  double low{};         ///< Hz, the lowest and highest place of a signal
  double high{};
};

class KnownSignals {
 public:
  /// A step of the signals' clock, in seconds: what every place says is told by the step.
  static constexpr double step = 5;

  /// `population` must outlive this.
  KnownSignals(std::uint64_t seed, std::vector<KnownPlace> places, const std::vector<Station>& population);

  /// The lines of the step that ends at `time`. The same step always says the same.
  [[nodiscard]] std::vector<std::string> lines(double time) const;

 private:
  void add_text_lines(const KnownPlace& place, double time, std::vector<std::string>& lines) const;
  void add_picture_lines(const KnownPlace& place, double time, std::vector<std::string>& lines) const;

  std::uint64_t seed_;
  std::vector<KnownPlace> places_;
  const std::vector<Station>& population_;
};

}  // namespace sim
