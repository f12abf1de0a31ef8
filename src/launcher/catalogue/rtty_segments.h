// The bands that a receiver can scan for RTTY. Constant data, any thread. Frequencies in Hz, all edges inclusive.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace sig {

struct RttySegment {
  std::string_view name;             ///< "band20"
  std::string_view label;            ///< "RTTY 20 m"
  double low{}, high{};              ///< the whole band
  double slice_low{}, slice_high{};  ///< the part that is really scanned; zero when it is the whole band

  [[nodiscard]] constexpr std::string_view band() const { return name.substr(4); }  ///< "20"
};

inline constexpr std::array<RttySegment, 10> rtty_segments{{
    {"band160", "RTTY 160 m", 1800000, 2000000},
    {"band80", "RTTY 80 m", 3500000, 4000000},
    {"band40", "RTTY 40 m", 7000000, 7300000},
    {"band30", "RTTY 30 m", 10100000, 10150000},
    {"band20", "RTTY 20 m", 14000000, 14350000},
    {"band17", "RTTY 17 m", 18068000, 18168000},
    {"band15", "RTTY 15 m", 21000000, 21450000},
    {"band12", "RTTY 12 m", 24890000, 24990000},
    {"band10", "RTTY 10 m", 28000000, 29700000, 28000000, 28300000},
    {"band6", "RTTY 6 m", 50000000, 54000000, 50250000, 50650000},
}};

/// The segment that holds a frequency, null outside all of them.
const RttySegment* rtty_segment_at(double hz);
/// What the tooltip of a band's RTTY cell says.
std::string rtty_segment_tooltip(const RttySegment& segment);

}  // namespace sig
