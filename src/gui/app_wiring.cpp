// Who tells whom: every connection between services, models and pages.
#include "gui/app.h"
#include "gui/kit/dialogs.h"
#include "options/profile.h"

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
  hooks.save_session = [this] { session_->save(); };
  hooks.session_ended = [this] { session_ended(); };
  hooks.find_launch = [this](const std::string& name) -> const launcher::ReceiverLaunch* {
    for (const auto& launch : launches_)
      if (launch.name == name) return &launch;
    return nullptr;
  };
  hooks.changed = [this] { refresh(); };
  hooks.start_again = [this] { start_receivers(); };
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

SettingsSurroundings App::settings_surroundings() {
  SettingsSurroundings surroundings{choices_, setup_.state_directory, setup_.autostart_directory};
  surroundings.edited = [this](const std::string&) { settings_edited(); };
  surroundings.show_error = [this](const std::string& text) { show_error(text); };
  return surroundings;
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
