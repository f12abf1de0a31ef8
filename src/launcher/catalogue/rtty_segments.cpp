#include "launcher/catalogue/rtty_segments.h"

#include <algorithm>

#include <fmt/format.h>

namespace sig {

const RttySegment* rtty_segment_at(double hz) {
  const auto* const found = std::find_if(rtty_segments.begin(), rtty_segments.end(), [hz](const RttySegment& segment) {
    return hz >= segment.low && hz <= segment.high;
  });
  return found == rtty_segments.end() ? nullptr : found;
}

std::string rtty_segment_tooltip(const RttySegment& segment) {
  if (segment.slice_high > 0)
    return fmt::format("The band's RTTY segment, {} to {} kHz, scanned for RTTY", segment.slice_low / 1000,
                       segment.slice_high / 1000);
  return fmt::format("The whole band, {} to {} kHz, scanned for RTTY", segment.low / 1000, segment.high / 1000);
}

}  // namespace sig
