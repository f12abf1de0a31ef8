#include "gui/config/receiver_card.h"

#include "base/signal_connection.h"
#include "base/text.h"
#include "gui/config/slider_widget.h"
#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"
#include "launcher/catalogue/radios.h"
#include "launcher/receiver_overlay.h"
#include "options/paths.h"
#include "receiver/meter_view.h"

namespace gui {
namespace {

constexpr const char* calibrate_later = "This version does not measure a receiver's frequency yet.";

/// What a dongle of this model can do on HF; empty for other receivers.
std::string class_text(launcher::Family family, const std::string& model) {
  if (family != launcher::Family::rtl_sdr) return {};
  const radios::Catalogue& catalogue = radios::catalogue(options::config_file("radios.conf"));
  return std::string(radios::hf_tooltip(radios::hf_class(catalogue, model)));
}

}  // namespace

ReceiverCard::ReceiverCard(const options::ReceiverProfile& receiver, launcher::Family family,
                           const ConfigActions& actions, const MeterSource& meters, ChangeGuard& guard)
    : serial_(receiver.serial),
      actions_(actions),
      meters_(meters),
      guard_(guard),
      card_(base::GObjectPtr<GtkWidget>::share(kit::card(base::valid_utf8(receiver.label())))),
      controls_(family, guard,
                [this](const CardControl& control, const std::string& value) { edited(control, value); }),
      estimate_(wrapped_label("", {"small"})) {
  g_object_set_data_full(G_OBJECT(widget()), "receiver-serial", g_strdup(serial_.c_str()), g_free);
  facts_.family = family;
  facts_.model = receiver.model;
  kit::add(widget(), strip_.widget());
  base::connect_forever(strip_.widget(), "map", [this] { show_meters(); });
  if (const std::string text = class_text(family, receiver.model); !text.empty())
    kit::add(widget(), wrapped_label(text, {"small"}));
  kit::add(widget(), controls_.widget());
  kit::add(widget(), calibration());
  kit::add(widget(), estimate_);
}

// Destroyed here, so that no signal of a widget reaches a card that has gone.
ReceiverCard::~ReceiverCard() {
  const ChangeGuard::Quiet quiet(guard_);
  gtk_widget_destroy(widget());
}

GtkWidget* ReceiverCard::calibration() {
  GtkWidget* row = kit::horizontal_box(10);
  GtkWidget* button = kit::button("Calibrate frequency…", [] {});
  kit::set_sensitive(button, false);
  kit::set_tooltip(button, calibrate_later);
  kit::add(row, button);
  kit::add(row, kit::line_label("Not yet calibrated.", {"small"}));
  return row;
}

// An engine takes values only: what is to be automatic again waits for Apply and Save.
void ReceiverCard::edited(const CardControl& control, const std::string& value) {
  pending_.erase(control.key);
  if (!goes_live(control, facts_)) return actions_.edit(serial_, control.key, value);
  if (!value.empty()) {
    pending_[control.key] = value;
    facts_.settings[control.key] = value;
    controls_.show(facts_);
  }
  actions_.edit_live(serial_, control.key, value);
}

// A live edit shows until the settings have it, or until there is no engine that could still take it.
void ReceiverCard::settle_pending() {
  if (!facts_.running) pending_.clear();
  std::erase_if(pending_,
                [&](const auto& edit) { return launcher::value_or(saved_, edit.first.c_str(), "") == edit.second; });
  facts_.settings = saved_;
  for (const auto& [key, value] : pending_)
    facts_.settings[key] = value;
}

void ReceiverCard::show(const StationView& view) {
  for (const options::ReceiverProfile& receiver : view.station.receivers)
    if (receiver.serial == serial_) saved_ = effective_settings(view.station.common, receiver.settings);
  facts_.running = view.running.contains(serial_);
  const auto planned = view.planned.find(serial_);
  const bool is_planned = planned != view.planned.end();
  facts_.centre = is_planned ? std::optional(planned->second.centre) : std::nullopt;
  facts_.direct_sampling = is_planned ? planned->second.direct_sampling : "";
  settle_pending();
  controls_.show(facts_);
  const known_cost::Estimate estimate = view.estimate.value_or(known_cost::Estimate{});
  kit::set_text(estimate_, estimate.line);
  kit::set_class(estimate_, "warning", estimate.warning);
  kit::set_visible(estimate_, !estimate.line.empty());
  show_meters();
}

// What nobody sees is not brought up to date until it comes to the screen.
void ReceiverCard::show_meters() {
  if (!strip_.mapped()) return;
  receiver::MeterSurroundings around;
  around.running = facts_.running;
  around.agc = agc_is_on(facts_);
  around.launch = meters_.launch(serial_);
  around.backend = launcher::family_text(facts_.family);
  around.direct_sampling = samples_directly(facts_);
  const receiver::MeterView view = receiver::meter_view(meters_.snapshot(serial_), around, meters_.now());
  strip_.show(view);
  controls_.show_gain_note(view.gain_note);
  auto* gain = dynamic_cast<SliderWidget*>(controls_.find("gain-reduction"));
  if (!gain) return;
  if (!facts_.running)
    gain->show_own();
  else if (around.agc)
    gain->follow(view.if_slider, view.if_text);
  else
    gain->show_own(view.if_text);
}

// What the operator has not touched is left alone: the engine's own settings hold what a plan made of Automatic.
void ReceiverCard::show_applied(const options::Profile& settings) {
  std::vector<std::string> refused;
  for (const auto& [key, value] : pending_)
    if (launcher::value_or(settings, key.c_str(), "") != value) refused.push_back(key);
  for (const std::string& key : refused) {
    pending_.erase(key);
    if (saved_.contains(key) && settings.contains(key)) saved_[key] = settings.at(key);
  }
  settle_pending();
  for (const std::string& key : refused)
    if (CardWidget* control = controls_.find(key)) control->put(shown_setting(control->control(), facts_.settings));
  controls_.show(facts_);
}

}  // namespace gui
