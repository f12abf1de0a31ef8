#include "launcher/catalogue/bands.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace launcher {
namespace {

TEST(Bands, SpellingsMeetInOneRow) {
  struct Case {
    const char* text;
    const char* name;  ///< nullptr: no such band
    const char* shown;
  };
  const Case cases[] = {{"20", "20", "20m"},      {"20m", "20", "20m"},     {"20M", "20", "20m"},
                        {"70cm", "70cm", "70cm"}, {"70CM", "70cm", "70cm"}, {"70", nullptr, "70m"},
                        {"cm", nullptr, "cm"},    {"m", nullptr, "m"},      {"160 ", nullptr, "160 m"},
                        {"20mm", nullptr, "20mm"}};
  for (const auto& c : cases) {
    const BandPreset* const found = find_band(c.text);
    EXPECT_EQ(found ? std::string(found->name) : "none", c.name ? c.name : "none") << c.text;
    EXPECT_EQ(band_display_name(c.text), c.shown);
  }
}

TEST(Bands, RefusalsNameTheBandAsTyped) {
  const auto refusal = [](const char* band) -> std::string {
    try {
      dial_frequency(band, DigitalMode::ft8);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "accepted";
  };
  EXPECT_EQ(refusal(""), "--bands contains an empty band");
  EXPECT_EQ(refusal("70M"),
            "Unsupported band: 70M; choose 160,80,60,40,30,20,17,15,12,10,6,2 (optional m suffix) or 70cm");
  EXPECT_EQ(refusal("20m"), "accepted");
}

TEST(Bands, DialFrequencyFollowsTheModesColumn) {
  EXPECT_EQ(dial_frequency("40m", DigitalMode::ft8), 7074000);
  EXPECT_EQ(dial_frequency("40m", DigitalMode::ft4), 7047500);
  EXPECT_EQ(dial_frequency("40m", DigitalMode::wspr), 7038600);
  for (const auto speed : {DigitalMode::js8, DigitalMode::js8_fast, DigitalMode::js8_turbo, DigitalMode::js8_slow}) {
    EXPECT_EQ(dial_frequency("40m", speed), 7078000);
    EXPECT_EQ(dial_frequency("60m", speed), 0);
  }
}

TEST(Bands, SpanCoversTheDialsAndTheTopChannelsAudio) {
  EXPECT_EQ(band_span("160m"), (BandSpan{1836600, 1846500}));
  EXPECT_EQ(band_span("60m"), (BandSpan{5357000, 5360000}));
  EXPECT_EQ(band_span("2m"), (BandSpan{144170000, 144492000}));  // the idle centre is no part of it
  EXPECT_EQ(band_span("70cm"), (BandSpan{432174000, 432303000}));
  EXPECT_THROW(band_span("11m"), std::runtime_error);
}

TEST(Bands, EveryDialFrequencyLiesInItsOwnActivityBand) {
  for (const auto& band : band_presets) {
    for (std::size_t i = 0; i < digital_mode_count; ++i) {
      const double dial = dial_frequency(band, static_cast<DigitalMode>(i));
      if (dial == 0) continue;
      const ActivityBand* const found = activity_band_at(dial);
      ASSERT_TRUE(found) << band.name;
      EXPECT_EQ(found->name, band_display_name(band.name));
    }
  }
}

TEST(Bands, ActivityBandEdgesAreInclusive) {
  EXPECT_EQ(activity_band_at(14000000)->name, "20m");
  EXPECT_EQ(activity_band_at(14350000)->name, "20m");
  EXPECT_EQ(activity_band_at(14350001), nullptr);
  EXPECT_EQ(activity_band_at(13999999), nullptr);
  EXPECT_EQ(activity_band_at(0), nullptr);
}

TEST(Bands, ModeTextsAreExactAndReadBack) {
  for (std::size_t i = 0; i < digital_mode_count; ++i) {
    const auto mode = static_cast<DigitalMode>(i);
    EXPECT_EQ(parse_digital_mode(digital_mode_text(mode)), mode);
  }
  EXPECT_EQ(parse_digital_mode("JS8-TURBO"), DigitalMode::js8_turbo);
  EXPECT_EQ(digital_mode_text(static_cast<DigitalMode>(7)), "unknown");
  for (const char* text : {"ft8", "FT8 ", "", "unknown", "JS8-"})
    EXPECT_FALSE(parse_digital_mode(text)) << text;
}

}  // namespace
}  // namespace launcher
