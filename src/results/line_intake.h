// The one way in for every line: from engines, and for the launcher's own words.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/time_text.h"
#include "results/activity_model.h"
#include "results/gui_log.h"
#include "results/line_class.h"
#include "results/mode_table.h"
#include "results/sig_line.h"

namespace results {

/// One decode cycle for the rate graphs. Times in seconds since the epoch; `key` lives for the call only.
struct RateObservation {
  Family family{};
  double now{};
  double capture_time{};
  double cycle_seconds{};
  double frequency{};    ///< Hz
  std::string_view key;  ///< "FT8:14.074000"
  std::uint64_t spots{};
};

/// Who is told of lines; one that is not set is passed over. Views live for the call only. `new_channel` and `refresh`
/// come last and may take further lines through the same intake; the others may not.
struct IntakeSinks {
  std::function<void(std::string_view line, std::string_view label)> statistics;       ///< every line
  std::function<void(std::string_view line, std::string_view label)> text_modes;       ///< every line
  std::function<void(const sig::ParsedSigLine& line, std::string_view label)> images;  ///< fax and SSTV with a `ch`
  std::function<void(Pane pane, Tag tag, std::string_view text)> pane;  ///< UTF-8, clock in front, line feed behind
  /// Lines of the program pane; the launcher's own come with the label "launcher".
  std::function<void(std::string_view line, std::string_view label)> diagnostics;
  std::function<void(const RateObservation& observation)> rate;
  std::function<void()> new_channel;  ///< the cards must be rebuilt now
  std::function<void()> refresh;      ///< counters moved: start the owner's 250 ms timer unless it runs
};

/// Classifies, shows, logs and counts. Main thread only.
class LineIntake {
 public:
  LineIntake(ActivityModel& activity, GuiLog& log, base::Clock clock, IntakeSinks sinks);

  /// `line` is without its terminator. Only lines of the current session's engines may count. `label` is the
  /// receiver's, empty for the launcher itself.
  void take(std::string_view line, bool counts, std::string_view label);

 private:
  void feed_views(std::string_view line, std::string_view label);
  void show(std::string_view line, std::string_view label, const LineClass& line_class);
  void count(std::string_view line, std::string_view label);
  void tell_time(double now);

  ActivityModel& activity_;
  GuiLog& log_;
  base::Clock clock_;
  IntakeSinks sinks_;
  double now_ = 0;
  double told_second_ = -1;   ///< the second that journal_time_ says
  std::string journal_time_;  ///< "2026-10-03 12:00:00Z"
  std::string display_;
  std::string key_;
};

}  // namespace results
