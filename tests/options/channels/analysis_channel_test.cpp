#include "options/channels/analysis_channel.h"

#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "refusal.h"

namespace options {
namespace {

using sig::SignalMode;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string modes_words =
    "Analysis modes must be auto or '+'-separated names from psk31, qpsk31, psk63, rtty, olivia, cw, wefax, sstv, jtty";
const std::string skip_words =
    "Analysis skip must be '+'-separated names from psk31, qpsk31, psk63, rtty, olivia, cw, wefax, sstv, jtty";
const std::string olivia_words =
    "Analysis olivia entries are FORMAT@AUDIO_HZ inside the channel, for example 8/250@1500";
const std::string pairs = "Analysis channel fields must be unique key=value pairs (separate modes with '+')";
const std::string range = "Analysis passband must be within 1k..2000M Hz";

struct Case {
  std::string text;
  std::string words;
};

/// A good channel with something behind it.
std::string with(const std::string& fields) {
  return "id=a,frequency=7.07M" + fields;
}

std::string repeated(const std::string& entry, int count) {
  std::string text = entry;
  for (int i = 1; i < count; ++i)
    text += "+" + entry;
  return text;
}

TEST(AnalysisChannel, EachFaultHasItsWords) {
  const std::string invalid = "Invalid analysis channel specification";
  const Case cases[] = {
      {"", invalid},
      {with("\n"), invalid},
      {std::string(4096, '='), pairs},
      {std::string(4097, '='), invalid},
      {with(",modes=psk31,rtty"), pairs},
      {with(",rtty="), pairs},
      {with(",sink=x"), "Unknown analysis channel field: sink"},
      {"id=a", "Analysis channel frequency is required"},
      {"id=a,frequency=K", "Missing analysis channel number"},
      {"id=a,frequency=7.x", "Invalid analysis channel number"},
      {with(",modulation=AM"), "Analysis modulation must be USB or LSB"},
      {with(",modulation=lsb"), "accepted"},
      {with(",modes="), "Analysis modes must name at least one mode"},
      {with(",modes=auto+cw"), modes_words},
      {with(",modes=cw+"), modes_words},
      {with(",modes=ft8"), modes_words},
      {with(",modes=cw+CW"), "Analysis modes must not repeat"},
      {with(",modes=cw+unknown"), "Analysis modes must not include unknown"},
      {with(",modes=auto,skip=cw"), "accepted"},
      {with(",skip=auto"), skip_words},
      {with(",skip=unknown"), skip_words},
      {with(",skip=,olivia="), "accepted"},
      {with(",rtty=45/170"), "Analysis rtty must be 45.45/170, 50/170, 75/850 or auto"},
      {with(",wefax=120/288"), "Analysis wefax must be 120/576, 60/288, 90/576, 240/576 or auto"},
      {with(",report=yes"), "Analysis report must be on or off"},
      {with(",enabled=TRUE"), "Analysis enabled must be on or off"},
      {with(",pairs=2"), "Analysis pairs must be on or off"},
      {with(",olivia=8/250"), olivia_words},
      {with(",olivia=8/300@1500"), olivia_words},
      {with(",olivia=08/250@1500"), olivia_words},
      {with(",olivia=128/250@1500"), olivia_words},
      {with(",olivia=8@250/1500"), olivia_words},
      {with(",olivia=8/250@0"), olivia_words},
      {with(",olivia=8/250@20001"), olivia_words},
      {with(",olivia=8/250@1500+"), olivia_words},
      {with(",olivia=" + repeated("8/250@1500", 8)), "accepted"},
      {with(",olivia=" + repeated("8/250@1500", 9)), "At most 8 fixed Olivia decoders per analysis channel"},
      {with(",bandwidth=199"), "Analysis channel requires 200..20000 Hz bandwidth"},
      {with(",bandwidth=20001"), "Analysis channel requires 200..20000 Hz bandwidth"},
      {"id=a.b,frequency=7M", "Analysis channel ID must be 1..32 letters, digits, underscores or hyphens"},
      {"id=a,frequency=1000", "accepted"},
      {"id=a,frequency=1000,modulation=LSB", range},
      {"id=a,frequency=2000M", range},
      // Fields apply in the order of their keys; a missing frequency is seen after all of them.
      {"id=a,wefax=1,modes=x,bandwidth=y", "Invalid analysis channel number"},
      {"id=a,wefax=1", "Analysis wefax must be 120/576, 60/288, 90/576, 240/576 or auto"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(refusal([&] { parse_analysis_channel(c.text); }), c.words) << c.text.substr(0, 80);
  EXPECT_EQ(refusal([] { parse_olivia_decoder("8/250"); }),
            "Analysis olivia entries are FORMAT@AUDIO_HZ, for example 8/250@1500");
}

TEST(AnalysisChannel, FieldsReachTheChannel) {
  const auto channel = parse_analysis_channel(
      "id=x,frequency=7171k,modulation=LSB,bandwidth=2k,modes=PSK31+msk144+cw,rtty=75/850,wefax=60/288,report=0,"
      "enabled=false,olivia=8/250@1.5k+32/1000@2000.5,skip=rtty+RTTY+cw,pairs=1");
  EXPECT_EQ(channel.frequency, 7171000);
  EXPECT_EQ(analysis_passband(channel), (Passband{7169000, 7171000}));
  EXPECT_THAT(channel.modes, ElementsAre(SignalMode::psk31, SignalMode::msk144, SignalMode::cw));
  EXPECT_THAT(channel.skip, ElementsAre(SignalMode::rtty, SignalMode::cw));
  EXPECT_THAT(channel.olivia, ElementsAre(OliviaDecoder{8, 250, 1500}, OliviaDecoder{32, 1000, 2000.5}));
  EXPECT_EQ(format_analysis_channel(channel),
            "id=x,frequency=7171000,modulation=LSB,bandwidth=2000,modes=psk31+msk144+cw,rtty=75/850,wefax=60/288,"
            "report=off,enabled=false,olivia=8/250@1500+32/1000@2000.5,skip=rtty+cw,pairs=on");
}

TEST(AnalysisChannel, DefaultsAreWrittenOut) {
  const auto channel = parse_analysis_channel("id=a,frequency=7.07M,modes=AUTO");
  EXPECT_THAT(channel.modes, IsEmpty());
  EXPECT_EQ(format_analysis_channel(channel),
            "id=a,frequency=7070000,modulation=USB,bandwidth=3000,modes=auto,rtty=auto,wefax=auto,report=on,"
            "enabled=true");
}

TEST(AnalysisChannel, EveryChannelReadsBackEqual) {
  std::mt19937 random(11);
  const auto number = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
  const auto some_modes = [&] {
    std::vector<SignalMode> modes;
    for (std::size_t i = 1; i < sig::signal_mode_texts.size(); ++i)
      if (random() % 3 == 0) modes.push_back(static_cast<SignalMode>(i));
    std::shuffle(modes.begin(), modes.end(), random);
    return modes;
  };
  for (int i = 0; i < 2000; ++i) {
    AnalysisChannel channel;
    channel.id = "c-" + std::to_string(i);
    channel.frequency = number(30000, 1.9e9);
    channel.modulation = i % 2 ? Modulation::usb : Modulation::lsb;
    channel.bandwidth = number(200, 20000);
    channel.modes = some_modes();
    channel.skip = some_modes();
    channel.rtty = i % 3 ? "auto" : "45.45/170";
    channel.wefax = i % 4 ? "auto" : "240/576";
    channel.report = i % 5 != 0;
    channel.enabled = i % 6 != 0;
    channel.pairs = i % 7 == 0;
    for (int k = 0; k < i % 9; ++k)
      channel.olivia.push_back({32, 1000, number(1e-9, 20000)});
    EXPECT_EQ(parse_analysis_channel(format_analysis_channel(channel)), channel);
  }
}

TEST(AnalysisChannel, CaptureHoldsTheWholePassbandOrNothing) {
  AnalysisChannel channel = parse_analysis_channel("id=a,frequency=14M");
  EXPECT_NO_THROW(check_analysis_in_capture(channel, 14000000 + 450000, 1000000));
  EXPECT_THROW(check_analysis_in_capture(channel, 14000000 + 450001, 1000000), CaptureFitError);
  channel.enabled = false;
  EXPECT_NO_THROW(check_analysis_in_capture(channel, 7000000, 1000000));
}

}  // namespace
}  // namespace options
