#include "gui/apply/small_launcher.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

#include <glib.h>

#include "base/numbers.h"
#include "gui/config/config_view.h"
#include "launcher/planner.h"

namespace gui::testing_apply {
namespace {

using std::chrono::milliseconds;
constexpr milliseconds edit_delay(1), autosave_delay(1);

receiver::Timing quick_timing() {
  receiver::Timing timing;
  timing.back_off = {milliseconds(4), milliseconds(8), milliseconds(8), milliseconds(8), milliseconds(8)};
  return timing;
}

}  // namespace

options::Station test_station(bool with_dongle, const std::string& state_directory) {
  options::Station station;
  station.common = {{"mode", "decoder"},
                    {"modes", "FT8"},
                    {"bands", with_dongle ? "40,20,10" : "40,20"},
                    {"callsign", "K1ABC"},
                    {"all-txt", state_directory + "/ALL.TXT"}};
  station.assignments = {{"20", rx}, {"40", dx}};
  if (with_dongle) {
    station.receivers.push_back({dongle, "RTL-SDR Blog V4", {{"backend", "rtl-sdr"}}, true, true});
    station.assignments["10"] = dongle;
  }
  station.receivers.push_back({rx, "RX-888 MKII", {{"backend", "rx888"}}, true, true});
  station.receivers.push_back({dx, "RSPdx", {{"lna-state", "1"}}, true, true});
  return station;
}

SmallLauncher::SmallLauncher(const options::Station& station) {
  std::filesystem::create_directory(config_);
  options::SessionPlace place;
  place.config_directory = config_;
  place.state_directory = directory_ / "state";
  place.autosave_delay = autosave_delay;
  session_ = std::make_unique<options::Session>(place, session_hooks());
  session_->set_profile(options::render_station(station));
  session_->take_inventory(station);
  session_->save();
  supervisor_ = std::make_unique<receiver::Supervisor>(
      supervisor_hooks(), receiver::SessionFiles(config_, directory_ / "state", 77), quick_timing());
  supervisor_->use_engine(TARNWICK_LIGHT_ENGINE);
  flow_ = std::make_unique<ApplyFlow>(surroundings());
  tokens_at_rest_ = token_.use_count();
}

SmallLauncher::~SmallLauncher() {
  engines.end_all();
  if (supervisor_->receiving()) supervisor_->stop_receivers();
  const gint64 end = g_get_monotonic_time() + 20L * G_USEC_PER_SEC;
  while ((supervisor_->receiving() || jobs() > 0) && g_get_monotonic_time() < end) {
    engines.end_all();
    turn();
  }
}

// --- The launcher's operations ---

void SmallLauncher::start() {
  start_failed = false;
  if (supervisor_->receiving() || flow_->busy()) return;
  try {
    auto planned = launcher::plan(session_->station());
    auto prepared = supervisor_->prepare(planned);
    session_->save();
    supervisor_->begin_session();
    launches_ = std::move(planned);
    flow_->begin_session();
    supervisor_->launch_all(std::move(prepared), launches_);
  } catch (const std::exception& error) {
    supervisor_->stop_receivers();
    errors.emplace_back(error.what());
    start_failed = true;
    return;
  }
  session_->store_fingerprint();
}

void SmallLauncher::edit(const std::string& key, const std::string& value) {
  options::Profile profile = session_->profile();
  profile[key] = value;
  session_->set_profile(profile);
  session_->request_autosave();
}

void SmallLauncher::change(const options::Station& station) {
  const options::Profile profile = options::render_station(station);
  if (profile == session_->profile()) return;
  session_->set_profile(profile);
  session_->request_autosave();
}

void SmallLauncher::end_flow() {
  const long out = jobs();
  flow_.reset();
  tokens_at_rest_ = token_.use_count() - out;
  flow_ended_ = true;
}

bool SmallLauncher::kill(const std::string& name, int signal) {
  for (const auto& child : supervisor_->children()) {
    const char* const id = g_subprocess_get_identifier(child->process.get());
    if (child->name != name || id == nullptr || !up_.contains(name)) continue;
    engines.gone(name);
    g_subprocess_send_signal(child->process.get(), signal);
    return true;
  }
  return false;
}

bool SmallLauncher::turn() {
  if (g_main_context_iteration(nullptr, FALSE)) return true;
  g_usleep(100);
  return false;
}

void SmallLauncher::let_saving_fail(bool fails) {
  if (fails == saving_fails_) return;
  const std::string file = config_ + "/session.conf", kept = config_ + "/kept.conf";
  if (fails) {
    std::filesystem::rename(file, kept);
    std::filesystem::create_directories(file + "/in-the-way");
  } else {
    std::filesystem::remove_all(file);
    std::filesystem::rename(kept, file);
  }
  saving_fails_ = fails;
}

void SmallLauncher::let_engine_be_missing(bool missing) {
  supervisor_->use_engine(missing ? directory_ / "nowhere" : TARNWICK_LIGHT_ENGINE);
}

// --- What there is to see ---

bool SmallLauncher::is_running(const std::string& name) const {
  const auto& children = supervisor_->children();
  return std::any_of(children.begin(), children.end(), [&](const auto& child) {
    return child->name == name && !child->exit_seen && !child->stop_requested;
  });
}

bool SmallLauncher::at_rest() const {
  const auto& children = supervisor_->children();
  return supervisor_->pending_restarts().empty() && supervisor_->restart_names().empty() &&
         !supervisor_->restart_all() && std::all_of(children.begin(), children.end(), [&](const auto& child) {
           return is_running(child->name) && !child->output_ended && engines.engine(child->name);
         });
}

const launcher::ReceiverLaunch* SmallLauncher::find_launch(const std::string& name) const {
  for (const auto& launch : launches_)
    if (launch.name == name) return &launch;
  return nullptr;
}

std::string SmallLauncher::conf_of(const std::string& name) const {
  for (const auto& child : supervisor_->children())
    if (child->name == name) return child->conf.path();
  return {};
}

std::vector<std::string> SmallLauncher::profiles() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(config_))
    if (const std::string name = entry.path().filename(); name.starts_with("session-")) names.push_back(name);
  return names;
}

bool SmallLauncher::said(const std::string& text) const {
  return std::find(reports.begin(), reports.end(), text) != reports.end();
}

std::string SmallLauncher::name_of(const std::string& label) const {
  for (const auto& launch : launches_)
    if (launch.label() == label) return launch.name;
  return {};
}

// --- Wiring ---

void SmallLauncher::take_report(const std::string& text, const std::string& label) {
  reports.push_back(text);
  const std::string name = name_of(label);
  if (text == "Starting receiver using the current settings.") {
    ++starts[name];
    printed_.erase(name);
    up_.erase(name);
  }
  if (text == "Receiver stopped." || text.starts_with("Receiver exited with an error.")) engines.gone(name);
}

void SmallLauncher::take_line(std::string_view line, const std::string& label) {
  const std::string name = name_of(label);
  if (line != "up") {
    printed_[name] += std::string(line) + "\n";
    return;
  }
  up_.insert(name);
  const auto* launch = find_launch(name);
  if (is_running(name))
    engines.started(name, launch->control_path, options::parse_config_text(printed_[name], name, false));
}

void SmallLauncher::write_profile(const std::string& path, const options::Profile& profile) {
  const auto& serial = std::find_if(launches_.begin(), launches_.end(), [&](const auto& launch) {
    return launch.profile.at("audio-control") == profile.at("audio-control");
  });
  const std::string name = serial == launches_.end() ? std::string() : serial->name;
  if (unwritable.contains(name)) {
    stale.insert(name);
    throw std::runtime_error("No space left on device");
  }
  options::write_config(path, profile);
  stale.erase(name);
}

receiver::SupervisorHooks SmallLauncher::supervisor_hooks() {
  receiver::SupervisorHooks hooks;
  hooks.report = [this](const std::string& text, const std::string& label) { take_report(text, label); };
  hooks.line = [this](std::string_view line, bool, const std::string& label) { take_line(line, label); };
  hooks.write_profile = [this](const std::string& path, const options::Profile& profile) {
    write_profile(path, profile);
  };
  hooks.save_session = [this] {
    if (flow_) flow_->keep_unsent();
    session_->save();
  };
  hooks.session_ended = [this] { session_->store_fingerprint(); };
  hooks.find_launch = [this](const std::string& name) { return find_launch(name); };
  hooks.restarted = [this](const std::string& name, const std::string& conf) {
    if (flow_) flow_->engine_restarted(name, conf);
  };
  hooks.changed = [] {};
  hooks.start_again = [this] { start(); };
  hooks.quit = [this] { ++quits; };
  return hooks;
}

ApplySurroundings SmallLauncher::surroundings() {
  const auto transport = [this, token = token_](const std::string& path, const std::string& request, int) {
    return engines.request(path, request);
  };
  const auto alive = [this] { calls_after_end += flow_ended_ ? 1 : 0; };
  ApplySurroundings surroundings{*session_, *supervisor_, launches_, transport};
  surroundings.edit_delay = edit_delay;
  surroundings.report = [this, alive](const std::string& text, const std::string& label) {
    alive();
    take_report(text, label);
  };
  surroundings.show_error = [this, alive](const std::string& text) {
    alive();
    errors.push_back(text);
  };
  surroundings.show_status = [this, alive](const std::string& text) {
    alive();
    status = text;
  };
  surroundings.refresh = alive;
  surroundings.launches_changed = alive;
  surroundings.set_setting = [this, alive](const std::string& serial, const std::string& key,
                                           const std::string& value) {
    alive();
    change(with_setting(session_->station(), serial, key, value));
  };
  surroundings.show_applied = [this, alive](const std::string& name, const receiver::Settings& values) {
    alive();
    shown[name] = values;
  };
  surroundings.other_operation = [] { return false; };
  return surroundings;
}

options::SessionHooks SmallLauncher::session_hooks() {
  options::SessionHooks hooks;
  hooks.report = [this](const std::string& text) { reports.push_back(text); };
  hooks.busy = [this] { return flow_ && flow_->busy(); };
  hooks.closing = [this] { return supervisor_->closing(); };
  return hooks;
}

}  // namespace gui::testing_apply
