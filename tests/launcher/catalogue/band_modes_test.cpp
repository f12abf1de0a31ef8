#include "launcher/catalogue/band_modes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refusal.h"

namespace launcher {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using enum DigitalMode;

TEST(BandModes, StrictReadersRefuseInTheCommandLinesWords) {
  const std::string entries = "--band-modes entries are BAND:MODE+MODE (a band with no mode is BAND:): ";
  const std::string mode = "Digital mode must be FT8, FT4, JS8, JS8-FAST, JS8-TURBO, JS8-SLOW or WSPR: ";
  const std::pair<const char*, std::string> band_modes[] = {
      {"20m:FT8+FT4,40:", "accepted"},
      {"", entries},
      {"20:FT8,", entries},
      {"20", entries + "20"},
      {":FT8", entries + ":FT8"},
      {"20:FT8,20M:FT4", "--band-modes lists a band twice: 20M"},
      {"20m:FT8+FT8", "--band-modes lists a mode twice on 20m"},
      {"20:ft8", mode + "ft8"},
      {"20:FT8+", mode},
      {"20:FT8:FT4", mode + "FT8:FT4"},
      {" 20:FT8", "Unsupported band:  20; choose 160,80,60,40,30,20,17,15,12,10,6,2 (optional m suffix) or 70cm"}};
  for (const auto& [value, words] : band_modes)
    EXPECT_EQ(refusal([&] { parse_band_modes(value); }), words) << value;

  const std::pair<const char*, std::string> modes[] = {{"FT8,JS8,WSPR", "accepted"},
                                                       {"FT8,FT4,FT8", "Duplicate digital mode: FT8"},
                                                       {"FT8, FT4", mode + " FT4"},
                                                       {"FT8,", mode}};
  for (const auto& [value, words] : modes)
    EXPECT_EQ(refusal([&] { parse_modes(value); }), words) << value;
}

TEST(BandModes, StrictReaderKeepsTheOrderOfTheText) {
  const auto entries = parse_band_modes("40m:WSPR+FT8,160:");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].band->name, "40");
  EXPECT_THAT(entries[0].modes, ElementsAre(wspr, ft8));
  EXPECT_EQ(entries[1].band->name, "160");
  EXPECT_THAT(entries[1].modes, IsEmpty());
}

TEST(BandModes, LookupTakesTheBandsEntryElseModesElseFt8) {
  EXPECT_THAT(modes_of_band("20", "40:FT4,20M:JS8++WSPR,20:FT8", "FT8"), ElementsAre("JS8", "WSPR"));
  EXPECT_THAT(modes_of_band("160", "160:", "FT8,FT4"), IsEmpty());
  EXPECT_THAT(modes_of_band("80", "160:", "FT8,FT4"), ElementsAre("FT8", "FT4"));
  EXPECT_THAT(modes_of_band("20m", "20", "FT4"), ElementsAre("FT4"));  // no colon, no match
  EXPECT_THAT(modes_of_band("20", std::nullopt, std::nullopt), ElementsAre("FT8"));
  EXPECT_THAT(modes_of_band("20", "", ""), IsEmpty());
}

TEST(BandModes, ChannelsLeaveOutWhatTheBandLacks) {
  EXPECT_THAT(band_channels(band_preset("60"), {ft8, js8_slow, ft4, wspr}),
              ElementsAre(DecoderChannel{5357000, ft8}, DecoderChannel{5357000, ft4}));
  EXPECT_THAT(band_channels(band_preset("70cm"), {js8}), IsEmpty());
}

TEST(BandModes, AdviceNamesWhatTheBandOffers) {
  struct Case {
    const char* band;
    std::vector<std::string_view> modes;
    bool lacks;
    const char* advice;
  };
  const Case cases[] = {
      {"60", {"JS8-SLOW"}, true, "60m has no JS8 frequency. Tick FT8 or FT4"},
      {"70cm", {"JS8-FAST", "FT4", "JS8"}, true, "70cm has no JS8 or FT4 frequency. Tick FT8 or WSPR"},
      {"160", {"FT8", "FT4", "WSPR"}, true, "160m has no FT8, FT4 or WSPR frequency. Tick FT8, JS8 or WSPR"},
      {"20", {"FT8", "JS8"}, false, nullptr},
      {"60", {}, false, nullptr}};
  for (const auto& c : cases) {
    EXPECT_EQ(lacks_frequency(band_preset(c.band), c.modes), c.lacks) << c.band;
    if (c.lacks) {
      EXPECT_EQ(missing_frequency_advice(band_preset(c.band), c.modes), c.advice);
    }
  }
}

}  // namespace
}  // namespace launcher
