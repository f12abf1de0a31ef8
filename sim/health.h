// What the engine says about itself between its results.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "sim/output.h"
#include "sim/random.h"
#include "sim/scenario.h"
#include "sim/timeline.h"

namespace sim {

class Health {
 public:
  /// Everything is said on the true clock. The timeline and the output must outlive this.
  Health(const Scenario& scenario, std::uint64_t seed, Output& output);

  void plan(Timeline& timeline, double start);
  /// Also tells of uploads to PSK Reporter, every five minutes in which something was heard.
  void plan_reports(Timeline& timeline, double start);

  /// Counts decodes for the next upload.
  void count_spots(std::size_t spots) { unsent_ += spots; }

 private:
  double last_hour(double now);
  double discontinuity(double now);
  double overload(double now);
  double report(double now);
  /// The time of the next of events that come `per_hour` on average.
  double later(double now, double per_hour);

  double discontinuities_per_hour_;
  double overloads_per_hour_;
  Random random_;
  Output& output_;
  std::size_t unsent_ = 0;
  int discontinuities_ = 0;
  bool overloaded_ = false;
};

}  // namespace sim
