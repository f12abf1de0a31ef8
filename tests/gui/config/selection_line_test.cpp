// What the row of a receiver says.
#include "gui/config/selection_line.h"

#include <gtest/gtest.h>

namespace {

using launcher::ReceiverChoice;
using options::Profile;

struct Case {
  const char* what;
  Profile settings;
  bool spot = true, share = true;
  const char* bands;
  const char* audio = nullptr;
  const char* line;
  bool warning = false;
};

/// What the planner itself answers for one receiver of this kind.
gui::SelectionLine line_of(const Case& c, bool ticked = true) {
  options::Station station;
  station.common = {{"mode", c.audio ? "hybrid" : "decoder"}, {"modes", "FT8"}, {"bands", c.bands}};
  if (c.audio) station.common["audio.voice1"] = c.audio;
  station.receivers = {{"ONE", "RSP2", c.settings, ticked, true, c.spot, c.share}};
  const launcher::BandChoices choices = launcher::band_choices(station);
  const ReceiverChoice* choice = choices.receivers.empty() ? nullptr : &choices.receivers.front();
  return gui::selection_line(station, station.receivers.front(), choice);
}

TEST(SelectionLine, TellsThePlanOrWhatIsInItsWay) {
  const Profile rx888 = {{"backend", "rx888"}, {"rx888-rate", "half"}};
  const Case cases[] = {
      {"plain", {}, true, true, "40,30,20", nullptr, "40m 30m 20m · 10 MS/s · 7.2 MHz"},
      {"audio", {}, true, true, "20", "id=voice1,frequency=14.25M", "20m, audio receiver voice1 · 10 MS/s · 7.2 MHz"},
      {"RX-888", rx888, true, true, "160,80,40,20", nullptr, "160m 80m 40m 20m · ADC 64 MS/s, decoding 16 MS/s"},
      {"suffixes", {}, true, false, "20", nullptr, "20m · 10 MS/s · 7.2 MHz · not shared"},
      {"listening", {}, false, true, "20", nullptr, "20m · 10 MS/s · 7.2 MHz · listening only, no spotting"},
      {"neither",
       {},
       false,
       false,
       "20",
       nullptr,
       "Neither spotting nor shared: tick Spot or Share, or untick the receiver.",
       true},
      {"narrow",
       {{"sample-rate", "2.048M"}},
       true,
       true,
       "20",
       nullptr,
       "20m · 2.048 MS/s captures only 1.38 MHz, one band at a time (Automatic: 7.2 MHz)"},
      {"less",
       {{"sample-rate", "6M"}},
       true,
       true,
       "20",
       nullptr,
       "20m · 6 MS/s captures only 5.4 MHz (Automatic: 7.2 MHz)"},
      {"fixed", {{"center-frequency", "7.1M"}}, true, true, "40", nullptr, "40m · Capture center fixed at 7.1M"},
      {"broken",
       {{"bandwidth", "6k"}},
       true,
       true,
       "20",
       nullptr,
       "Cannot be used: Decoder channel bandwidth must be 1000..5000 Hz",
       true},
  };
  for (const Case& c : cases) {
    const gui::SelectionLine line = line_of(c);
    EXPECT_EQ(line.text, c.line) << c.what;
    EXPECT_EQ(line.warning, c.warning) << c.what;
  }
  EXPECT_EQ(line_of(cases[0], false).text, "");
}

TEST(SelectionLine, SaysWhenAReceiverIsIdle) {
  options::Station station;
  station.receivers = {{"ONE", "RSP2", {}, true}};
  ReceiverChoice choice;
  choice.state = "Not needed for the ticked bands";
  EXPECT_EQ(gui::selection_line(station, station.receivers[0], &choice).text, "Not needed for the ticked bands");
}

TEST(SelectionLine, NamesWhatTheListingSays) {
  EXPECT_EQ(gui::with_status("RSP2 · ONE", launcher::DeviceStatus::missing), "RSP2 · ONE · missing");
  EXPECT_EQ(gui::with_status("RSP2 · ONE", launcher::DeviceStatus::used_by_sharing), "RSP2 · ONE · used by Corvane");
  EXPECT_EQ(gui::with_status("RSP2 · ONE", launcher::DeviceStatus::running), "RSP2 · ONE");
}

}  // namespace
