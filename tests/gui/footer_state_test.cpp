#include "gui/footer_state.h"

#include <gtest/gtest.h>

namespace gui {
namespace {

using Change = void (*)(FooterFacts&);

TEST(FooterState, TheFirstFittingStateIsSaid) {
  const struct {
    Change change;
    const char* text;
    bool start;
  } cases[] = {
      {[](FooterFacts&) {}, "Ready. Selected bands fit 2 receiver(s).", true},
      {[](FooterFacts& f) { f.plan_error = "Tick at least one band."; }, "Tick at least one band.", false},
      {[](FooterFacts& f) { f.absent_receiver = "RSPdx · A1"; },
       "Receiver RSPdx · A1 is busy or missing. Refresh or change selection before local Start.", false},
      {[](FooterFacts& f) {
         f.discovery_failed = true;
         f.any_receiver_usable = false;
       },
       "Device discovery failed. Last device list retained; retry Refresh receivers.", false},
      {[](FooterFacts& f) { f.discovery_failed = true; }, "Ready. Selected bands fit 2 receiver(s).", true},
      {[](FooterFacts& f) { f.receiving = true; },
       "Receiving. RF/IF gain, AGC, antenna, correction and audio tuning apply live.", false},
      {[](FooterFacts& f) {
         f.receiving = true;
         f.plan_error = "Tick at least one band.";
       },
       "Tick at least one band.", false},
      {[](FooterFacts& f) { f.busy = true; }, "Ready. Selected bands fit 2 receiver(s).", false},
      {[](FooterFacts& f) { f.service_busy = true; }, "Ready. Selected bands fit 2 receiver(s).", false},
      {[](FooterFacts& f) { f.audio_change = true; }, "Ready. Selected bands fit 2 receiver(s).", false},
  };
  for (const auto& example : cases) {
    FooterFacts facts;
    facts.planned_receivers = 2;
    example.change(facts);
    const auto state = footer_state(facts);
    EXPECT_EQ(state.text, example.text);
    EXPECT_EQ(state.start_sensitive, example.start) << example.text;
    EXPECT_EQ(state.start_tooltip, example.text);
  }
}

TEST(FooterState, TheBootServiceTakesTheStartButton) {
  FooterFacts facts;
  facts.service_active = true;
  const auto state = footer_state(facts);
  EXPECT_FALSE(state.start_sensitive);
  EXPECT_EQ(state.start_tooltip,
            "The boot service is running the receivers. Stop it on the Service tab to start here.");
}

TEST(FooterState, StopIsForReceiversThatHaveNotBeenAsked) {
  const struct {
    Change change;
    bool stop;
  } cases[] = {
      {[](FooterFacts&) {}, false},
      {[](FooterFacts& f) { f.receiving = true; }, true},
      {[](FooterFacts& f) { f.receiving = f.busy = true; }, false},
      {[](FooterFacts& f) { f.receiving = f.stopping = true; }, false},
  };
  for (const auto& example : cases) {
    FooterFacts facts;
    example.change(facts);
    EXPECT_EQ(footer_state(facts).stop_sensitive, example.stop);
  }
}

TEST(FooterState, ApplyAndSaveSaysWhatItWouldDo) {
  const struct {
    Change change;
    bool primary;
    const char* beginning;
  } cases[] = {
      {[](FooterFacts&) {}, false, "The settings shown are saved and in use."},
      {[](FooterFacts& f) { f.settings_differ = true; }, true, "Save the changed settings. The receivers use them"},
      {[](FooterFacts& f) { f.settings_differ = f.receiving = true; }, true,
       "Apply the changed settings to the running"},
      {[](FooterFacts& f) { f.settings_differ = f.service_active = true; }, true,
       "Save the changed settings and re-enable the boot service"},
  };
  for (const auto& example : cases) {
    FooterFacts facts;
    example.change(facts);
    const auto state = footer_state(facts);
    EXPECT_EQ(state.apply_primary, example.primary);
    EXPECT_TRUE(state.apply_tooltip.starts_with(example.beginning)) << state.apply_tooltip;
    EXPECT_TRUE(state.apply_sensitive);
  }
}

}  // namespace
}  // namespace gui
