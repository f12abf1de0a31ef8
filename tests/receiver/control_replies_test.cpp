#include "receiver/control_replies.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include <gtest/gtest.h>

#include "receiver/control_requests.h"
#include "receiver/live_pairs.h"

namespace receiver {
namespace {

template <typename Parse>
std::string failure(const Parse& parse) {
  try {
    parse();
    return "taken";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

const std::string levels = "OK LEVELS state=ready,peak=-30.5,rms=-42,hold=-28,age=0.08,samples=123456,max=-1\n";
const std::string overload = "OK OVERLOAD state=clear,events=3\n";
const std::string if_gain = "OK IFGAIN state=ready,reduction=42\n";

TEST(MeterReply, IsReadWhole) {
  const MeterReading reading =
      parse_meter(levels + overload + if_gain + "OK STRONGEST 14074000.5 -31\nOK TUNER state=ready,gain=12.5");
  EXPECT_EQ(reading.rms, -42);
  EXPECT_EQ(reading.max, -1);
  EXPECT_EQ(reading.samples, 123456U);
  EXPECT_EQ(reading.overload_events, 3U);
  EXPECT_EQ(reading.if_reduction, 42);
  EXPECT_EQ(reading.strongest, (StrongestSignal{14074000.5, -31}));
  EXPECT_EQ(reading.tuner_gain, 12.5);
  EXPECT_EQ(parse_meter("OK LEVELS state=waiting\n" + overload + if_gain + "OK TUNER unavailable\n").tuner_state,
            "unavailable");
}

TEST(MeterReply, NamesWhatIsWrongWithIt) {
  const struct {
    std::string reply, words;
  } cases[] = {
      {"", "Incomplete receiver meter snapshot"},
      {levels + overload, "Incomplete receiver meter snapshot"},
      {"ERR\nx\ny\n", "Invalid IQ levels response"},
      {"OK LEVELS state\n" + overload + if_gain, "Malformed IQ levels response"},
      {"OK LEVELS peak=1\n" + overload + if_gain, "Incomplete IQ levels response"},
      {"OK LEVELS state=fine\n" + overload + if_gain, "Unknown IQ meter state"},
      {"OK LEVELS state=ready,peak=1,rms=2,hold=3,samples=1\n" + overload + if_gain, "Incomplete IQ levels response"},
      {"OK LEVELS state=ready,peak=nan,rms=2,hold=3,age=1,samples=1\n" + overload + if_gain, "Invalid IQ level value"},
      {"OK LEVELS state=ready,peak=1,rms=2,hold=3,age=1,samples=-1\n" + overload + if_gain, "Invalid IQ sample count"},
      {levels + "OK IFGAIN\n" + if_gain, "Receiver did not provide RF overload status"},
      {levels + "OK OVERLOAD state=clear\n" + if_gain, "Missing RF overload count"},
      {levels + "OK OVERLOAD state=bad,events=1\n" + if_gain, "Invalid RF overload state"},
      {levels + "OK OVERLOAD state=clear,events=x\n" + if_gain, "Invalid RF overload count"},
      {levels + overload + "OK GAIN\n", "Receiver did not provide IF gain status"},
      {levels + overload + "OK IFGAIN state=ready\n", "Missing IF gain reduction"},
      {levels + overload + "OK IFGAIN state=ready,reduction=x\n", "Invalid IF gain reduction"},
      {levels + overload + "OK IFGAIN state=odd,reduction=1\n", "Invalid IF gain state"},
      {levels + overload + if_gain + "OK LOUDEST 1 2\n", "Invalid strongest-signal meter line"},
      {levels + overload + if_gain + "OK STRONGEST 14e6 -30 x\n", "Invalid strongest-signal values"},
      {levels + overload + if_gain + "OK STRONGEST 5e9 -30\n", "Invalid strongest-signal values"},
      {levels + overload + if_gain + "OK TUNER state=odd,gain=1\n", "Invalid tuner gain state"},
      {levels + overload + if_gain + "OK TUNER state=ready\n", "Missing tuner gain"},
      {levels + overload + if_gain + "OK TUNER\n", "Receiver did not provide tuner gain status"},
  };
  for (const auto& example : cases)
    EXPECT_EQ(failure([&] { (void)parse_meter(example.reply); }), example.words) << example.reply;
}

TEST(SpectrumReply, IsReadWholeOrNotAtAll) {
  std::string powers;
  for (int bin = 0; bin < 16; ++bin)
    powers += " -100.5";
  EXPECT_EQ(parse_spectrum("OK SPECTRUM 7 1e6 2e6 16" + powers + "\n").powers.size(), 16U);
  EXPECT_TRUE(parse_spectrum("OK WAIT 1e6 2e6 512").waiting);
  const struct {
    std::string reply, words;
  } cases[] = {
      {"ERR", "Receiver did not supply a valid waterfall spectrum"},
      {"OK SPECTRUM 7 2e6 1e6 16" + powers, "Receiver did not supply a valid waterfall spectrum"},
      {"OK SPECTRUM 7 1e6 2e6 2000" + powers, "Receiver did not supply a valid waterfall spectrum"},
      {"OK SPECTRUM 7 1e6 2e6 17" + powers, "Invalid waterfall power data"},
      {"OK SPECTRUM 7 1e6 2e6 16 -200" + powers, "Invalid waterfall power data"},
      {"OK SPECTRUM 7 1e6 2e6 16" + powers + " -1", "Unexpected waterfall spectrum data"},
      {"OK WAIT 1e6 2e6 15", "Invalid pending waterfall spectrum"},
      {"OK WAIT 1e6 2e6 16 x", "Invalid pending waterfall spectrum"},
  };
  for (const auto& example : cases)
    EXPECT_EQ(failure([&] { (void)parse_spectrum(example.reply); }), example.words) << example.reply;
}

TEST(LivePairs, AreJudgedAtBothEnds) {
  EXPECT_EQ(parse_live_pairs("agc=off,antenna=B,center-frequency=14.1M"),
            (Settings{{"agc", "off"}, {"antenna", "B"}, {"center-frequency", "14.1M"}}));
  const struct {
    const char *list, *words;
  } cases[] = {
      {"", "No live SDR settings supplied"},
      {"agc", "Live SDR settings need nonempty key=value pairs"},
      {"agc=", "Live SDR settings need nonempty key=value pairs"},
      {"agc=on,", "Trailing comma in live SDR settings"},
      {"agc=on,agc=off", "Duplicate live SDR setting: agc"},
      {"sample-rate=2M", "Setting requires restart or is unsupported live: sample-rate"},
      {"gain-reduction=60", "Invalid IF gain reduction"},
      {"antenna=A B", "Invalid antenna name"},
      {"rf-notch=1", "rf-notch must be on or off"},
      {"rx888-attenuation=0.3", "rx888-attenuation is 0..31.5 dB in 0.5 dB steps"},
      {"rx888-gain=high", "Invalid live SDR value: high"},
  };
  for (const auto& example : cases)
    EXPECT_EQ(failure([&] { (void)parse_live_pairs(example.list); }), example.words) << example.list;
}

TEST(Requests, SurviveTheWay) {
  const double odd = std::nextafter(14074000.0, std::numeric_limits<double>::infinity());
  const std::string request = retune_request(RetuneStep::apply, 14074000, {{"FT8", odd}, {"JS8-FAST", 7e6}}, "20:cw");
  EXPECT_EQ(request, "RADIO RETUNE APPLY 14074000 FT8:14074000.000000002 JS8-FAST:7000000 KNOWN=20:cw");
  EXPECT_EQ(failure([] { (void)retune_request(RetuneStep::check, 1, {}, "20: cw"); }),
            "Invalid known-band-modes for a retune");
  EXPECT_EQ(setting_request({{"decode-depth", "3"}, {"callsign", "K1ABC"}, {"wsprnet", "a b"}}),
            "RADIO SETTING decode-depth=3");
  EXPECT_EQ(failure([] { (void)setting_request({{"wsprnet", "a,b"}}); }), "No setting to change");
}

}  // namespace
}  // namespace receiver
