#include "gui/modes/mode_grid.h"

#include <filesystem>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gui/modes/decoder_programs.h"
#include "gui/modes/fax_block.h"
#include "support/temporary_directory.h"

namespace modes_gui {
namespace {

using options::Profile;

std::size_t row_of(const char* band) {
  return static_cast<std::size_t>(launcher::find_band(band) - launcher::band_presets.data());
}

std::size_t column_of(std::string_view shown) {
  for (std::size_t column = 0; column < column_count; ++column)
    if (mode_columns[column].shown == shown) return column;
  return column_count;
}

std::string boxes_text(const char* band) {
  std::string text;
  for (std::size_t column = 0; column < column_count; ++column)
    if (boxes_of(row_of(band))[column]) text += (text.empty() ? "" : " ") + std::string(mode_columns[column].shown);
  return text;
}

TEST(ModeGrid, HasABoxWhereTheBandHasTheMode) {
  EXPECT_EQ(boxes_text("60"), "FT8 FT4");
  EXPECT_EQ(boxes_text("70cm"), "FT8 WSPR");
  EXPECT_EQ(boxes_text("20"), "FT8 FT4 JS8 WSPR CW PSK31 RTTY Olivia JTTY SSTV");
  EXPECT_EQ(boxes_text("2"), "FT8 FT4 JS8 WSPR JTTY MSK144");
  EXPECT_THAT(boxes_text("80"), ::testing::HasSubstr("WEFAX"));
}

class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  Profile profile() {
    Profile common{{"mode", "decoder"}, {"callsign", "M0TWK"}};
    maybe(common, "bands", list({"20", "40M", "160", "60", "6m", "70cm", "2", "80", "17"}, ","));
    maybe(common, "modes", one_of({"", "FT8", "FT8,FT4", "JS8-FAST,JS8,FT8", "WSPR,FT8", "JS8-TURBO"}));
    maybe(common, "band-modes", one_of({"20:FT8+JS8-SLOW,160:", "40:WSPR,20:JS8", "60:FT8+FT4,2:WSPR", "60:JS8"}));
    maybe(common, "known-channels", one_of({"true", "false"}));
    maybe(common, "known-modes", one_of({"all", "none", "cw,rtty", "wefax", "CW, olivia"}));
    maybe(common, "known-band-modes", one_of({"20:cw", "80:wefax+cw,20:", "6:msk144+jtty"}));
    maybe(common, "fax-channels", one_of({"none", "faxnmf4", "faxdwd3,faxnmg8"}));
    return common;
  }
  void change(ModeGrid& grid) {
    OpenBoxes open;
    for (std::size_t band = 0; band < band_count; ++band)
      open[band] = boxes_of(band);
    for (int times = below(4); times >= 0; --times) {
      const auto band = static_cast<std::size_t>(below(band_count));
      const auto column = static_cast<std::size_t>(below(column_count));
      switch (below(6)) {
        case 0:
          set_band(grid, band, below(2) == 0);
          break;
        case 1:
          press_row(grid, band, open);
          break;
        case 2:
          press_column(grid, column, open);
          break;
        case 3:
          press_fax(grid.fax, &fax_stations()[static_cast<std::size_t>(below(5))]);
          break;
        default:
          if (open[band][column]) set_cell(grid, band, column, below(2) == 0);
      }
    }
  }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::string one_of(std::vector<std::string> values) {
    return values[static_cast<std::size_t>(below(static_cast<int>(values.size())))];
  }
  std::string list(const std::vector<std::string>& values, const char* separator) {
    std::string text;
    for (const auto& value : values)
      if (below(3) == 0) text += (text.empty() ? "" : separator) + value;
    return text;
  }
  void maybe(Profile& profile, const char* key, const std::string& value) {
    if (below(3) != 0) profile[key] = value;
  }
  std::mt19937 random_;
};

TEST(ModeGrid, ReadsAndWritesAnyProfileExactly) {
  for (unsigned seed = 0; seed < 3000; ++seed) {
    Generator generator(seed);
    const Profile profile = generator.profile();
    ModeGrid grid = read_grid(profile);
    ASSERT_EQ(write_grid(grid, profile), profile) << seed;
    generator.change(grid);
    const Profile written = write_grid(grid, profile);
    const ModeGrid again = read_grid(written);
    ASSERT_TRUE(again == grid) << "seed " << seed << "\n" << ::testing::PrintToString(written);
    ASSERT_EQ(written.at("callsign"), "M0TWK");
    ASSERT_EQ(write_grid(again, written), written);
  }
}

TEST(ModeGrid, WritesOnlyWhatAChangeNeeds) {
  const Profile plain{{"bands", "20,40m"}, {"modes", "FT8,JS8-FAST"}};
  ModeGrid grid = read_grid(plain);
  set_band(grid, row_of("30"), true);
  EXPECT_EQ(write_grid(grid, plain), (Profile{{"bands", "40,30,20"}, {"modes", "FT8,JS8-FAST"}}));
  set_cell(grid, row_of("20"), column_of("JS8"), false);
  EXPECT_EQ(write_grid(grid, plain), (Profile{{"bands", "40,30,20"},
                                              {"modes", "FT8,JS8-FAST"},
                                              {"band-modes", "40:FT8+JS8-FAST,30:FT8+JS8-FAST,20:FT8"}}));

  grid = read_grid(plain);
  set_cell(grid, row_of("20"), column_of("CW"), true);
  set_cell(grid, row_of("40"), column_of("CW"), true);
  EXPECT_EQ(
      write_grid(grid, plain),
      (Profile{{"bands", "20,40m"}, {"modes", "FT8,JS8-FAST"}, {"known-channels", "true"}, {"known-modes", "cw"}}));
  set_cell(grid, row_of("40"), column_of("CW"), false);
  EXPECT_EQ(write_grid(grid, plain).at("known-band-modes"), "40:,20:cw");
}

TEST(ModeGrid, ABandWithNothingOnStaysAListener) {
  const Profile profile{{"bands", "60,20"}, {"modes", "FT8"}};
  ModeGrid grid = read_grid(profile);
  set_band(grid, row_of("60"), true);
  grid.bands[row_of("60")].on.reset();
  grid.bands[row_of("20")].on = Columns().set(column_of("JS8"));
  const Profile written = write_grid(grid, profile);
  EXPECT_EQ(written.at("band-modes"), "60:,20:JS8") << "JS8 for all would ask for a frequency that 60 m has not";
  EXPECT_TRUE(read_grid(written) == grid);
}

TEST(ModeGrid, AnUnreadableFaxChoiceIsNoObstacle) {
  const Profile profile{{"bands", "20"}, {"modes", "FT8"}, {"known-channels", "true"}, {"fax-channels", "nope"}};
  ModeGrid grid = read_grid(profile);
  set_cell(grid, row_of("20"), column_of("CW"), true);
  EXPECT_TRUE(read_grid(write_grid(grid, profile)).bands[row_of("20")].on[column_of("CW")]);
}

TEST(ModeGrid, HeaderBoxesTurnOnWhatIsOpenAndOffWhenAllIsOn) {
  OpenBoxes open;
  for (const char* band : {"20", "60"})
    open[row_of(band)] = boxes_of(row_of(band));
  open[row_of("20")].reset(column_of("WSPR"));
  ModeGrid grid = read_grid({{"bands", "20"}, {"modes", "FT8"}});
  press_row(grid, row_of("20"), open);
  EXPECT_FALSE(grid.bands[row_of("20")].on[column_of("WSPR")]) << "a greyed box takes no part";
  EXPECT_EQ(row_state(grid, row_of("20"), open), HeaderState::on);
  press_column(grid, column_of("FT4"), open);
  EXPECT_TRUE(grid.bands[row_of("60")].ticked) << "a band comes with its first box";
  EXPECT_EQ(column_state(grid, column_of("FT8"), open), HeaderState::some);
  press_column(grid, column_of("FT4"), open);
  EXPECT_FALSE(grid.bands[row_of("60")].ticked) << "and goes with its last";
  press_every(grid, open);
  EXPECT_EQ(every_state(grid, open), HeaderState::on);
  press_every(grid, open);
  EXPECT_TRUE(grid.bands[row_of("20")].ticked) << "a band that was ticked by itself stays, to listen";
  EXPECT_TRUE(grid.bands[row_of("20")].on.none());
}

TEST(FaxBlock, TicksStationsAndCountsThem) {
  ModeGrid grid = read_grid({{"known-channels", "true"}});
  EXPECT_EQ(fax_summary(grid.fax), "Weather fax: 54 of 54 frequencies ticked");
  const FaxStation& boston = fax_stations()[1];
  EXPECT_EQ(boston.name, "NMF Boston");
  ASSERT_EQ(boston.boxes.size(), 4u);
  EXPECT_EQ(boston.boxes[2].khz, "4235.0");
  press_fax(grid.fax, nullptr);
  set_fax(grid.fax, "faxnmf4", true);
  EXPECT_EQ(fax_state(grid.fax, &boston), HeaderState::some);
  EXPECT_EQ(fax_summary(grid.fax), "Weather fax: 1 of 54 frequencies ticked");
  EXPECT_EQ(write_grid(grid, {{"known-channels", "true"}}).at("fax-channels"), "faxnmf4");
}

TEST(DecoderPrograms, AreLookedForOnThePathAndWhereTheProfileSays) {
  const test::TemporaryDirectory directory;
  const auto program = [&](const char* name) {
    const std::string file = directory.write(name, "#!/bin/sh\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    return file;
  };
  program("bin/wsprd");
  directory.write("bin/jt9", "not executable");
  const std::string path = "/nowhere:" + (directory / "bin");
  auto missing = missing_programs({{"js8-decoder", program("own-js8")}}, path);
  EXPECT_EQ(missing[0], "FT8 needs the decoder program jt9, which is not installed.");
  EXPECT_THAT(missing[1], ::testing::HasSubstr("not installed"));
  for (std::size_t column = 2; column < column_count; ++column)
    EXPECT_EQ(missing[column], "");
  missing = missing_programs({{"decoder", "wsprd"}}, path);
  EXPECT_EQ(missing[0], "");
  EXPECT_THAT(missing[2], ::testing::HasSubstr("js8-wav"));
}

}  // namespace
}  // namespace modes_gui
