#include "results/line_intake.h"

#include <cmath>

#include "results/channel_key.h"
#include "results/spot_summary.h"
#include "results/stamp.h"

namespace results {

LineIntake::LineIntake(ActivityModel& activity, GuiLog& log, base::Clock clock, IntakeSinks sinks)
    : activity_(activity), log_(log), clock_(std::move(clock)), sinks_(std::move(sinks)) {}

void LineIntake::take(std::string_view line, bool counts, std::string_view label) {
  tell_time(clock_());
  feed_views(line, label);
  const LineClass line_class = classify_line(line);
  if (!line_class.hidden) show(line, label, line_class);
  if (line_class.summary && counts) count(line, label);
}

void LineIntake::tell_time(double now) {
  now_ = now;
  const double second = std::floor(now);
  if (second == told_second_) return;
  told_second_ = second;
  journal_time_ = base::journal_time(now);
}

void LineIntake::feed_views(std::string_view line, std::string_view label) {
  if (sinks_.statistics) sinks_.statistics(line, label);
  if (sinks_.text_modes) sinks_.text_modes(line, label);
  if (!sinks_.images || !(line.starts_with("SIG WEFAX") || line.starts_with("SIG SSTV"))) return;
  const auto parsed = sig::parse_sig_line(line);
  if (parsed && parsed->field("ch")) sinks_.images(*parsed, label);
}

void LineIntake::show(std::string_view line, std::string_view label, const LineClass& line_class) {
  if (sinks_.pane) {
    constexpr std::size_t date = std::string_view("2026-10-03 ").size();
    display_ = std::string_view(journal_time_).substr(date);
    display_ += ' ';
    append_display_text(display_, line, label);
    display_ += '\n';
    sinks_.pane(line_class.pane, line_class.tag, display_);
  }
  log_.write(journal_time_, label, line);
  if (sinks_.diagnostics && line_class.pane == Pane::program)
    sinks_.diagnostics(line, label.empty() ? std::string_view("launcher") : label);
}

void LineIntake::count(std::string_view line, std::string_view label) {
  const auto summary = parse_spot_summary(line);
  if (!summary) return;
  assign_channel_key(key_, summary->mode, summary->frequency);
  const auto capture_time = stamp_seconds(summary->stamp);
  if (const DecodeMode* mode = find_mode(summary->mode); mode && capture_time && sinks_.rate)
    sinks_.rate({mode->family, now_, *capture_time, mode->cycle_seconds, summary->frequency, key_, summary->spots});

  const bool new_channel = activity_.count(*summary, key_, capture_time, label);
  const auto& follow_up = new_channel ? sinks_.new_channel : sinks_.refresh;
  if (follow_up) follow_up();
}

}  // namespace results
