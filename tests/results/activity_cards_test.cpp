#include "results/activity_cards.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "results/card_layout.h"

namespace {

using results::ActivityCard;
using results::ChannelKey;
using results::Family;
using testing::ElementsAre;
using testing::IsEmpty;

launcher::ReceiverLaunch receiver(const std::string& serial, std::vector<launcher::LaunchChannel> channels) {
  launcher::ReceiverLaunch launch;
  launch.name = serial;
  launch.model = "RX-888";
  launch.channels = std::move(channels);
  return launch;
}

std::vector<std::string> row_texts(const ActivityCard& card) {
  std::vector<std::string> texts;
  for (const auto& row : card.rows)
    texts.push_back(row.text);
  return texts;
}

TEST(ActivityCardsTest, SplitTheKnownChannelsByFamilyAndReceiver) {
  const std::vector<std::string> modes{"FT8", "FT4", "JS8", "JS8-FAST", "JS8-TURBO", "JS8-SLOW", "WSPR", "FT2"};
  std::vector<launcher::LaunchChannel> channels;
  std::vector<ChannelKey> known;
  for (const auto& mode : modes) {
    channels.push_back({mode, 14074000});
    known.emplace_back(mode, 14074000);
  }
  const auto receivers = results::receiver_channels({receiver("1", channels)});
  const auto texts = [&](Family family) { return row_texts(make_activity_cards(family, receivers, known, {}).at(0)); };
  EXPECT_THAT(texts(Family::ft), ElementsAre("FT8 14.074000 MHz", "FT4 14.074000 MHz", "FT2 14.074000 MHz"));
  EXPECT_THAT(texts(Family::js8), ElementsAre("JS8 14.074000 MHz", "JS8-FAST 14.074000 MHz", "JS8-TURBO 14.074000 MHz",
                                              "JS8-SLOW 14.074000 MHz"));
  EXPECT_THAT(texts(Family::wspr), ElementsAre("WSPR 14.074000 MHz"));

  known.resize(1);
  EXPECT_THAT(texts(Family::js8), IsEmpty()) << "a planned channel that is not known has no row";
}

TEST(ActivityCardsTest, ComeInPlanOrderWithStraysLast) {
  const auto receivers = results::receiver_channels({receiver("2", {{"FT8", 7074000}}), receiver("1", {})});
  const std::vector<ChannelKey> known{{"FT8", 1840000}, {"FT8", 7074000}, {"FT8", 3573000}, {"FT8", 5357000}};
  const results::Attribution attribution{
      {"FT8:7.074000", "RX-888 · 1"}, {"FT8:3.573000", "RX-888 · 1"}, {"FT8:5.357000", "RX-888 · gone"}};
  const auto cards = make_activity_cards(Family::ft, receivers, known, attribution);
  ASSERT_EQ(cards.size(), 3u);
  EXPECT_EQ(cards[0].label, "RX-888 · 2");
  EXPECT_THAT(row_texts(cards[0]), ElementsAre("FT8 7.074000 MHz")) << "the plan goes before attribution";
  EXPECT_EQ(cards[1].label, "RX-888 · 1");
  EXPECT_THAT(row_texts(cards[1]), ElementsAre("FT8 3.573000 MHz"));
  EXPECT_EQ(cards[2].label, "Unattributed receiver");
  EXPECT_THAT(row_texts(cards[2]), ElementsAre("FT8 1.840000 MHz", "FT8 5.357000 MHz"));
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(cards[static_cast<std::size_t>(i)].ordinal, i + 1);

  EXPECT_THAT(make_activity_cards(Family::js8, {}, known, attribution), IsEmpty());
}

TEST(ActivityCardsTest, TellWhereAudioGoes) {
  auto decoder = receiver("1", {{"FT8", 7074000}});
  decoder.virtual_audio = true;
  decoder.sink = "speakers";
  auto listener = receiver("2", {});
  listener.sink = "speakers";
  const auto receivers = results::receiver_channels({decoder, listener, receiver("3", {{"WSPR", 7038600}})});
  const auto cards = make_activity_cards(Family::wspr, receivers, {{"WSPR", 7038600}}, {});
  EXPECT_EQ(cards.at(0).audio_line, "Virtual decoder input: sdrplay_rx_input");
  EXPECT_EQ(cards.at(0).only_line, "") << "it decodes, if nothing of this family";
  EXPECT_EQ(cards.at(1).audio_line, "Audio output sink: speakers");
  EXPECT_EQ(cards.at(1).only_line, "Audio output · no digital decode counters");
  EXPECT_EQ(cards.at(2).audio_line, "");

  const auto with_row =
      make_activity_cards(Family::ft, receivers, {{"FT8", 1840000}}, {{"FT8:1.840000", "RX-888 · 2"}});
  EXPECT_EQ(with_row.at(1).only_line, "") << "it was heard decoding after all";
}

TEST(CardLayoutTest, FillsTheWidthWithEqualColumns) {
  struct Case {
    int allocated;
    double scale;
    std::vector<int> minimums;
    int columns, width;
  };
  const Case cases[] = {
      {34, 1, {}, 1, 364},           // narrower than a card: the view scrolls
      {1919, 1, {}, 4, 462},         // five would need 1868 + 32
      {3000, 1, {}, 4, 733},         // never more than four
      {772, 1, {364, 300}, 2, 364},  // two fit exactly
      {771, 1, {}, 1, 739},          // a pixel less
      {772, 1, {365}, 1, 740},       // one wider card
      {772, 1.25, {}, 1, 740},       // larger type
      {1500, 0.75, {}, 4, 358},      // 273 wide at least
      {1500, 0.5, {500}, 2, 728},
  };
  for (const auto& [allocated, scale, minimums, columns, width] : cases) {
    const auto layout = results::card_layout(allocated, scale, minimums);
    ASSERT_TRUE(layout) << allocated;
    EXPECT_EQ(layout->columns, columns) << allocated;
    EXPECT_EQ(layout->width, width) << allocated;
  }
  EXPECT_FALSE(results::card_layout(33, 1, {}));
  EXPECT_FALSE(results::card_layout(0, 1, {}));

  const results::CardLayout three{3, 400};
  EXPECT_EQ(std::pair(three.column(5), three.row(5)), std::pair(2, 1));
  EXPECT_EQ(std::pair(three.column(6), three.row(6)), std::pair(0, 2));
}

}  // namespace
