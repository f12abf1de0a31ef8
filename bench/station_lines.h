// What a busy station prints, as fast as it is asked for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/receiver_launch.h"

namespace bench {

/// Receivers with all digital modes on eleven bands.
std::vector<launcher::ReceiverLaunch> busy_plan();

/// One line of a station and the receiver it comes from.
struct StationLine {
  std::string line;
  std::string label;
  std::size_t stamp_at = std::string::npos;  ///< where its stamp stands
};

/// The same 100,000 lines of a busy day again and again, each stamped with a time of its own. Of 20 lines 14 are
/// summaries with callsigns (FT8 up to 40, WSPR up to 20, JS8 up to 4, out of 600 stations that a channel hears), 3 are
/// empty cycles, 2 are known-frequency text and 1 is an engine's free text.
class LineSource {
 public:
  /// `line_seconds` go by from line to line: 0.072 on a busy station, millionths when an engine floods us.
  explicit LineSource(double line_seconds);
  /// Valid until the next call.
  const StationLine& next();
  /// The time of the last line, seconds.
  [[nodiscard]] double now() const { return now_; }

 private:
  std::vector<StationLine> lines_;
  std::size_t place_ = 0;
  double line_seconds_;
  double now_;
  double stamped_second_ = 0;
  std::string stamp_;
};

}  // namespace bench
