// Which controls a receiver's card has, when they can be changed, and what they offer.
#include "gui/config/card_controls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gui/config/card_choices.h"
#include "gui/config/config_view.h"
#include "launcher/setting_kinds.h"
#include "options/option_table.h"

namespace {

using gui::CardFacts;
using launcher::Family;
using options::Profile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;

std::vector<std::string> keys(const CardFacts& facts) {
  std::vector<std::string> found;
  for (const gui::CardControl& control : gui::card_controls(facts.family))
    if (gui::control_state(control, facts).exists) found.emplace_back(control.key);
  return found;
}

gui::ControlState state(const char* key, const CardFacts& facts) {
  return gui::control_state(*gui::find_control(facts.family, key), facts);
}

std::vector<std::string> texts(const std::vector<gui::CardChoice>& choices) {
  std::vector<std::string> found;
  for (const gui::CardChoice& choice : choices)
    found.push_back(choice.text);
  return found;
}

CardFacts sdrplay(const char* model, Profile settings = {}) {
  return {Family::sdrplay, model, std::move(settings), false, 14.1e6, ""};
}

TEST(CardControls, HaveTheirOrder) {
  EXPECT_THAT(keys(sdrplay("RSPduo")),
              ElementsAre("sample-rate", "antenna", "usb-mode", "audio-gain", "ppm", "bandwidth", "center-frequency",
                          "agc", "gain-reduction", "lna-state", "rf-notch", "mw-notch"));
  EXPECT_THAT(keys({Family::rx888, "RX-888", {}}),
              ElementsAre("rx888-attenuation", "rx888-gain", "rx888-rate", "rx888-coverage", "rx888-bias-t",
                          "rx888-reference", "audio-gain", "ppm", "bandwidth", "center-frequency"));
  EXPECT_THAT(keys({Family::rtl_sdr, "R820T", {{"agc", "off"}}}),
              ElementsAre("sample-rate", "direct-sampling", "agc", "rtl-gain", "rtl-bias-t", "ppm", "audio-gain",
                          "bandwidth", "center-frequency"));
}

// What a control shows without a setting is what the engine does without it.
TEST(CardControls, ShowTheEnginesOwnDefaults) {
  for (const Family family : {Family::sdrplay, Family::rx888, Family::rtl_sdr})
    for (const gui::CardControl& control : gui::card_controls(family)) {
      ASSERT_TRUE(options::is_receiver_setting(control.key)) << control.key;
      const options::Option* option = options::find_option(control.key);
      if (control.kind != gui::CardKind::slider || option->current == nullptr) continue;
      EXPECT_EQ(control.fallback, gui::plain_number(option->current({}))) << control.key;
    }
}

TEST(CardControls, ExistByModelAndSettings) {
  const struct {
    CardFacts facts;
    const char* key;
    bool exists;
  } cases[] = {
      {sdrplay("RSP1A"), "antenna", false},
      {sdrplay("RSP1A", {{"antenna", "B"}}), "antenna", true},
      {sdrplay("RSPdx"), "antenna", true},
      {sdrplay("Unknown RSP"), "antenna", true},
      {sdrplay("RSP1"), "rf-notch", false},
      {sdrplay("RSP1", {{"rf-notch", "on"}}), "rf-notch", true},
      {sdrplay("RSP1A"), "rf-notch", true},
      {sdrplay("RSPdx"), "mw-notch", false},
      {sdrplay("RSPdx", {{"mw-notch", "on"}}), "mw-notch", true},
      {{Family::rtl_sdr, "", {}}, "rtl-gain", false},
      {{Family::rtl_sdr, "", {{"agc", "off"}}}, "rtl-gain", true},
      {{Family::rtl_sdr, "", {{"agc", "off"}, {"direct-sampling", "q"}}}, "rtl-gain", false},
      {{Family::rtl_sdr, "", {{"agc", "off"}}, false, 14e6, "q-check"}, "rtl-gain", false},
      {{Family::rtl_sdr, "", {{"agc", "off"}, {"direct-sampling", "off"}}, false, 14e6, "q"}, "rtl-gain", true},
  };
  for (const auto& c : cases)
    EXPECT_EQ(state(c.key, c.facts).exists, c.exists) << c.facts.model << " " << c.key;
  EXPECT_EQ(state("rf-notch", sdrplay("RSP1", {{"rf-notch", "on"}})).tooltip,
            "This receiver has no switchable MW/FM notch. Turn off any imported enabled setting.");
}

TEST(CardControls, LockWhatNeedsARestartWhileTheReceiverRuns) {
  for (const Family family : {Family::sdrplay, Family::rx888, Family::rtl_sdr})
    for (const gui::CardControl& control : gui::card_controls(family)) {
      CardFacts facts{family, "RSPduo", {{"agc", "off"}}, true};
      const bool live = launcher::is_sent_at_once(control.key, family);
      EXPECT_EQ(gui::control_state(control, facts).sensitive, live) << control.key;
      EXPECT_EQ(gui::control_state(control, facts).tooltip == "Stop reception to change this setting.", !live);
      EXPECT_EQ(gui::goes_live(control, facts), live);
      facts.running = false;
      EXPECT_TRUE(gui::control_state(control, facts).sensitive) << control.key;
      EXPECT_FALSE(gui::goes_live(control, facts));
    }
  EXPECT_FALSE(state("gain-reduction", sdrplay("RSP2")).sensitive);
}

TEST(CardChoices, GainStatesSayWhatTheyAttenuate) {
  const gui::CardControl& gain = *gui::find_control(Family::sdrplay, "lna-state");
  CardFacts facts = sdrplay("RSP1");
  EXPECT_THAT(texts(gui::choices_of(gain, facts)),
              ElementsAre("State 0 · −0 dB", "State 1 · −24 dB", "State 2 · −19 dB", "State 3 · −43 dB"));
  EXPECT_THAT(state("lna-state", facts).tooltip,
              HasSubstr("\nReduction from maximum RF gain for RSP1 at 14.092 MHz. Applies to the whole capture; "));
  facts = sdrplay("RSP2", {{"lna-state", "255"}});
  EXPECT_THAT(texts(gui::choices_of(gain, facts)),
              testing::AllOf(IsSupersetOf({"State 8", "State 255 (unavailable)"}), Not(testing::Contains("State 9"))));
  EXPECT_THAT(state("lna-state", facts).tooltip, HasSubstr("dB mapping is unknown."));
  facts = sdrplay("RSPdx");
  facts.centre.reset();
  EXPECT_EQ(gui::choices_of(gain, facts).size(), 28U);
}

TEST(CardChoices, AntennasAreTheModels) {
  const gui::CardControl& antenna = *gui::find_control(Family::sdrplay, "antenna");
  CardFacts facts = sdrplay("RSP2", {{"antenna", "C"}});
  EXPECT_THAT(texts(gui::choices_of(antenna, facts)), ElementsAre("Automatic", "A", "B", "HiZ", "C (unavailable)"));
  facts = sdrplay("RSPdx", {{"antenna", "B"}});
  facts.running = true;
  EXPECT_THAT(texts(gui::choices_of(antenna, facts)), ElementsAre("A", "B", "C"));
}

TEST(CardChoices, RatesSayWhatTheyCaptureAndTypedOnesAreKept) {
  EXPECT_THAT(
      texts(gui::rate_choices(Family::sdrplay)),
      IsSupersetOf({"Automatic (10 MS/s decoding · 7.2 MHz)", "2.048 MS/s · 1.38 MHz, one band", "6 MS/s · 5.4 MHz"}));
  EXPECT_THAT(texts(gui::rate_choices(Family::rtl_sdr)), testing::Contains("Automatic (2.4 MS/s · 2.16 MHz)"));
  const struct {
    const char *typed, *value, *shown;
  } cases[] = {{"2.5M", "2500000", "2500000"},
               {" 6000k ", "6000000", "6 MS/s · 5.4 MHz"},
               {"2.048 MS/s · 1.38 MHz, one band", "2048000", "2.048 MS/s · 1.38 MHz, one band"},
               {"", "", "Automatic (10 MS/s decoding · 7.2 MHz)"},
               {"fast", "fast", "fast"}};
  for (const auto& c : cases) {
    EXPECT_EQ(gui::rate_value(Family::sdrplay, c.typed), c.value);
    EXPECT_EQ(gui::rate_text(Family::sdrplay, c.value), c.shown);
  }
}

TEST(Sliders, StandForTheirValues) {
  const auto limits = [](const char* key) {
    for (const Family family : {Family::sdrplay, Family::rx888, Family::rtl_sdr})
      if (const gui::CardControl* control = gui::find_control(family, key)) return control->slider;
    return gui::SliderLimits{};
  };
  const struct {
    const char* key;
    double position, value;
    const char* text;
  } cases[] = {{"gain-reduction", -59, 59, "−59 dB"},
               {"gain-reduction", -20, 20, "Maximum (−20 dB)"},
               {"audio-gain", 20, 10, "20"},
               {"audio-gain", -40, 0.01, "−40"},
               {"rx888-attenuation", 31.5, 31.5, "31.5 dB"},
               {"ppm", -1.5, -1.5, "−1.5"}};
  for (const auto& c : cases) {
    EXPECT_EQ(gui::slider_value(limits(c.key), c.position), c.value) << c.key;
    EXPECT_NEAR(gui::slider_position(limits(c.key), c.value), c.position, 1e-9) << c.key;
    EXPECT_EQ(gui::slider_text(limits(c.key), c.position), c.text);
  }
  EXPECT_EQ(gui::slider_position(limits("audio-gain"), 0), -40);
}

// An empty value of a receiver's own stands against a common one, so that a card can say Automatic.
TEST(CardEdits, OverrideTheCommonSettings) {
  options::Station station;
  station.common = {{"sample-rate", "2048000"}};
  station.receivers = {{"A1", "RSP2", {{"ppm", "1"}}}};
  station = gui::with_setting(station, "A1", "sample-rate", "");
  station = gui::with_setting(station, "A1", "ppm", "");
  station = gui::with_setting(station, "A1", "agc", "off");
  station = gui::with_setting(station, "nobody", "agc", "off");
  EXPECT_EQ(station.receivers.at(0).settings, (Profile{{"sample-rate", ""}, {"agc", "off"}}));
  EXPECT_EQ(gui::effective_settings(station.common, station.receivers[0].settings), (Profile{{"agc", "off"}}));
}

}  // namespace
