// Resident memory after 1,000,000 and after 10,000,000 lines through the intake: it must not grow with lines. Time goes
// on by 72 ms a line, so the ten million are more than eight days of a busy station.
#include <string>
#include <unistd.h>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/text.h"
#include "results/line_intake.h"
#include "station_lines.h"

namespace {

double resident_mb() {
  const std::string statm = base::read_file("/proc/self/statm");
  return std::stod(std::string(base::words(statm).at(1))) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

}  // namespace

int main() {
  bench::LineSource source(0.072);
  results::ActivityModel activity;
  activity.begin_session(bench::busy_plan());
  results::GuiLog log;
  std::size_t shown = 0;
  results::IntakeSinks sinks;
  sinks.pane = [&shown](results::Pane, results::Tag, std::string_view text) { shown += text.size(); };
  results::LineIntake intake(
      activity, log, [&source] { return source.now(); }, std::move(sinks));

  constexpr int million = 1000000;
  double after_first_million = 0;
  for (int taken = 1; taken <= 10 * million; ++taken) {
    const auto& [line, label, stamp_at] = source.next();
    intake.take(line, true, label);
    if (taken % 4 == 0) activity.refresh(source.now());
    if (taken % million != 0) continue;
    const double resident = resident_mb();
    if (taken == million) after_first_million = resident;
    fmt::print("{:>8} lines: {:.2f} MB resident, {:.4f} of the first\n", taken, resident,
               resident / after_first_million);
  }
}
