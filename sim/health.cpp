#include "sim/health.h"

#include <cmath>

#include <fmt/format.h>

namespace sim {
namespace {

constexpr double report_period = 300;

}  // namespace

Health::Health(const Scenario& scenario, std::uint64_t seed, Output& output)
    : discontinuities_per_hour_(scenario.discontinuities_per_hour),
      overloads_per_hour_(scenario.overloads_per_hour),
      random_(seed),
      output_(output) {}

void Health::plan(Timeline& timeline, double start) {
  timeline.add(start + 3600, [this](double now) { return last_hour(now); });
  timeline.add(later(start, discontinuities_per_hour_), [this](double now) { return discontinuity(now); });
  timeline.add(later(start, overloads_per_hour_), [this](double now) { return overload(now); });
}

void Health::plan_reports(Timeline& timeline, double start) {
  timeline.add(start + report_period, [this](double now) { return report(now); });
}

double Health::later(double now, double per_hour) {
  return per_hour > 0 ? now - std::log(1 - random_.uniform()) * 3600 / per_hour : never;
}

double Health::last_hour(double now) {
  output_.line(fmt::format(
      "Last hour: {} interval(s) dropped for gaps, {} restart(s) of all intervals, deepest backlog {:.1f} s",
      discontinuities_, discontinuities_, random_.between(0.1, 2.5)));
  discontinuities_ = 0;
  return now + 3600;
}

double Health::discontinuity(double now) {
  ++discontinuities_;
  output_.line(fmt::format("IQ discontinuity: discarded incomplete decoder intervals (resets={}, driver reset)",
                           discontinuities_));
  return later(now, discontinuities_per_hour_);
}

double Health::overload(double now) {
  overloaded_ = !overloaded_;
  output_.line(overloaded_ ? "Overload: strong signals drive the receiver beyond its range" : "Overload cleared");
  return overloaded_ ? now + random_.between(2, 20) : later(now, overloads_per_hour_);
}

double Health::report(double now) {
  if (unsent_ > 0) output_.line(fmt::format("PSK Reporter: sent {} spots", unsent_));
  unsent_ = 0;
  return now + report_period;
}

}  // namespace sim
