#include "sim/timeline.h"

#include <algorithm>

#include "base/time_text.h"

namespace sim {

void Timeline::run(StopSignal& stop) {
  const auto now = base::system_clock();
  const auto earlier = [](const Entry& a, const Entry& b) { return a.due < b.due; };
  // Something to wait for when nothing is planned at all.
  add(never, [](double) { return never; });
  for (;;) {
    Entry& next = *std::min_element(entries_.begin(), entries_.end(), earlier);
    stop.sleep_until(next.due);
    next.due = next.action(now());
  }
}

}  // namespace sim
