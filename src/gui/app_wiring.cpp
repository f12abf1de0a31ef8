// Who tells whom: every connection between services, models and pages.
#include "gui/app.h"
#include "gui/kit/dialogs.h"
#include "options/profile.h"
#include "receiver/control_client.h"

namespace gui {

receiver::SupervisorHooks App::supervisor_hooks() {
  receiver::SupervisorHooks hooks;
  hooks.report = [this](const std::string& text, const std::string& label) { report(text, label); };
  hooks.line = [this](std::string_view line, bool counts, const std::string& label) {
    intake_->take(line, counts, label);
    devices_->hear(line);
  };
  hooks.write_profile = [](const std::string& path, const options::Profile& profile) {
    options::write_config(path, profile);
  };
  hooks.save_session = [this] {
    apply_->keep_unsent();
    session_->save();
  };
  hooks.session_ended = [this] { session_ended(); };
  hooks.find_launch = [this](const std::string& name) { return find_launch(name); };
  hooks.restarted = [this](const std::string& name, const std::string& conf) { apply_->engine_restarted(name, conf); };
  hooks.changed = [this] { refresh(); };
  hooks.start_again = [this] {
    if (busy()) return report("Busy with another receiver operation. Press Start receivers when it is over.");
    start_receivers();
  };
  hooks.quit = [this] {
    closed_ = true;
    g_main_loop_quit(loop_.get());
  };
  return hooks;
}

receiver::DeviceWatchHooks App::device_hooks() {
  receiver::DeviceWatchHooks hooks;
  hooks.station = [this] { return session_->station(); };
  hooks.saved = [this]() -> const options::ReceiverStore& { return session_->receivers(); };
  hooks.running = [this] { return running_receivers(); };
  hooks.take = [this](const options::Station& station) { session_->take_inventory(station); };
  hooks.report = [this](const std::string& text) { report(text); };
  hooks.occupied = [this] { return apply_->busy() || supervisor_->restart_all(); };
  hooks.changed = [this] {
    refresh();
    show_unreadable_note();
  };
  hooks.ask = [this](const std::string& question, std::function<void()> yes, std::function<void()> no) {
    kit::ask(window_->window(), question, std::move(yes), std::move(no));
  };
  return hooks;
}

results::IntakeSinks App::intake_sinks() {
  results::IntakeSinks sinks;
  sinks.pane = [this](results::Pane pane, results::Tag tag, std::string_view text) {
    logs_page_->append(pane, tag, text);
  };
  sinks.new_channel = [this] { dashboard_->rebuild(); };
  sinks.refresh = [this] { refresh_counters_soon(); };
  return sinks;
}

receiver::StartWhenOpened::Launcher App::start_when_opened_access() {
  receiver::StartWhenOpened::Launcher access;
  access.settled = [this] { return supervisor_->closing() || receiving(); };
  access.occupied = [this] { return refreshing_ || busy(); };
  access.can_start = [this] { return footer_->start_sensitive(); };
  access.status = [this] { return footer_->status(); };
  access.report = [this](const std::string& text) { report(text); };
  access.start = [this] { start_receivers(); };
  return access;
}

Footer::Actions App::footer_actions() {
  return {[this] { start_receivers(); }, [this] { stop_receivers(); }, [this] { ask_for_profile(); },
          [this] { apply_and_save(); }};
}

modes_gui::ModesSurroundings App::modes_surroundings() {
  constexpr int sdr_config_tab = 1, audio_receivers_tab = 3;
  modes_gui::ModesSurroundings surroundings;
  surroundings.station = [this] { return session_->station(); };
  surroundings.receivers = [this] { return modes_gui::ReceiverStates{running_receivers(), devices_->statuses()}; };
  surroundings.change = [this](const options::Station& station) { change_station(station); };
  surroundings.open_sdr_config = [this] { window_->show_page(sdr_config_tab); };
  surroundings.open_audio_receivers = [this] { window_->show_page(audio_receivers_tab); };
  return surroundings;
}

SettingsSurroundings App::settings_surroundings() {
  SettingsSurroundings surroundings{choices_, setup_.state_directory, setup_.autostart_directory};
  surroundings.edited = [this](const std::string&) { settings_edited(); };
  surroundings.show_error = [this](const std::string& text) { show_error(text); };
  return surroundings;
}

ApplySurroundings App::apply_surroundings() {
  ApplySurroundings surroundings{*session_, *supervisor_, launches_, receiver::control_request};
  surroundings.report = [this](const std::string& text, const std::string& label) { report(text, label); };
  surroundings.show_error = [this](const std::string& text) { show_error(text); };
  surroundings.show_status = [this](const std::string& text) { show_passing(text); };
  surroundings.refresh = [this] { refresh(); };
  surroundings.launches_changed = [this] {
    activity_.change_plan(launches_);
    dashboard_->rebuild();
  };
  surroundings.set_setting = [this](const std::string& serial, const std::string& key, const std::string& value) {
    change_station(with_setting(session_->station(), serial, key, value));
  };
  surroundings.show_applied = [this](const std::string& name, const receiver::Settings& values) {
    config_page_->show_applied(name, values);
  };
  surroundings.other_operation = [this] { return devices_->busy(); };
  surroundings.start_refusal = [this] { return start_refusal(); };
  return surroundings;
}

ConfigActions App::config_actions() {
  ConfigActions actions;
  actions.edit = [this](const std::string& serial, const std::string& key, const std::string& value) {
    change_station(with_setting(session_->station(), serial, key, value));
  };
  actions.edit_live = [this](const std::string& serial, const std::string& key, const std::string& value) {
    apply_->edit_live(serial, key, value);
  };
  actions.edit_common = [this](const std::string& key, const std::string& value) {
    change_station(with_common(session_->station(), key, value));
  };
  const auto box = [this](bool options::ReceiverProfile::*ticked) {
    return [this, ticked](const std::string& serial, bool on) {
      change_station(with_box(session_->station(), serial, ticked, on));
    };
  };
  actions.set_enabled = box(&options::ReceiverProfile::enabled);
  actions.set_spot = box(&options::ReceiverProfile::spot);
  actions.set_share = box(&options::ReceiverProfile::share);
  actions.remove = [this](const std::string& serial) { session_->remove_receiver(serial); };
  return actions;
}

MeterSource App::meter_source() {
  MeterSource source;
  source.snapshot = [this](const std::string& serial) { return meters_->snapshot(serial); };
  source.launch = [this](const std::string& serial) { return find_launch(serial); };
  source.now = [] { return g_get_monotonic_time(); };
  return source;
}

receiver::MeterHooks App::meter_hooks() {
  receiver::MeterHooks hooks;
  hooks.targets = [this] { return meter_targets(); };
  hooks.shown = [this] { return config_page_->meters_shown(); };
  hooks.changed = [this](const std::string& name) { config_page_->show_meters(name); };
  hooks.now = [] { return g_get_monotonic_time(); };
  return hooks;
}

options::SessionHooks App::session_hooks() {
  options::SessionHooks hooks;
  hooks.report = [this](const std::string& text) { report(text); };
  hooks.changed = [this] { refresh(); };
  hooks.busy = [this] { return busy(); };
  hooks.closing = [this] { return supervisor_->closing(); };
  return hooks;
}

}  // namespace gui
