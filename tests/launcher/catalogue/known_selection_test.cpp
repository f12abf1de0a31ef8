#include "launcher/catalogue/known_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refusal.h"

namespace sig {
namespace {

using std::nullopt;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> ids(const std::vector<options::AnalysisChannel>& channels) {
  std::vector<std::string> found;
  for (const auto& channel : channels)
    found.push_back(channel.id);
  return found;
}

/// Everything from 0 to 200 MHz.
std::vector<options::AnalysisChannel> select_all(const KnownFilters& filters, std::size_t limit = 128) {
  return select_known_channels(filters, 100e6, 300e6, limit);
}

std::string line_of(const KnownFilters& filters, std::string_view id) {
  for (const auto& channel : select_all(filters))
    if (channel.id == id) return options::format_analysis_channel(channel);
  return "dropped";
}

TEST(KnownFilters, WordsAreRefusedOrRead) {
  const std::string modes =
      "--known-modes takes all, none or a comma list of cw, psk31, rtty, olivia, jtty, sstv, wefax, msk144";
  const std::pair<const char*, std::string> modes_cases[] = {
      {"all", "accepted"}, {"None", "accepted"}, {" CW , psk31", "accepted"}, {"cw,cw", "accepted"},
      {"", modes},         {"cw,", modes},       {"all,cw", modes},           {"psk63", modes},
      {"cw+rtty", modes},  {"cw\t", modes}};
  for (const auto& [value, words] : modes_cases)
    EXPECT_EQ(refusal([&] { parse_known_modes(value); }), words) << value;

  const std::string entries = "--known-band-modes entries are BAND:MODE+MODE (a band with no mode is BAND:): ";
  const std::string unknown = "--known-band-modes: unknown band in ";
  const std::pair<const char*, std::string> band_cases[] = {
      {"20:cw+rtty, 40M : all,70cm:", "accepted"},
      {"", entries},
      {"20", entries + "20"},
      {"20:cw,", entries},
      {"20:cw,rtty", entries + "rtty"},
      {"70:cw", unknown + "70:cw"},
      {":cw", unknown + ":cw"},
      {"20:cw,20M:rtty", "--known-band-modes lists a band twice: 20M"},
      {"20:cw+", modes},
      {"20:ft8", modes}};
  for (const auto& [value, words] : band_cases)
    EXPECT_EQ(refusal([&] { parse_known_band_modes(value); }), words) << value;

  const std::string fax = "--fax-channels: not a weather fax window: ";
  const std::pair<const char*, std::string> fax_cases[] = {{"", "accepted"},
                                                           {"none", "accepted"},
                                                           {"psk20", fax + "psk20"},
                                                           {"faxnmf4,", fax},
                                                           {"FAXNMF4", fax + "FAXNMF4"}};
  for (const auto& [value, words] : fax_cases)
    EXPECT_EQ(refusal([&] { parse_fax_channels(value); }), words) << value;
}

TEST(KnownFilters, WordsStandForTheirKinds) {
  const ModeSet excluded = parse_known_modes("psk31,cw");
  for (const auto mode : {SignalMode::psk31, SignalMode::qpsk31, SignalMode::psk63, SignalMode::cw})
    EXPECT_FALSE(excluded.contains(mode));
  for (const auto mode : {SignalMode::rtty, SignalMode::olivia, SignalMode::msk144})
    EXPECT_TRUE(excluded.contains(mode));
  EXPECT_TRUE(parse_known_modes("all").empty());
  ModeSet all_words;
  for (const auto& row : filter_words)
    all_words = all_words.with(row.kinds);
  EXPECT_EQ(all_words, parse_known_modes("none"));
  EXPECT_THAT(parse_fax_channels("faxnmf4, faxnmf4"), ElementsAre(find_known_channel("faxnmf4")));
}

TEST(KnownSelection, CaptureHoldsWholePassbandsInCatalogueOrder) {
  EXPECT_THAT(ids(select_known_channels({}, 14.1e6, 1e6)),
              ElementsAre("psk20", "jtty20", "faxdwd13", "faxvmc13", "faxjmh13", "sstv20", "cw20", "olw20"));
  EXPECT_THAT(ids(select_known_channels({}, 14.1e6, 1e6, 3)), ElementsAre("psk20", "jtty20", "faxdwd13"));
  // The lower sideband of 7171 kHz reaches down to 7168; a capture that ends there or above lacks it.
  const double width = 100000;
  const auto holds_sstv = [&](double lower_edge) {
    const auto found = ids(select_known_channels({}, lower_edge + 0.45 * width, width));
    return std::find(found.begin(), found.end(), "sstv40") != found.end();
  };
  EXPECT_TRUE(holds_sstv(7168000));
  EXPECT_FALSE(holds_sstv(7168001));
  EXPECT_EQ(select_all({}).size(), 92U);
  EXPECT_THAT(select_all({}, 0), IsEmpty());
}

TEST(KnownSelection, FiltersNarrowRowsOrDropThem) {
  const KnownFilters filters = parse_known_filters("cw,psk31,olivia,jtty,wefax,msk144", nullopt, nullopt);
  EXPECT_EQ(line_of(filters, "rtty40"),
            "id=rtty40,frequency=7083000,modulation=USB,bandwidth=5000,modes=cw+psk31+qpsk31+psk63+olivia,rtty=auto,"
            "wefax=auto,report=on,enabled=true,pairs=on");
  EXPECT_EQ(line_of(filters, "sstv20"), "dropped");
  // Without Olivia its fixed decoders go too; what a row skips was never there to lose.
  EXPECT_EQ(line_of(parse_known_filters("cw,rtty", nullopt, nullopt), "psk80"),
            "id=psk80,frequency=3579500,modulation=USB,bandwidth=5000,modes=cw+rtty,rtty=auto,wefax=auto,report=on,"
            "enabled=true");
  EXPECT_EQ(line_of(parse_known_filters("rtty", nullopt, nullopt), "olw20"), "dropped");
  EXPECT_EQ(line_of(parse_known_filters("cw,psk31,olivia", nullopt, nullopt), "olw20"), line_of({}, "olw20"));
  EXPECT_THAT(select_all(parse_known_filters("none", nullopt, nullopt)), IsEmpty());
}

TEST(KnownSelection, BandFilterReplacesTheCommonOneAndDropsOtherBands) {
  EXPECT_THAT(ids(select_all(parse_known_filters("none", "20:cw", nullopt))), ElementsAre("psk20", "cw20", "olw20"));
  EXPECT_THAT(select_all(parse_known_filters(nullopt, "20:", nullopt)), IsEmpty());
  EXPECT_THAT(ids(select_all(parse_known_filters(nullopt, "80:wefax,30:all", nullopt))),
              ElementsAre("jtty30", "faxdwd3", "faxjmh3", "faxhll3", "dig30"));
}

TEST(KnownSelection, FaxRowsCanBeChosen) {
  const auto count = [](std::optional<std::string_view> fax) {
    return select_all(parse_known_filters("wefax", nullopt, fax)).size();
  };
  EXPECT_EQ(count(nullopt), 54U);
  EXPECT_EQ(count("faxnmf4,faxjmh3,faxnmf4"), 2U);
  EXPECT_EQ(count(""), 0U);
  EXPECT_EQ(select_all(parse_known_filters(nullopt, nullopt, "none")).size(), 92U - 54U);
}

TEST(KnownSelection, BandTestLooksAtTheBandsOwnCapture) {
  const auto holds = [](const char* modes, const char* band) {
    return band_has_known_channel(parse_known_filters(modes, nullopt, nullopt), launcher::band_preset(band));
  };
  EXPECT_TRUE(holds("all", "20"));
  EXPECT_TRUE(holds("msk144", "2"));
  EXPECT_FALSE(holds("msk144", "20"));
  EXPECT_FALSE(holds("all", "70cm"));
  EXPECT_FALSE(holds("none", "20"));
}

}  // namespace
}  // namespace sig
