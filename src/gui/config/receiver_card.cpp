#include "gui/config/receiver_card.h"

#include "base/text.h"
#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"
#include "launcher/catalogue/radios.h"
#include "launcher/receiver_overlay.h"
#include "options/paths.h"

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
                           const ConfigActions& actions, ChangeGuard& guard)
    : serial_(receiver.serial),
      actions_(actions),
      guard_(guard),
      card_(base::GObjectPtr<GtkWidget>::share(kit::card(base::valid_utf8(receiver.label())))),
      controls_(family, guard,
                [this](const CardControl& control, const std::string& value) { edited(control, value); }),
      estimate_(wrapped_label("", {"small"})) {
  g_object_set_data_full(G_OBJECT(widget()), "receiver-serial", g_strdup(serial_.c_str()), g_free);
  facts_.family = family;
  facts_.model = receiver.model;
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

void ReceiverCard::edited(const CardControl& control, const std::string& value) {
  if (!facts_.running || !control.live) return actions_.edit(serial_, control.key, value);
  pending_[control.key] = value;
  facts_.settings[control.key] = value;
  show_controls();
  actions_.edit_live(serial_, control.key, value);
}

// A live edit shows until the settings have it, or until there is no engine that could still take it.
void ReceiverCard::settle_pending(const options::Profile& settings) {
  if (!facts_.running) return pending_.clear();
  std::erase_if(pending_,
                [&](const auto& edit) { return launcher::value_or(settings, edit.first.c_str(), "") == edit.second; });
}

void ReceiverCard::show(const StationView& view) {
  for (const options::ReceiverProfile& receiver : view.station.receivers)
    if (receiver.serial == serial_) facts_.settings = effective_settings(view.station.common, receiver.settings);
  facts_.running = view.running.contains(serial_);
  const auto planned = view.planned.find(serial_);
  const bool is_planned = planned != view.planned.end();
  facts_.centre = is_planned ? std::optional(planned->second.centre) : std::nullopt;
  facts_.direct_sampling = is_planned ? planned->second.direct_sampling : "";
  settle_pending(facts_.settings);
  for (const auto& [key, value] : pending_)
    facts_.settings[key] = value;
  show_controls();
  kit::set_text(estimate_, view.estimate);
  kit::set_class(estimate_, "warning", view.estimate_warns);
  kit::set_visible(estimate_, !view.estimate.empty());
}

void ReceiverCard::show_controls() {
  controls_.show(facts_);
}

void ReceiverCard::show_applied(const options::Profile& settings) {
  for (const auto& [key, value] : settings) {
    pending_.erase(key);
    facts_.settings[key] = value;
    if (CardWidget* control = controls_.find(key)) control->put(shown_setting(control->control(), facts_.settings));
  }
  show_controls();
}

}  // namespace gui
