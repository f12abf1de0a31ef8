// Makes a style sheet larger or smaller by rewriting its lengths.
#pragma once

#include <string>
#include <string_view>

namespace ui_scale {

inline constexpr double smallest_factor = 0.5;
inline constexpr double largest_factor = 2.5;

/// `factor` within smallest_factor..largest_factor; 1 when it is no finite number.
double limited_factor(double factor);

/// The style sheet with every length in "px" multiplied by the limited factor; all other bytes stay as they are. In a
/// `font-size` a length gets one decimal. Elsewhere it becomes whole: above 2 it is rounded, and at 2 or less, where
/// borders and hairlines are, it is cut but never below 1; 0 stays 0. Linear in the length of the text. Any thread.
std::string scaled_css(std::string_view css, double factor);

}  // namespace ui_scale
