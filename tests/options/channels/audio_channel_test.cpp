#include "options/channels/audio_channel.h"

#include <cmath>
#include <limits>
#include <random>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "options/channels/configured.h"
#include "refusal.h"

namespace options {
namespace {

const std::string pairs = "Audio channel fields must be unique key=value pairs";
const std::string numbers =
    "Audio channel requires 200..20000 Hz bandwidth (FM up to 250000, broadcast FM), 0..10000 gain and 8000..192000 "
    "Hz output";
const std::string identity = "Audio channel ID must be 1..32 letters, digits, underscores or hyphens";
const std::string low_cut = "Audio low-cut must leave at least 200 Hz of passband";
const std::string range = "Audio passband must be within 1k..2000M Hz";
const std::string margin = "Audio output rate needs Nyquist/filter margin above the requested bandwidth";
const std::string socket_words =
    "Audio socket must be an absolute path of letters, digits, _ - . / (no sink or WAV with it)";

struct Case {
  std::string text;
  std::string words;
};

std::string verdict(const std::string& text) {
  return refusal([&] { parse_audio_channel(text); });
}

/// A good channel with something behind it.
std::string with(const std::string& fields) {
  return "id=a,frequency=7.1M" + fields;
}

TEST(AudioChannel, GrammarIsRefusedInItsOwnWords) {
  const std::string invalid = "Invalid audio channel specification";
  const Case cases[] = {
      {"", invalid},
      {with(",wav=a\nb"), invalid},
      {with(",wav=a\rb"), invalid},
      {with(",wav=" + std::string(4096 - with(",wav=").size(), 'w')), "accepted"},
      {with(",wav=" + std::string(4097 - with(",wav=").size(), 'w')), invalid},
      {with(","), pairs},
      {with(",,agc=on"), pairs},
      {with(",agc"), pairs},
      {with(",=on"), pairs},
      {with(",agc="), pairs},
      {with(",id=b"), pairs},
      {with(",colour="), pairs},
      {std::string(1 << 12, '='), pairs},
      {with(",colour=red"), "Unknown audio channel field: colour"},
      {with(",Agc=on"), "Unknown audio channel field: Agc"},
      {with(", agc=on"), "Unknown audio channel field:  agc"},
      {"id=a", "Audio channel frequency is required"},
      {"id=a,frequency=k", "Missing audio channel number"},
      {with(",audio-rate=M"), "Missing audio channel number"},
      {with(",audio-rate=fast"), "Invalid audio channel number"},
      {with(",audio-rate=7999"), "Invalid audio output rate"},
      {with(",audio-rate=48000.5"), "Invalid audio output rate"},
      {with(",audio-rate=1e300"), "Invalid audio output rate"},
      {with(",modulation=CW"), "Audio modulation must be USB, LSB, AM or FM"},
      {with(",enabled=yes"), "Audio enabled must be true or false"},
      {with(",agc=ON"), "Audio enabled must be true or false"},
      // The first fault in the order of the keys is the one reported.
      {"zebra=1,modulation=CW,bandwidth=x", "Invalid audio channel number"},
      {"zebra=1,modulation=CW", "Audio modulation must be USB, LSB, AM or FM"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(verdict(c.text), c.words) << c.text.substr(0, 80);
  for (const char* number :
       {"7 M", " 7M", "+7M", "0x10", "inf", "nan", "-inf", "7MM", "7.1.1M", "7,1", "1e999", "9e305M"})
    EXPECT_NE(verdict(std::string("id=a,frequency=") + number), "accepted") << number;
}

TEST(AudioChannel, RulesAreReportedInOrder) {
  const Case cases[] = {
      {"id=a b,frequency=1,bandwidth=1", identity},
      {"id=" + std::string(33, 'x') + ",frequency=7M", identity},
      {"id=" + std::string(32, 'x') + ",frequency=7M", "accepted"},
      {"frequency=7M", identity},
      {with(",bandwidth=199"), numbers},
      {with(",bandwidth=20001,audio-rate=192k"), numbers},
      {with(",audio-gain=-1"), numbers},
      {with(",audio-gain=10001"), numbers},
      {with(",audio-gain=0"), "accepted"},
      {with(",modulation=FM,bandwidth=200000"), "accepted"},
      {with(",modulation=FM,bandwidth=250001"), numbers},
      {with(",modulation=USB,bandwidth=200000"), numbers},
      {with(",low-cut=2800"), "accepted"},
      {with(",low-cut=2801"), low_cut},
      {with(",low-cut=-1,modulation=AM"), low_cut},
      {with(",low-cut=2801,modulation=AM"), "accepted"},
      {"id=a,frequency=1000", "accepted"},
      {"id=a,frequency=1000,modulation=LSB", range},
      {"id=a,frequency=2000M", range},
      {"id=a,frequency=2000M,modulation=LSB", "accepted"},
      {with(",audio-rate=8000"), "accepted"},
      {with(",audio-rate=8000,bandwidth=3600"), margin},
      {with(",audio-rate=8000,modulation=AM,bandwidth=7199"), "accepted"},
      {with(",audio-rate=8000,modulation=AM,bandwidth=7200"), margin},
      {with(",sink=@DEFAULT_SINK@"), "accepted"},
      {with(",sink=@default_sink@"), "Unsafe audio sink name"},
      {with(",sink=alsa output"), "Unsafe audio sink name"},
      {with(",sink=" + std::string(129, 's')), "Unsafe audio sink name"},
      {with(",socket=/run/user/1000/audio_1.sock"), "accepted"},
      {with(",socket=run/x"), socket_words},
      {with(",socket=/run/../x"), socket_words},
      {with(",socket=/run/a b"), socket_words},
      {with(",socket=/" + std::string(99, 's')), "accepted"},
      {with(",socket=/" + std::string(100, 's')), socket_words},
      {with(",socket=/run/x,sink=y"), socket_words},
      {with(",socket=/run/x,wav=y"), socket_words},
  };
  for (const auto& c : cases)
    EXPECT_EQ(verdict(c.text), c.words) << c.text.substr(0, 80);
}

TEST(AudioChannel, FieldsReachTheChannel) {
  const AudioChannel channel = parse_audio_channel(
      "id=dx-1,sink=head.phones,frequency=7100k,bandwidth=2.4K,audio-gain=2.5,low-cut=300,agc=0,audio-rate=24k,"
      "modulation=lsb,enabled=false,wav=/tmp/a=b.wav");
  const AudioChannel expected{.id = "dx-1",
                              .sink = "head.phones",
                              .wav = "/tmp/a=b.wav",
                              .socket = "",
                              .frequency = 7100000,
                              .bandwidth = 2400,
                              .audio_gain = 2.5,
                              .low_cut = 300,
                              .agc = false,
                              .audio_rate = 24000,
                              .modulation = Modulation::lsb,
                              .enabled = false};
  EXPECT_EQ(channel, expected);
  EXPECT_EQ(audio_passband(channel), (Passband{7097600, 7099700}));
}

TEST(AudioChannel, BandwidthFollowsTheModulationUnlessGiven) {
  EXPECT_EQ(parse_audio_channel(with("")).bandwidth, 3000);
  EXPECT_EQ(parse_audio_channel(with(",modulation=am")).bandwidth, 6000);
  EXPECT_EQ(parse_audio_channel(with(",modulation=Fm")).bandwidth, 10000);
  EXPECT_EQ(parse_audio_channel(with(",modulation=AM,bandwidth=3000")).bandwidth, 3000);
}

TEST(AudioChannel, SuffixedFrequenciesAreExact) {
  EXPECT_EQ(parse_audio_channel("id=a,frequency=1.1M").frequency, 1100000);
  EXPECT_EQ(parse_audio_channel("id=a,frequency=10.1387m").frequency, 10138700);
  EXPECT_EQ(parse_audio_channel("id=a,frequency=71e2k").frequency, 7100000);
}

TEST(AudioChannel, CanonicalTextKeepsItsOrderAndLeavesDefaultsOut) {
  EXPECT_EQ(format_audio_channel(parse_audio_channel("frequency=7.1M,id=a")),
            "id=a,frequency=7100000,modulation=USB,bandwidth=3000,audio-rate=48000,audio-gain=10,enabled=true");
  EXPECT_EQ(format_audio_channel(
                parse_audio_channel(with(",wav=x.wav,sink=s,agc=off,low-cut=100.1,enabled=off,modulation=am"))),
            "id=a,frequency=7100000,modulation=AM,bandwidth=6000,audio-rate=48000,audio-gain=10,enabled=false,"
            "low-cut=100.09999999999999,agc=off,wav=x.wav,sink=s");
}

TEST(AudioChannel, EveryChannelReadsBackEqual) {
  std::mt19937 random(7);
  const auto number = [&](double low, double high) { return std::uniform_real_distribution(low, high)(random); };
  for (int i = 0; i < 2000; ++i) {
    AudioChannel channel;
    channel.id = "c" + std::to_string(i);
    channel.frequency = number(300000, 1.9e9);
    channel.modulation = static_cast<Modulation>(i % 4);
    channel.bandwidth = number(400, channel.modulation == Modulation::fm ? 250000 : 20000);
    channel.audio_gain = number(0, 10000);
    channel.low_cut = i % 3 ? number(0, channel.bandwidth - 200) : 0;
    channel.agc = i % 5 != 0;
    channel.enabled = i % 7 != 0;
    if (i % 2)
      channel.socket = "/run/tarnwick/audio.sock";
    else if (i % 3)
      channel.sink = default_speakers;
    else
      channel.wav = "/tmp/äudio = 1.wav";
    EXPECT_EQ(parse_audio_channel(format_audio_channel(channel)), channel);
  }
}

TEST(AudioChannel, ChannelsBuiltInMemoryAreJudgedBeforeTheyAreWritten) {
  const AudioChannel good = parse_audio_channel(with(""));
  const auto words = [&](auto change) {
    AudioChannel channel = good;
    change(channel);
    return refusal([&] { format_audio_channel(channel); });
  };
  EXPECT_EQ(words([](AudioChannel&) {}), "accepted");
  EXPECT_EQ(words([](AudioChannel& c) { c.frequency = std::nan(""); }), numbers);
  EXPECT_EQ(words([](AudioChannel& c) { c.bandwidth = std::nan(""); }), numbers);
  EXPECT_EQ(words([](AudioChannel& c) { c.audio_gain = std::numeric_limits<double>::infinity(); }), numbers);
  EXPECT_EQ(words([](AudioChannel& c) { c.audio_rate = 192001; }), numbers);
  EXPECT_EQ(words([](AudioChannel& c) { c.low_cut = std::numeric_limits<double>::infinity(); }), low_cut);
  EXPECT_EQ(words([](AudioChannel& c) { c.wav = "a,b"; }), "Unsafe audio WAV path");
  EXPECT_EQ(words([](AudioChannel& c) { c.wav = "a\nb"; }), "Unsafe audio WAV path");
  EXPECT_EQ(words([](AudioChannel& c) { c.wav = std::string(4096, 'w'); }), "Invalid audio channel specification");
}

TEST(AudioChannel, CaptureHoldsTheWholePassbandOrNothing) {
  AudioChannel channel = parse_audio_channel("id=a,frequency=14M");
  EXPECT_NO_THROW(check_audio_in_capture(channel, 14000000 - 450000 + 3000, 1000000));
  EXPECT_THROW(check_audio_in_capture(channel, 14000000 - 450000 + 2999, 1000000), CaptureFitError);
  EXPECT_NO_THROW(check_audio_in_capture(channel, 14000000 + 450000, 1000000));
  EXPECT_THROW(check_audio_in_capture(channel, 14000000 + 450001, 1000000), CaptureFitError);
  channel.enabled = false;
  EXPECT_NO_THROW(check_audio_in_capture(channel, 7000000, 1000000));
  channel.id = "";
  EXPECT_EQ(refusal([&] { check_audio_in_capture(channel, 7000000, 1000000); }), identity);
}

TEST(ConfiguredChannels, EachKindFindsItsOwnKeys) {
  const std::map<std::string, std::string> settings{
      {"analysis.p", "id=p,frequency=7.07M"}, {"audio", "x"},        {"audio-gain", "5"},
      {"audio.b", "id=b,frequency=2M"},       {"audio.a", with("")}, {"audio/", "x"}};
  const auto audio = configured_audio(settings);
  ASSERT_EQ(audio.size(), 2U);
  EXPECT_EQ(audio[0].id + audio[1].id, "ab");
  ASSERT_EQ(configured_analysis(settings).size(), 1U);
  EXPECT_EQ(refusal([] { configured_audio({{"audio.a", "id=a"}}); }), "Audio channel frequency is required");
}

}  // namespace
}  // namespace options
