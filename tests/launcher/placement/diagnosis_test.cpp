#include <regex>

#include <gtest/gtest.h>

#include "generated_station.h"
#include "launcher/band_choices.h"
#include "launcher/plan_words.h"
#include "launcher/planner.h"

namespace launcher {
namespace {

using options::ReceiverProfile;
using options::Station;

std::optional<PlanError> plan_error(const Station& station) {
  try {
    (void)plan_uncached(station);
    return std::nullopt;
  } catch (const PlanError& error) {
    return error;
  }
}

bool plans(const Station& station) {
  try {
    (void)plan_uncached(station);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

ReceiverProfile receiver(const char* serial, const char* model, options::Profile settings = {}) {
  return {serial, model, std::move(settings), true, true};
}

Station station_of(std::vector<ReceiverProfile> receivers, options::Profile common) {
  Station station;
  station.common = std::move(common);
  station.common.insert({{"mode", "decoder"}, {"modes", "FT8"}});
  station.receivers = std::move(receivers);
  return station;
}

struct Case {
  Station station;
  PlanCode code;
  std::string text;
};

TEST(Diagnosis, NamesTheNearestReasonForTheWholeSelection) {
  auto unticked = receiver("ONE", "RSP2");
  unticked.enabled = false;
  auto absent = receiver("ONE", "RSP2");
  absent.available = false;
  auto pinned = station_of({receiver("ONE", "RSP2"), receiver("TWO", "RSP2")}, {{"bands", "20,6"}});
  pinned.assignments = {{"20", "ONE"}, {"6", "ONE"}};
  auto all_pinned = station_of({receiver("ONE", "RSP2"), receiver("TWO", "RSP2")}, {{"bands", "40,20,6,2"}});
  const std::string spans = "one capture up to 7.2 MHz wide";
  const std::vector<Case> cases{
      {station_of({unticked}, {{"bands", "20"}}), PlanCode::no_receiver, "Tick at least one receiver."},
      {station_of({receiver("ONE", "RSP2")}, {}), PlanCode::nothing_selected, "Tick at least one band."},
      {station_of({receiver("ONE", "RSP2")}, {{"frequencies", ""}}), PlanCode::nothing_selected,
       "Enter at least one frequency."},
      {station_of({receiver("ONE", "RSP2")}, {{"mode", "receivers"}}), PlanCode::nothing_selected,
       "No audio receiver is switched on. Add or enable one on the Audio Receivers tab."},
      {station_of({receiver("ONE", "RSP2")}, {{"bands", "20"}, {"modes", ""}}), PlanCode::no_mode,
       "Tick at least one mode (FT8, FT4, JS8 or WSPR, or a mode to decode on known frequencies)."},
      {station_of({receiver("ONE", "RSP2")}, {{"bands", "60"}, {"modes", "JS8"}}), PlanCode::missing_frequency,
       "60m has no JS8 frequency. Tick FT8 or FT4, or untick 60m."},
      {station_of({receiver("ONE", "RSP2")},
                  {{"bands", "60"}, {"modes", ""}, {"known-channels", "true"}, {"known-modes", "rtty"}}),
       PlanCode::missing_frequency,
       "60m has no known-frequency channel for the ticked modes. Tick FT8, FT4, JS8 or WSPR, or another "
       "known-frequency mode, or untick 60m."},
      {station_of({absent}, {{"bands", "20"}}), PlanCode::absent_receiver,
       "RSP2 · ONE is ticked but is not attached, or is busy. Press Refresh receivers, or untick it."},
      {station_of({receiver("ONE", "RSP1", {{"rf-notch", "on"}})}, {{"bands", "20"}}), PlanCode::unusable_receiver,
       "Selected hardware notch is unavailable on RSP1; turn it off in SDR Config"},
      {station_of({receiver("ONE", "RSP2", {{"bandwidth", "6k"}})}, {{"bands", "20"}}), PlanCode::unusable_receiver,
       "RSP2 · ONE cannot be used: Decoder channel bandwidth must be 1000..5000 Hz. Check its settings in SDR Config."},
      {station_of({receiver("ONE", "RSP1A", {{"lna-state", "12"}})}, {{"bands", "20"}}), PlanCode::unusable_receiver,
       "RSP1A · ONE cannot be used: RF gain state 12 is not available with this antenna and frequency (0-6). Change RF "
       "Gain (now 12) in SDR Config."},
      {station_of({receiver("ONE", "RSP2", {{"sample-rate", "2048000"}})}, {{"bands", "40,30"}}),
       PlanCode::narrowed_capture,
       "The ticked bands do not fit: RSP2 · ONE is set to 2.048 MS/s and captures only 1.38 MHz. Set its Sample rate "
       "to Automatic in SDR Config."},
      {station_of({receiver("ONE", "RSP2", {{"center-frequency", "7.1M"}})}, {{"bands", "40,20"}}),
       PlanCode::narrowed_capture,
       "The ticked bands do not fit: RSP2 · ONE has Capture center fixed at 7.1M. Clear Capture center in SDR Config."},
      {station_of({receiver("ONE", "RX-888", {{"backend", "rx888"}, {"rx888-rate", "half"}})}, {{"bands", "20,6"}}),
       PlanCode::out_of_reach,
       "6m is out of reach: RX-888 · ONE covers 0-32 MHz at ADC sample rate Half. Tick another receiver, or untick "
       "it."},
      {pinned, PlanCode::assignment, "20m is assigned to RSP2 · ONE. Set 20m to Automatic."},
      {station_of({receiver("ONE", "RSP2")},
                  {{"mode", "hybrid"}, {"bands", "20"}, {"audio.v", "id=v,frequency=1840000"}}),
       PlanCode::consumers,
       "The ticked bands do not fit: audio receiver v needs its own capture. Retune or remove it in Audio Receivers, "
       "choose External Decoder, or tick another receiver."},
      {station_of({receiver("ONE", "RSP2")}, {{"mode", "hybrid"},
                                              {"bands", "20"},
                                              {"audio.a", "id=a,frequency=7500000"},
                                              {"audio.b", "id=b,frequency=7510000"},
                                              {"audio.c", "id=c,frequency=7520000"},
                                              {"audio.d", "id=d,frequency=20500000"},
                                              {"audio.e", "id=e,frequency=20510000"},
                                              {"audio.f", "id=f,frequency=20520000"},
                                              {"audio.g", "id=g,frequency=20530000"}}),
       PlanCode::consumers,
       "The ticked bands do not fit: audio receiver c, audio receiver b and audio receiver a need their own captures. "
       "Retune or remove them in Audio Receivers, choose External Decoder, or tick another receiver."},
      {station_of({receiver("ONE", "RSP2"), receiver("TWO", "RSP2")}, {{"bands", "40,20,6"}}), PlanCode::capacity, ""},
      {station_of({receiver("ONE", "RSP2")}, {{"bands", "40,20,6"}}), PlanCode::capacity,
       "The ticked bands need more receivers than are ticked.\nRSP2 · ONE: 40m and 20m, " + spans +
           "\nUntick 6m, or tick another receiver."},
      {station_of({receiver("ONE", "RSP2"), receiver("TWO", "RSP2")}, {{"mode", "audio"}}), PlanCode::audio_mode,
       "Virtual audio uses one receiver. Tick exactly one."},
  };
  for (const Case& example : cases) {
    const auto error = plan_error(example.station);
    if (example.text.empty()) {
      EXPECT_FALSE(error) << error->text();
      continue;
    }
    ASSERT_TRUE(error) << example.text;
    EXPECT_EQ(error->text(), example.text);
    EXPECT_EQ(error->code, example.code) << example.text;
    EXPECT_EQ(band_choices_uncached(example.station).error->text(), example.text);
  }
}

TEST(Diagnosis, TellsOfEachBandWhyItCannotJoin) {
  const auto reason = [](const Station& station, const std::string& name) {
    for (const BandChoice& band : band_choices_uncached(station).bands)
      if (band.band == name) return band.allowed ? std::string("allowed") : band.reason;
    return std::string("no such band");
  };
  auto full = station_of({receiver("ONE", "RSP2"), receiver("TWO", "RSP2")}, {{"bands", "20"}});
  full.assignments = {{"6", "ONE"}, {"20", "ONE"}};
  const auto narrow = station_of({receiver("ONE", "RSP2", {{"sample-rate", "2048000"}})}, {{"bands", "20"}});
  const auto fixed = station_of({receiver("ONE", "RSP2", {{"center-frequency", "7.1M"}})}, {{"bands", "40"}});
  const auto js8 = station_of({receiver("ONE", "RSP2")}, {{"bands", "20"}, {"modes", "JS8"}});
  const auto nothing = station_of({receiver("ONE", "RSP2")}, {{"bands", ""}, {"modes", ""}});
  EXPECT_EQ(reason(narrow, "40"),
            "40m does not fit: RSP2 · ONE is set to 2.048 MS/s and captures only 1.38 MHz. Set its Sample rate to "
            "Automatic in SDR Config.");
  EXPECT_EQ(reason(fixed, "17"),
            "17m is out of reach: RSP2 · ONE has Capture center fixed at 7.1M. Clear Capture center in SDR Config, or "
            "tick another receiver.");
  EXPECT_EQ(notice_lines(band_choices_uncached(fixed), fixed, {}).front(),
            "160m and 20m cannot be added: RSP2 · ONE has Capture center fixed at 7.1M.");
  EXPECT_EQ(reason(js8, "60"), "60m has no JS8 frequency. Tick FT8 or FT4 to use it.");
  EXPECT_EQ(reason(full, "6"), "6m does not fit: 20m is assigned to RSP2 · ONE. Set 20m to Automatic.");
  EXPECT_EQ(reason(nothing, "20"), "allowed");
  EXPECT_EQ(reason(station_of({receiver("ONE", "RSP2")}, {}), "20"), "allowed") << "a new station";
  EXPECT_EQ(reason(station_of({receiver("ONE", "RSP2")}, {{"frequencies", "14.074M"}}), "160"), "allowed")
      << "the typed frequency goes when a band is ticked";
  EXPECT_TRUE(band_choices_uncached(js8).bands[2].lacks_mode) << "the boxes of its modes stay open";
  const auto broken = station_of({receiver("ONE", "RSP2", {{"bandwidth", "6k"}})}, {});
  EXPECT_EQ(notice_lines(band_choices_uncached(broken), broken, {}).size(), 2u) << "and why no band can be ticked";
  EXPECT_EQ(choices_fix(band_choices_uncached(broken), broken)->label, "Open SDR Config");
}

TEST(Diagnosis, AReceiverThatIsSharedIsNotCalledAbsent) {
  Station station = station_of({receiver("ONE", "RSP2"), receiver("TWO", "RSP2")}, {{"bands", "20"}});
  const DeviceStatuses shared{{"TWO", DeviceStatus::used_by_sharing}};
  const std::string words = "RSP2 · TWO is in use by Corvane. Free it in Corvane's settings, or untick it here.";
  const auto notice = [&] { return notice_lines(band_choices_uncached(station), station, shared); };
  EXPECT_EQ(notice(), std::vector<std::string>{words}) << "taken since the last discovery";
  station.receivers[1].available = false;
  EXPECT_EQ(notice(), std::vector<std::string>{words}) << "found in its hands";
  EXPECT_EQ(error_text(*plan_error(station), station, shared), words);
  EXPECT_NE(error_text(*plan_error(station), station, {}), words);
  station.receivers[1].enabled = false;
  EXPECT_NE(notice().front(), words);
}

TEST(Diagnosis, APinThatCannotBindIsToldAndLeftOut) {
  auto unticked = receiver("TWO", "RSPdx");
  unticked.enabled = false;
  Station station = station_of({receiver("ONE", "RSP2"), unticked}, {{"bands", "40,20"}});
  station.assignments = {{"40", "TWO"}, {"20", "GONE"}, {"10", "GONE"}};
  const BandChoices choices = band_choices_uncached(station);
  EXPECT_FALSE(choices.error);
  ASSERT_EQ(choices.notes.size(), 2U);
  EXPECT_EQ(choices.notes[0].text,
            "40m is assigned to RSPdx · TWO, which is not ticked, so it is placed automatically. Tick that receiver or "
            "set 40m to Automatic.");
  EXPECT_EQ(choices.notes[1].text,
            "20m is assigned to a receiver that is no longer listed (GONE), so it is placed automatically. Set 20m to "
            "Automatic.");
  EXPECT_EQ(apply_fix(station, *choices_fix(choices, station)).assignments.count("40"), 0U);
}

/// A cure that is offered cures: the selection then plans, with the band that was asked for.
TEST(Diagnosis, AFixOnOfferWorks) {
  StationGenerator generator(5);
  int pins = 0, settings = 0, unticked = 0;
  for (int turn = 0; turn < 1500; ++turn) {
    const Station station = generator.station(7, 3);
    const auto error = plan_error(station);
    ASSERT_EQ(can_be_planned(station), !error) << turn;
    if (!error) continue;
    if (const auto fix = plan_fix(*error, station)) {
      if (fix->kind != PlanFix::Kind::pin && fix->kind != PlanFix::Kind::receiver_setting) continue;
      ++(fix->kind == PlanFix::Kind::pin ? pins : settings);
      EXPECT_TRUE(plans(apply_fix(station, *fix))) << error->text();
    }
    // The bands that the operator is told to untick.
    std::smatch named;
    const std::string text = error->text();
    if (error->code != PlanCode::capacity || !std::regex_search(text, named, std::regex("\nUntick (.*), or tick")))
      continue;
    Station fewer = station;
    std::vector<std::string> kept;
    for (const auto band : base::split(fewer.common["bands"], ','))
      if (!std::regex_search(named[1].str(), std::regex("\\b" + band_display_name(band) + "\\b")))
        kept.emplace_back(band);
    if (kept.empty() || text.find("audio receiver") != std::string::npos) continue;
    ++unticked;
    fewer.common["bands"] = base::join(kept, ",");
    EXPECT_TRUE(plans(fewer)) << text;
  }
  EXPECT_GT(pins, 5);
  EXPECT_GT(settings, 5);
  EXPECT_GT(unticked, 5);
}

/// A band that may be ticked can be ticked, and one that may not cannot.
TEST(BandChoices, KeepTheirWord) {
  StationGenerator generator(6);
  int allowed = 0, refused = 0;
  for (int turn = 0; turn < 60; ++turn) {
    const Station station = generator.station(5, 3);
    const BandChoices choices = band_choices_uncached(station);
    if (choices.error) continue;
    for (const BandChoice& band : choices.bands) {
      if (band.ticked) continue;
      Station more = station;
      more.common["bands"] += "," + band.band;
      ASSERT_EQ(plans(more), band.allowed) << band.reason;
      ++(band.allowed ? allowed : refused);
    }
  }
  EXPECT_GT(allowed, 20);
  EXPECT_GT(refused, 20);
}

}  // namespace
}  // namespace launcher
