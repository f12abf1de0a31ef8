#include "base/scaled_css.h"

#include <cmath>
#include <limits>
#include <random>
#include <regex>
#include <string>

#include <gtest/gtest.h>

namespace {

using ui_scale::scaled_css;

struct Case {
  const char* css;
  double factor;
  const char* expected;
};

void expect_all(std::initializer_list<Case> cases) {
  for (const auto& c : cases)
    EXPECT_EQ(scaled_css(c.css, c.factor), c.expected) << c.css << " at " << c.factor;
}

TEST(ScaledCss, RoundsLengthsAndKeepsHairlines) {
  expect_all({
      {"a { min-width: 20px; }", 1.25, "a { min-width: 25px; }"},
      {"padding: 3px", 0.5, "padding: 2px"},
      {"padding: 5px", 0.5, "padding: 3px"},
      {"padding: 2.5px", 0.5, "padding: 1px"},
      {"border: 1px solid #22384D", 2.5, "border: 2px solid #22384D"},
      {"border: 1px solid", 0.5, "border: 1px solid"},
      {"border: 2px", 1.25, "border: 2px"},
      {"border: 2px", 1.5, "border: 3px"},
      {"border: 0.1px", 2.5, "border: 1px"},
      {"margin: 0px 0.0px 4px", 2, "margin: 0px 0px 8px"},
      {"margin: -6px", 1.5, "margin: -9px"},
      {"padding: .5px", 2.5, "padding: 1px"},
      {"padding: 1.2.5px", 2, "padding: 1.5px"},
      {"padding: 12.px 1em 50%", 2, "padding: 12.px 1em 50%"},
  });
}

TEST(ScaledCss, GivesFontsOneDecimal) {
  expect_all({
      {"font-size: 13px;", 1, "font-size: 13.0px;"},
      {"font-size:9px", 1.5, "font-size:13.5px"},
      {"font-size: 0px", 2, "font-size: 0.0px"},
      {"font-size: .5px", 2, "font-size: 1.0px"},
      {"font-size: 1px", 0.5, "font-size: 0.5px"},
      {"-gtk-font-size: 10px", 1.5, "-gtk-font-size: 15px"},
      {"Font-size : 10px", 1.5, "Font-size : 15px"},
      {"FONT-SIZE: 10px", 1.5, "FONT-SIZE: 10px"},
  });
}

TEST(ScaledCss, LimitsTheFactorFirst) {
  const double infinity = std::numeric_limits<double>::infinity();
  expect_all({
      {"width: 100px", 0.1, "width: 50px"},
      {"width: 100px", 9, "width: 250px"},
      {"width: 100px", -1, "width: 50px"},
      {"width: 100px", infinity, "width: 100px"},
      {"width: 100px", std::nan(""), "width: 100px"},
  });
}

TEST(ScaledCss, TouchesOnlyLengthsInDeclarations) {
  for (const char* css : {"", "a:hover b { }", "@define-color x10px #fff;", "10px", "{10px}", "a { color : red; ",
                          ":px;;", "/* é ü */ a\n{\n}\n", "name"})
    EXPECT_EQ(scaled_css(css, 2), css);
  EXPECT_EQ(scaled_css(std::string("a: 4px\0; b: 4px", 15), 2), std::string("a: 8px\0; b: 8px", 15));
}

TEST(ScaledCss, StaysInRangeForAbsurdNumbers) {
  const std::string digits(400, '9');
  EXPECT_EQ(scaled_css("width: " + digits + "px", 1), "width: 1000000000px");
  EXPECT_EQ(scaled_css("width: 0." + std::string(400, '0') + "1px", 1), "width: 0px");
}

// The rule as it is thought of: two regular expressions, with none of their cost.
std::string by_regular_expressions(const std::string& css, double factor) {
  static const std::regex declaration("([-a-z]+)(\\s*:\\s*)([^;{}]*)"), length("(\\d+(?:\\.\\d+)?|\\.\\d+)px");
  const auto replace = [](const std::string& text, const std::regex& pattern, const auto& with) {
    std::string out;
    auto rest = text.cbegin();
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
      out.append(rest, (*match)[0].first);
      out += with(*match);
      rest = (*match)[0].second;
    }
    return out.append(rest, text.cend());
  };
  return replace(css, declaration, [&](const std::smatch& found) {
    const bool font = found[1] == "font-size";
    return found[1].str() + found[2].str() + replace(found[3].str(), length, [&](const std::smatch& number) {
             const double value = std::stod(number[1].str());
             char text[64];
             if (font)
               std::snprintf(text, sizeof text, "%.1fpx", value * factor);
             else if (value > 2)
               std::snprintf(text, sizeof text, "%ldpx", std::lround(value * factor));
             else
               std::snprintf(text, sizeof text, "%gpx",
                             value == 0 ? 0 : std::max(1.0, std::floor(value * factor + 1e-9)));
             return std::string(text);
           });
  });
}

TEST(ScaledCss, AgreesWithTheRegularExpressionsOnRandomText) {
  static const char* const pieces[] = {"font-size", "a",     "-",     ":",  " : ", "\n",  ";",    "{",  "}",
                                       "px",        "12",    "0",     ".",  "1",   "2px", "P",    ".5", "é",
                                       "\"",        "3.7px", "solid", "px", "\t",  "#",   "0.5px"};
  std::mt19937 random(20261122);
  for (int round = 0; round < 4000; ++round) {
    std::string css;
    for (std::size_t count = random() % 24; count > 0; --count)
      css += pieces[random() % std::size(pieces)];
    const double factor = 0.5 + static_cast<double>(random() % 9) / 4;
    ASSERT_EQ(scaled_css(css, factor), by_regular_expressions(css, factor)) << css << " at " << factor;
  }
}

}  // namespace
