#include "gui/footer_state.h"

#include <fmt/format.h>

namespace gui {
namespace {

std::string state_text(const FooterFacts& facts) {
  if (facts.plan_error) return *facts.plan_error;
  if (facts.absent_receiver && !facts.receiving)
    return fmt::format("Receiver {} is busy or missing. Refresh or change selection before local Start.",
                       *facts.absent_receiver);
  if (facts.discovery_failed && !facts.any_receiver_usable)
    return "Device discovery failed. Last device list retained; retry Refresh receivers.";
  if (!facts.receiving) return fmt::format("Ready. Selected bands fit {} receiver(s).", facts.planned_receivers);
  return "Receiving. RF/IF gain, AGC, antenna, correction and audio tuning apply live.";
}

std::string apply_tooltip(const FooterFacts& facts) {
  if (!facts.settings_differ) return "The settings shown are saved and in use.";
  if (facts.receiving)
    return "Apply the changed settings to the running receivers and save them. Band, frequency and mode changes retune "
           "them, some settings change live, and other changes restart only the receivers they affect.";
  if (facts.service_active)
    return "Save the changed settings and re-enable the boot service with them (asks for authorization).";
  return "Save the changed settings. The receivers use them when they start.";
}

}  // namespace

FooterState footer_state(const FooterFacts& facts) {
  const bool receivers_unusable = facts.absent_receiver || (facts.discovery_failed && !facts.any_receiver_usable);
  const bool plan_valid = !facts.plan_error && !receivers_unusable;
  FooterState state;
  state.text = state_text(facts);
  state.text_is_error = facts.plan_error.has_value();
  state.start_sensitive = plan_valid && !facts.receiving && !facts.busy && !facts.service_busy &&
                          !facts.service_active && !facts.audio_change;
  state.start_tooltip = facts.service_active
                            ? "The boot service is running the receivers. Stop it on the Service tab to start here."
                            : state.text;
  state.stop_sensitive = facts.receiving && !facts.busy && !facts.stopping;
  state.apply_sensitive = !facts.busy && !facts.audio_change && !facts.frequency_check;
  state.apply_primary = facts.settings_differ;
  state.apply_label = facts.applying ? "Applying…" : "Apply and Save";
  state.apply_tooltip = apply_tooltip(facts);
  return state;
}

}  // namespace gui
