#include "receiver/meter_view.h"

#include <gtest/gtest.h>

namespace receiver {
namespace {

constexpr const char* quiet_reply =
    "OK LEVELS state=ready,peak=-30,rms=-42,hold=-28,age=0.1,samples=1\nOK OVERLOAD state=clear,events=0\nOK IFGAIN "
    "state=ready,reduction=40\n";

MeterSnapshot snapshot(std::int64_t taken) {
  MeterSnapshot made;
  made.taken = taken;
  made.reading = parse_meter(quiet_reply);
  return made;
}

TEST(MeterView, ShowsNothingThatIsNotOfNow) {
  const MeterSurroundings running{.running = true, .agc = true};
  constexpr std::int64_t taken = 1000000;
  MeterSnapshot good = snapshot(taken);
  const MeterView fresh = meter_view(&good, running, taken + 5000000);
  EXPECT_NEAR(fresh.level.fill, 0.58, 1e-9);
  EXPECT_EQ(fresh.rf_text, "−42.0 dBFS");
  EXPECT_EQ(fresh.if_text, "−40 dB");
  EXPECT_EQ(fresh.if_slider, 40);
  MeterSnapshot failed = good;
  failed.error = "Audio request timed out";
  for (const MeterView& old : {meter_view(&good, running, taken + 5000001), meter_view(&failed, running, taken),
                               meter_view(nullptr, running, 1), meter_view(&good, MeterSurroundings{}, taken)}) {
    EXPECT_EQ(old.level.fill, 0);
    EXPECT_FALSE(old.level.marker);
    EXPECT_EQ(old.rf_text + old.if_text, "——");
    EXPECT_FALSE(old.if_slider);
    EXPECT_EQ(old.badge.label, "RF");
  }
  EXPECT_TRUE(meter_view(&good, running, taken + 6000000).level.tooltip.ends_with("State: stale"));
  EXPECT_FALSE(meter_view(&good, MeterSurroundings{.running = true}, taken).if_slider);
}

TEST(MeterView, AnOverloadIsRedThenAmberThenQuiet) {
  const MeterSurroundings sdrplay{.running = true};
  MeterSnapshot made = snapshot(100000000);
  const auto badge = [&](std::int64_t after, const MeterSurroundings& around) {
    made.taken = made.last_overload + after;
    return meter_view(&made, around, made.taken).badge;
  };
  made.last_overload = 100000000;
  made.reading.overload_events = 2;
  made.reading.overload_state = "detected";
  made.reading.strongest = StrongestSignal{9500000, -3.5};
  EXPECT_EQ(badge(0, sdrplay).tooltip,
            "SDR input overloaded. Reduce RF Gain. Episodes: 2 — strongest signal 9.500 MHz (−3.5 dBFS) — outside "
            "monitored bands; reassign to avoid");
  EXPECT_EQ(badge(0, {.running = true, .backend = "rx888"}).tooltip,
            "The RX-888's ADC is clipping; any signal from 0 to 64 MHz can cause it. Raise the attenuator or lower the "
            "VGA gain. Episodes: 2 — strongest in the capture window 9.500 MHz (−3.5 dBFS)");
  made.reading.overload_state = "clear";
  EXPECT_EQ(badge(59999999, sdrplay).look, BadgeLook::recovered);
  EXPECT_EQ(badge(59999999, sdrplay).tooltip, "Receiver reports recovery. Overload episodes this session: 2");
  EXPECT_EQ(badge(60000000, sdrplay).look, BadgeLook::muted);
  EXPECT_EQ(badge(60000000, sdrplay).tooltip, "No recent RF overload. Overload episodes this session: 2");
}

TEST(MeterView, NotesWhoSetsADonglesGain) {
  MeterSnapshot made = snapshot(1);
  made.reading.tuner_state = "ready";
  made.reading.tuner_gain = 33.8;
  MeterSurroundings dongle{.running = true, .agc = true, .backend = "rtl-sdr"};
  EXPECT_EQ(meter_view(&made, dongle, 2).gain_note,
            "Tuner AGC sets the gain: 33.8 dB now. Untick it to set Tuner gain yourself.");
  dongle.agc = false;
  EXPECT_EQ(meter_view(&made, dongle, 2).gain_note, "");
  dongle.direct_sampling = true;
  EXPECT_TRUE(meter_view(&made, dongle, 2).gain_note.starts_with("Direct sampling (HF): "));
}

}  // namespace
}  // namespace receiver
