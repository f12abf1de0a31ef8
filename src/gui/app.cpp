#include "gui/app.h"

#include <algorithm>
#include <filesystem>
#include <unistd.h>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/text.h"
#include "gui/kit/dialogs.h"
#include "host/crash_notes.h"
#include "launcher/plan_words.h"
#include "launcher/planner.h"
#include "options/paths.h"
#include "results/psk_total.h"

namespace gui {
namespace {

constexpr int live_ft8_page = 6;
constexpr auto tick_period = std::chrono::seconds(4);
constexpr auto message_time = std::chrono::seconds(8);
constexpr auto counters_delay = std::chrono::milliseconds(250);

// The label of a ticked receiver that was free at the last discovery and that the sharing service has taken since.
std::optional<std::string> receiver_held_by_sharing(const options::Station& station,
                                                    const launcher::DeviceStatuses& statuses) {
  for (const auto& receiver : station.receivers) {
    const auto status = statuses.find(receiver.serial);
    if (receiver.enabled && status != statuses.end() && status->second == launcher::DeviceStatus::used_by_sharing)
      return receiver.label();
  }
  return std::nullopt;
}

}  // namespace

App::Setup App::Setup::of_user(const LauncherArguments& arguments) {
  Setup setup;
  setup.tuner = arguments.tuner.empty() ? engine_beside_launcher() : arguments.tuner;
  setup.config_path = arguments.config_path;
  setup.config_directory = options::config_directory();
  setup.state_directory = options::state_directory();
  setup.autostart_directory =
      options::base_directory("XDG_CONFIG_HOME", ".config", options::process_environment()) + "/autostart";
  return setup;
}

App::App(Setup setup)
    : setup_(std::move(setup)),
      choices_(setup_.config_directory + "/activity.ini"),
      loop_(g_main_loop_new(nullptr, FALSE)) {
  intake_ = std::make_unique<results::LineIntake>(activity_, gui_log_, setup_.clock, intake_sinks());
  session_ = std::make_unique<options::Session>(session_place(), session_hooks());
  supervisor_ = std::make_unique<receiver::Supervisor>(
      supervisor_hooks(), receiver::SessionFiles(setup_.config_directory, setup_.state_directory, ::getpid()),
      setup_.timing);
  supervisor_->use_engine(setup_.tuner);
  devices_ = std::make_unique<receiver::DeviceWatch>(device_hooks(), setup_.programs, setup_.device_timing);
  devices_->use_engine(setup_.tuner);
  apply_ = std::make_unique<ApplyFlow>(apply_surroundings());
  meters_ = std::make_unique<receiver::MeterPoller>(meter_hooks());
  start_when_opened_ = std::make_unique<receiver::StartWhenOpened>(start_when_opened_access(), setup_.timing);
}

App::~App() {
  alive_.end();
}

options::SessionPlace App::session_place() const {
  options::SessionPlace place;
  place.config_directory = setup_.config_directory;
  place.state_directory = setup_.state_directory;
  place.clock = setup_.clock;
  return place;
}

void App::open() {
  session_->load_receivers();
  if (setup_.config_path.empty())
    session_->restore();
  else
    open_profile(setup_.config_path);
  show_profile();
  report("Ready. Start reception explicitly; no receiver or reporting is started by opening this window.");
  if (const auto note = host::report_crash(setup_.state_directory)) warn(*note);
  count_psk_reports();
  devices_->begin_snapshots();
  devices_->refresh(receiver::DiscoveryCause::opened);
  if (choices_.get("Startup", "start-receivers", false)) start_when_opened_->arm();
  meters_->start(setup_.timing.meter_period);
  tick_ = base::Timer::repeating(tick_period, [this] {
    refresh_counters();
    count_psk_reports();
  });
}

void App::run() {
  build();
  open();
  g_main_loop_run(loop_.get());
}

void App::report(const std::string& text, const std::string& label) {
  intake_->take(text, false, label);
}

void App::warn(const std::string& text) {
  logs_page_->append(results::Pane::program, results::Tag::warning,
                     base::clock_time(setup_.clock()) + " " + base::valid_utf8(text));
}

void App::show_error(const std::string& text) {
  report("Error: " + text);
  kit::show_message(window_->window(), GTK_MESSAGE_ERROR, text);
}

void App::open_profile(const std::string& path) {
  try {
    session_->open(path);
  } catch (const std::exception& error) {
    return show_error(error.what());
  }
  show_profile();
}

// What the controls add to a sparse profile is no edit: the fingerprint is that of the profile as they hold it.
void App::show_profile() {
  settings_page_->show(session_->profile());
  options::Profile profile = session_->profile();
  settings_page_->read(profile);
  session_->set_profile(profile);
  session_->store_fingerprint();
  refresh();
}

void App::ask_for_profile() {
  kit::choose_file(window_->window(), {"Open receiver configuration", "Receiver configurations (*.conf)", "*.conf"},
                   [this](const std::string& path) { open_profile(path); });
}

void App::start_receivers() {
  if (const std::string refusal = start_refusal(); !refusal.empty()) return show_error(refusal);
  if (receiving() || busy()) return;
  plan_selection();
  if (plan_error_) return show_error(launcher::error_text(*plan_error_, session_->station(), devices_->statuses()));
  launch_session(selection_);
}

// The order is that of the files: an engine's profile stands before the session says that it runs, and what was written
// for an engine that never started goes again.
void App::launch_session(std::vector<launcher::ReceiverLaunch> planned) {
  try {
    auto prepared = supervisor_->prepare(planned);
    session_->save();
    base::make_private_directory(setup_.state_directory);
    gui_log_.open(setup_.state_directory + "/gui.log");
    supervisor_->begin_session();
    launches_ = std::move(planned);
    activity_.begin_session(launches_);
    meters_->begin_session();
    apply_->begin_session();
    dashboard_->rebuild();
    supervisor_->launch_all(std::move(prepared), launches_);
  } catch (const std::exception& error) {
    return undo_start(error.what());
  }
  stop_asked_ = false;
  session_->store_fingerprint();
  window_->show_page(live_ft8_page);
  refresh_counters();
  refresh();
}

void App::undo_start(const std::string& reason) {
  supervisor_->stop_receivers();
  stop_asked_ = receiving();
  if (!receiving()) gui_log_.close();
  show_error(reason);
  refresh();
}

void App::stop_receivers() {
  stop_asked_ = true;
  supervisor_->stop_receivers();
  refresh();
}

void App::session_ended() {
  stop_asked_ = false;
  session_->store_fingerprint();
  gui_log_.close();
  refresh_counters();
  if (!supervisor_->closing() && !supervisor_->restart_all() && !busy())
    devices_->refresh(receiver::DiscoveryCause::stopped);
}

void App::refresh_receivers() {
  devices_->refresh(receiver::DiscoveryCause::asked);
}

std::set<std::string> App::running_receivers() const {
  std::set<std::string> running;
  for (const auto& child : supervisor_->children())
    if (!child->temporary) running.insert(child->name);
  for (const auto& [name, restart] : supervisor_->pending_restarts())
    running.insert(name);
  return running;
}

std::string App::start_refusal() const {
  const auto station = session_->station();
  const bool selects = std::any_of(station.receivers.begin(), station.receivers.end(),
                                   [](const auto& receiver) { return receiver.enabled; });
  return devices_->failed() && selects ? "Refresh receivers successfully before starting reception." : "";
}

void App::show_passing(const std::string& text) {
  footer_->show_message(text);
  message_timer_ = base::Timer::repeating(message_time, [this] {
    if (busy() || supervisor_->closing()) return;
    message_timer_ = {};
    footer_->clear_message();
  });
}

void App::show_unreadable_note() {
  if (!devices_->ended_once()) return;
  if (const auto note = session_->take_unreadable_note())
    kit::show_message(window_->window(), GTK_MESSAGE_WARNING, *note);
}

void App::apply_and_save() {
  apply_->apply_and_save();
}

void App::settings_edited() {
  options::Profile profile = session_->profile();
  settings_page_->read(profile);
  session_->set_profile(profile);
  session_->request_autosave();
  refresh();
}

void App::change_station(const options::Station& station) {
  const options::Profile profile = options::render_station(station);
  if (profile == session_->profile()) return;
  session_->set_profile(profile);
  session_->request_autosave();
}

void App::plan_selection() {
  if (planned_profile_ == session_->profile() && planned_available_ == session_->available()) return;
  planned_profile_ = session_->profile();
  planned_available_ = session_->available();
  plan_error_.reset();
  selection_.clear();
  try {
    selection_ = launcher::plan(session_->station());
  } catch (const launcher::PlanError& error) {
    plan_error_ = error;
  } catch (const std::exception& error) {
    plan_error_.emplace(launcher::PlanCode::other, error.what());
  }
}

void App::show_receivers() {
  const options::Station station = session_->station();
  const launcher::BandChoices choices = launcher::band_choices(station);
  const std::set<std::string> running = running_receivers();
  auto planned = planned_captures(selection_);
  for (const auto& [name, capture] : planned_captures(launches_))
    if (running.contains(name)) planned[name] = capture;
  config_page_->show({.station = station,
                      .choices = choices,
                      .planned = std::move(planned),
                      .running = running,
                      .statuses = devices_->statuses(),
                      .estimate = known_estimate(station.common)});
}

const launcher::ReceiverLaunch* App::find_launch(const std::string& name) const {
  const auto found =
      std::find_if(launches_.begin(), launches_.end(), [&](const auto& each) { return each.name == name; });
  return found == launches_.end() ? nullptr : &*found;
}

std::vector<receiver::MeterTarget> App::meter_targets() const {
  std::vector<receiver::MeterTarget> targets;
  if (supervisor_->closing()) return targets;
  for (const auto& child : supervisor_->children()) {
    const launcher::ReceiverLaunch* launch = find_launch(child->name);
    if (child->temporary || child->exit_seen || child->stop_requested || !launch || launch->control_path.empty())
      continue;
    targets.push_back({child->name, launch->control_path});
  }
  return targets;
}

// The readings of an engine that has gone go with it.
void App::forget_readings() {
  const auto targets = meter_targets();
  for (const auto& launch : launches_)
    if (std::none_of(targets.begin(), targets.end(), [&](const auto& target) { return target.name == launch.name; }))
      meters_->forget(launch.name);
}

FooterFacts App::footer_facts() const {
  FooterFacts facts;
  facts.discovery_failed = devices_->failed();
  facts.any_receiver_usable = !facts.discovery_failed;
  // Whether a receiver is there is not known after a discovery that failed.
  const bool only_unknown =
      facts.discovery_failed && plan_error_ && plan_error_->code == launcher::PlanCode::absent_receiver;
  if (plan_error_ && !only_unknown)
    facts.plan_error = launcher::error_text(*plan_error_, session_->station(), devices_->statuses());
  facts.absent_receiver = receiver_held_by_sharing(session_->station(), devices_->statuses());
  facts.busy = busy();
  facts.planned_receivers = static_cast<int>(selection_.size());
  facts.receiving = receiving();
  facts.stopping = stop_asked_;
  facts.settings_differ = receiving() ? apply_->differs_from_running() : session_->differs();
  facts.applying = apply_->busy();
  return facts;
}

void App::refresh() {
  if (refreshing_) return;
  refreshing_ = true;
  plan_selection();
  footer_->show(footer_state(footer_facts()));
  footer_->show_profile(session_->config_path());
  settings_page_->set_receiving(receiving());
  forget_readings();
  modes_tab_->show();
  show_receivers();
  refresh_bar_->show(devices_->checking(), !busy(), devices_->status_text());
  refreshing_ = false;
}

void App::refresh_counters_soon() {
  if (!counters_timer_.armed()) counters_timer_ = base::Timer::once(counters_delay, [this] { refresh_counters(); });
}

void App::refresh_counters() {
  dashboard_->refresh();
  window_->show_totals(activity_.totals_text());
}

void App::count_psk_reports() {
  if (supervisor_->closing() || !activity_.begin_psk_total()) return;
  base::run_in_background(
      alive_.watch(),
      [path = setup_.state_directory + "/psk-reports.sqlite3", now = setup_.clock()] {
        return results::psk_reports_total(path, now);
      },
      [this](const base::Outcome<std::int64_t>& total) {
        activity_.finish_psk_total(total.value);
        window_->show_totals(activity_.totals_text());
      });
}

void App::close_window() {
  if (supervisor_->closing())
    return footer_->show_message("Stopping the receivers. The window closes when they have stopped.");
  if (busy()) return report("Wait for the current device or service operation to finish before closing.");
  if (!receiving()) return supervisor_->close();
  kit::ask(
      window_->window(),
      "Stop all receivers started by this launcher and close?\n\nAn enabled system service continues independently "
      "of this window.",
      [this] { close_and_stop(); });
}

void App::close_and_stop() {
  footer_->show_message("Stopping the receivers. The window closes when they have stopped.");
  gtk_widget_set_sensitive(GTK_WIDGET(window_->window()), FALSE);
  supervisor_->close();
}

}  // namespace gui
