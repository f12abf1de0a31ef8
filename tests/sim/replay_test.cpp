#include "sim/replay.h"

#include <gtest/gtest.h>

#include "base/time_text.h"
#include "sim/recordings.h"

namespace {

using sim::Mode;

const double noon = static_cast<double>(*base::utc_seconds(2026, 10, 3, 12, 0, 0));

TEST(LoggedDecode, IsReadFromTheColumns) {
  const auto logged = sim::parse_logged("231009_190145    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74   a1  ");
  ASSERT_TRUE(logged);
  EXPECT_EQ(base::stamp_time(logged->time), "231009_190145");
  EXPECT_EQ(logged->dial, 14074000);
  EXPECT_EQ(logged->mode, Mode::ft8);
  EXPECT_EQ(logged->decode.snr, 15);
  EXPECT_EQ(logged->decode.dt, 0.5);
  EXPECT_EQ(logged->decode.audio, 480);
  EXPECT_EQ(logged->decode.message, "CQ MI0OBR IO74");
  EXPECT_EQ(logged->decode.sender, "MI0OBR");
}

TEST(LoggedDecode, OtherLinesOfRealLogsArePassedOver) {
  for (const char* line : {
           "",
           "231009_190145",
           "231009_190145    14.074 Tx FT8      0  0.0 1500 CQ K1ABC FN42",
           "231009_190145    14.074 Rx FT8    -231009_190215    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74",
           "231009_190145    14.074 Rx FT8     15  0.5",
           "231009_190145    14.074 Rx FT8     15  0.5  480 ",
           "231309_190145    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74",
           "20231009_190145  14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74",
           "2023-10-09 19:01  14.074 MHz  FT8",
           "231009_190145 Transmitting 14.074 MHz  FT8:  CQ K1ABC FN42",
           "231009_190145    14.074 Rx JT65    15  0.5  480 CQ MI0OBR IO74",
           "QSO logged: K1ABC",
       })
    EXPECT_FALSE(sim::parse_logged(line)) << line;
}

TEST(Sender, IsWhoTransmitted) {
  struct Case {
    Mode mode;
    const char* message;
    const char* sender;
  };
  const Case cases[] = {
      {Mode::ft8, "CQ DX K1ABC FN42", "K1ABC"},
      {Mode::ft8, "CQ CQ K1ABC", "K1ABC"},
      {Mode::ft4, "CQ 123 EA8/DL1ABC", "EA8/DL1ABC"},
      {Mode::ft8, "K1ABC W9XYZ RR73", "W9XYZ"},
      {Mode::ft8, "<M7NAJ> <...> R 561181 HP96WO", ""},
      {Mode::ft8, "K1ABC RR73; W9XYZ <KH1/KH7Z> -10", ""},
      {Mode::ft8, "TU; K1ABC W9XYZ 579 6465", "W9XYZ"},
      {Mode::ft8, "HELLO", ""},
      {Mode::js8, "K1ABC: @HB HEARTBEAT FN42 sender=K1ABC grid=FN42", "K1ABC"},
      {Mode::js8_slow, "K1ABC: HI sender=unknown grid=unknown", ""},
      {Mode::wspr, "K1ABC FN42 37 [drift=1]", "K1ABC"},
      {Mode::wspr, "<...> FN42 37", ""},
  };
  for (const Case& c : cases)
    EXPECT_EQ(sim::sender_of(c.mode, c.message), c.sender) << c.message;
}

TEST(Replay, TellsALogAgainFromNowOnAndOver) {
  const sim::Channel twenty{14074000, Mode::ft8};
  const sim::Channel forty{7047500, Mode::ft4};
  const std::string log =
      "231009_190145    14.074 Rx FT8     15  0.5  480 CQ MI0OBR IO74\n"
      "231009_190130     0.000 Rx FT8      1  0.5  480 CQ K1ABC FN42\n"
      "231009_190137     7.048 Rx FT4      1  0.5  480 CQ W9XYZ EN37\n"
      "231009_190138     7.048 Rx FT4      1  0.5  980 CQ K9AN EN50\n"
      "231009_190200    28.074 Rx FT8      1  0.5  480 CQ N0ONE EN50\n"
      "231009_190215    14.074 Rx FT8      1  0.5  480 CQ N4FAR EM70\n";
  const sim::Replay replay(log, {twenty, forty}, noon + 40);
  const auto senders = [&](const sim::Channel& channel, double after_noon) {
    std::string text;
    for (const auto& decode : replay.cycle(channel, noon + after_noon))
      text += decode.sender + " ";
    return text;
  };
  EXPECT_EQ(senders(twenty, 30), "K1ABC ");
  EXPECT_EQ(senders(twenty, 45), "MI0OBR ");
  EXPECT_EQ(senders(twenty, 60), "");
  EXPECT_EQ(senders(twenty, 75), "N4FAR ");
  EXPECT_EQ(senders(forty, 37.5), "W9XYZ K9AN ");
  EXPECT_EQ(senders(twenty, 90), "K1ABC ");
  EXPECT_EQ(senders({28074000, Mode::ft8}, 60), "");
  EXPECT_TRUE(sim::Replay("nothing\n", {twenty}, noon).empty());
}

TEST(Jt9Output, GivesDecodesAndNothingElse) {
  const auto decodes = sim::parse_jt9(
      "000000   6  0.8 1512 ~  JO1COV DL4SBF 73                        \n"
      "000000 -16 -0.1  338 ~  CQ PE1OYB JO21                       ? a2\n"
      "<DecodeFinished>   0  10        0\n"
      "EOF on input file\n"
      "000000  -7  0.6  955 ~  \n");
  ASSERT_EQ(decodes.size(), 2U);
  EXPECT_EQ(decodes[0].message, "JO1COV DL4SBF 73");
  EXPECT_EQ(decodes[0].sender, "DL4SBF");
  EXPECT_EQ(decodes[1].message, "CQ PE1OYB JO21");
  EXPECT_EQ(decodes[1].snr, -16);
}

}  // namespace
