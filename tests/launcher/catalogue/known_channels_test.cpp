#include "launcher/catalogue/known_channels.h"

#include <algorithm>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "launcher/catalogue/fax_stations.h"
#include "launcher/catalogue/rtty_segments.h"
#include "options/channels/analysis_channel.h"
#include "options/channels/specification.h"

namespace sig {
namespace {

TEST(KnownChannels, EveryRowIsAGoodChannelWithAKeyOfItsOwn) {
  std::set<std::string> ids;
  for (const auto& row : known_channels()) {
    EXPECT_TRUE(options::is_channel_id(row.id)) << row.id;
    EXPECT_TRUE(ids.insert(row.id).second) << row.id;
    EXPECT_NO_THROW(options::parse_analysis_channel(known_channel_specification(row))) << row.id;
    EXPECT_EQ(find_known_channel(row.id), &row);
  }
  EXPECT_EQ(ids.size(), 92U);
  EXPECT_EQ(find_known_channel(""), nullptr);
  EXPECT_EQ(find_known_channel("PSK20"), nullptr);
}

TEST(KnownChannels, FaxRowsStandBetweenTheTwoOthers) {
  const auto& rows = known_channels();
  EXPECT_EQ(rows[19].id, "msk2");
  EXPECT_EQ(rows[20].id, "faxnmg8");
  EXPECT_EQ(rows[73].id, "faxsvj8");
  EXPECT_EQ(rows[74].id, "sstv20");
  EXPECT_EQ(std::count_if(rows.begin(), rows.end(), is_fax_channel), 54);
}

TEST(KnownChannels, FaxRowsNameStationFrequencyAndHours) {
  const std::tuple<const char*, const char*, double, const char*> cases[] = {
      {"faxnmg8", "NMG New Orleans 8503.9", 8502000,
       "Weather fax from NMG New Orleans on 8503.9 kHz, on the air 0000 to 0255, 0600 to 0855, 1200 to 1455 and 1800 "
       "to 2055 UTC"},
      {"faxjmh3", "JMH Tokyo 3622.5", 3620600,
       "Weather fax from JMH Tokyo, Japan Meteorological Agency, on 3622.5 kHz, charts around the clock"},
      {"faxhsw7", "HSW64 Bangkok 7396.9", 7395000,
       "Weather fax from HSW64 Bangkok, Thai Meteorological Department, carrier 7395.0 kHz (centre 7396.9), charts "
       "0050 to 0620, 0700 to 1040, 1300, 1700 to 1740 and 2300 to 2340 UTC"},
      {"faxvco6", "VCO Sydney NS 6915.1", 6913200,
       "Ice charts from VCO Sydney, Nova Scotia, Canadian Coast Guard, on 6915.1 kHz, charts 2220 to 2240 and 2331 to "
       "2351 UTC"},
  };
  for (const auto& [id, label, dial, description] : cases) {
    const KnownChannel* const row = find_known_channel(id);
    ASSERT_TRUE(row) << id;
    EXPECT_EQ(row->label, label);
    EXPECT_EQ(row->dial_hz, dial);
    EXPECT_EQ(row->description, description);
  }
}

TEST(KnownChannels, FaxHoursAreMinutesOfTheDay) {
  for (const auto& fax : fax_transmitters()) {
    for (const auto& block : fax.blocks) {
      EXPECT_TRUE(block.start >= 0 && block.start < 1440) << fax.id;
      EXPECT_TRUE(block.end >= 0 && block.end < 1440) << fax.id;
      EXPECT_NE(block.start, block.end) << fax.id;
    }
  }
  const auto& pt_reyes = fax_transmitters().at(11);  // the last block runs past midnight
  EXPECT_EQ(pt_reyes.id, "faxnmc22");
  EXPECT_THAT(pt_reyes.blocks, ::testing::ElementsAre(FaxBlock{1100, 6}));
}

TEST(KnownChannels, BandIsReadFromTheFrequency) {
  const std::pair<double, std::string_view> cases[] = {
      {1800000, "160"}, {14069500, "20"}, {14350000, "20"}, {14350001, ""},      {5350000, "60"}, {5249999, ""},
      {50260000, "6"},  {144360000, "2"}, {148000001, ""},  {432000000, "70cm"}, {10099300, ""},  {8502000, ""}};
  for (const auto& [hz, band] : cases)
    EXPECT_EQ(known_channel_band(hz), band) << hz;
}

TEST(RttySegments, TooltipGivesTheScannedPart) {
  EXPECT_EQ(rtty_segment_tooltip(*rtty_segment_at(28500000)),
            "The band's RTTY segment, 28000 to 28300 kHz, scanned for RTTY");
  EXPECT_EQ(rtty_segment_tooltip(*rtty_segment_at(7000000)), "The whole band, 7000 to 7300 kHz, scanned for RTTY");
  EXPECT_EQ(rtty_segment_tooltip({"band0", "", 1800500, 2000000}),
            "The whole band, 1800.5 to 2000 kHz, scanned for RTTY");
}

}  // namespace
}  // namespace sig
