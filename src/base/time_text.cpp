#include "base/time_text.h"

#include <chrono>
#include <cmath>

#include <fmt/format.h>

namespace base {
namespace {

struct CivilTime {
  int year;
  unsigned month, day;
  int hour, minute, second;
};

CivilTime civil(double seconds) {
  using namespace std::chrono;
  const sys_seconds time{std::chrono::seconds(static_cast<std::int64_t>(std::floor(seconds)))};
  const auto day = floor<days>(time);
  const year_month_day date{day};
  const hh_mm_ss clock{time - day};
  return {int(date.year()),           unsigned(date.month()),       unsigned(date.day()),
          int(clock.hours().count()), int(clock.minutes().count()), int(clock.seconds().count())};
}

}  // namespace

Clock system_clock() {
  return [] { return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count(); };
}

std::string journal_time(double seconds) {
  const auto t = civil(seconds);
  return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02}Z", t.year, t.month, t.day, t.hour, t.minute, t.second);
}

std::string clock_time(double seconds) {
  const auto t = civil(seconds);
  return fmt::format("{:02}:{:02}:{:02}Z", t.hour, t.minute, t.second);
}

std::string stamp_time(double seconds) {
  const auto t = civil(seconds);
  return fmt::format("{:02}{:02}{:02}_{:02}{:02}{:02}", t.year % 100, t.month, t.day, t.hour, t.minute, t.second);
}

std::optional<std::int64_t> utc_seconds(int year, int month, int day, int hour, int minute, int second) {
  using namespace std::chrono;
  // The calendar types hold 16 and 8 bits and would wrap silently.
  if (year < 1970 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  const year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok() || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59)
    return std::nullopt;
  const auto time =
      sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) + std::chrono::seconds(second);
  return duration_cast<std::chrono::seconds>(time.time_since_epoch()).count();
}

}  // namespace base
