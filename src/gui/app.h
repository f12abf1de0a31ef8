// The launcher as one object: owns models, services, pages and timers, and connects them.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/background.h"
#include "base/key_file.h"
#include "base/signal_connection.h"
#include "base/time_text.h"
#include "base/timer.h"
#include "gui/apply_flow.h"
#include "gui/config/config_page.h"
#include "gui/footer.h"
#include "gui/kit/ui_scale.h"
#include "gui/launcher_arguments.h"
#include "gui/live/dashboard.h"
#include "gui/main_window.h"
#include "gui/modes/modes_tab.h"
#include "gui/pages/logs_page.h"
#include "gui/refresh_bar.h"
#include "gui/settings/settings_page.h"
#include "launcher/plan_error.h"
#include "launcher/receiver_launch.h"
#include "options/session.h"
#include "receiver/device_watch.h"
#include "receiver/meter_poller.h"
#include "receiver/start_when_opened.h"
#include "receiver/supervisor.h"
#include "results/activity_model.h"
#include "results/gui_log.h"
#include "results/line_intake.h"

namespace gui {

/// Main thread only. Its methods are the operations that the controls, the timers and the pages call.
class App {
 public:
  using Child = receiver::Child;

  /// What differs between the operator's launcher and a test's.
  struct Setup {
    std::string tuner;        ///< the receive engine executable
    std::string config_path;  ///< the profile to open; empty restores the last session
    std::string config_directory;
    std::string state_directory;
    std::string autostart_directory;
    receiver::Timing timing;
    receiver::OutsidePrograms programs;
    receiver::DeviceTiming device_timing;
    base::Clock clock = base::system_clock();

    static Setup of_user(const LauncherArguments& arguments);
  };

  explicit App(Setup setup);
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  /// Theme, scale, widgets and tabs, and the window on the screen.
  void build();
  /// After build(): settings, words of welcome and background work.
  void open();
  /// The main loop, until the window has closed.
  void run();

  void start_receivers();
  void stop_receivers();
  /// Looks for attached receivers; refused while another receiver operation is in flight.
  void refresh_receivers();
  void apply_and_save();
  /// Reads a profile and makes it the launcher's own; a failure is shown and changes nothing.
  void open_profile(const std::string& path);
  void ask_for_profile();
  void close_window();

  /// Recomputes everything that the controls show from the current settings and state.
  void refresh();
  /// The one way to tell the operator something; the label is a receiver's, empty for the launcher.
  void report(const std::string& text, const std::string& label = {});
  /// A line of the launcher's own in the program pane, in the colour of warnings whatever its words.
  void warn(const std::string& text);
  /// Reports a failure and shows it in a dialog.
  void show_error(const std::string& text);

  [[nodiscard]] bool receiving() const { return supervisor_->receiving(); }
  /// One receiver operation is in flight; such operations exclude one another.
  [[nodiscard]] bool busy() const { return devices_->busy() || apply_->busy(); }
  /// The window has closed: run() returns, or has returned.
  [[nodiscard]] bool closed() const { return closed_; }
  [[nodiscard]] MainWindow& window() { return *window_; }
  [[nodiscard]] const results::ActivityModel& activity() const { return activity_; }

 private:
  // app_build.cpp
  void build_pages();
  void append_pages();
  void page_shown(int index);

  // app_wiring.cpp
  receiver::SupervisorHooks supervisor_hooks();
  receiver::DeviceWatchHooks device_hooks();
  results::IntakeSinks intake_sinks();
  receiver::StartWhenOpened::Launcher start_when_opened_access();
  Footer::Actions footer_actions();
  options::SessionHooks session_hooks();
  modes_gui::ModesSurroundings modes_surroundings();
  SettingsSurroundings settings_surroundings();
  ApplySurroundings apply_surroundings();
  ConfigActions config_actions();
  MeterSource meter_source();
  receiver::MeterHooks meter_hooks();
  [[nodiscard]] options::SessionPlace session_place() const;

  void show_profile();
  void settings_edited();
  void change_station(const options::Station& station);
  [[nodiscard]] const launcher::ReceiverLaunch* find_launch(const std::string& name) const;
  [[nodiscard]] std::vector<receiver::MeterTarget> meter_targets() const;
  [[nodiscard]] std::set<std::string> running_receivers() const;
  /// Why nothing could be started now, whatever is selected; empty when it could.
  [[nodiscard]] std::string start_refusal() const;
  /// A message beside the buttons, for some seconds, or for as long as what it tells of is under way.
  void show_passing(const std::string& text);
  void show_unreadable_note();
  void plan_selection();
  void show_receivers();
  void forget_readings();
  [[nodiscard]] FooterFacts footer_facts() const;
  void launch_session(std::vector<launcher::ReceiverLaunch> planned);
  void undo_start(const std::string& reason);
  void session_ended();
  void refresh_counters_soon();
  void refresh_counters();
  void count_psk_reports();
  void close_and_stop();

  Setup setup_;
  base::Liveness alive_;

  // Models.
  base::KeyFile choices_;
  results::ActivityModel activity_;
  results::GuiLog gui_log_;
  std::unique_ptr<results::LineIntake> intake_;
  std::vector<launcher::ReceiverLaunch> launches_;   ///< the plan of the running session
  std::vector<launcher::ReceiverLaunch> selection_;  ///< what Start would start
  std::optional<launcher::PlanError> plan_error_;
  std::optional<options::Profile> planned_profile_;  ///< what selection_ was made from
  std::set<std::string> planned_available_;          ///< the same

  // Services.
  std::unique_ptr<options::Session> session_;
  std::unique_ptr<receiver::Supervisor> supervisor_;
  std::unique_ptr<receiver::DeviceWatch> devices_;
  std::unique_ptr<ApplyFlow> apply_;
  std::unique_ptr<receiver::StartWhenOpened> start_when_opened_;
  std::unique_ptr<receiver::MeterPoller> meters_;

  // Pages.
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<Footer> footer_;
  std::unique_ptr<modes_gui::ModesTab> modes_tab_;
  std::unique_ptr<RefreshBar> refresh_bar_;
  std::unique_ptr<ConfigPage> config_page_;
  std::unique_ptr<SettingsPage> settings_page_;
  std::unique_ptr<Dashboard> dashboard_;
  std::unique_ptr<LogsPage> logs_page_;

  // Timers and signals.
  bool refreshing_ = false;
  bool stop_asked_ = false;
  bool closed_ = false;
  base::GMainLoopPtr loop_;
  base::Timer counters_timer_;
  base::Timer message_timer_;
  base::Timer tick_;
  ui_scale::Listener scale_listener_;
};

}  // namespace gui
