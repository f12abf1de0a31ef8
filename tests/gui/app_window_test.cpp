// The window as the operator meets it: the real App, driven through its widgets.
#include <filesystem>
#include <fstream>

#include "base/file_write.h"
#include "gui/kit/widgets.h"
#include "gui/station_fixture.h"

namespace testing_gui {
namespace {

using ::testing::HasSubstr;

constexpr const char* three_cycles = R"(
printf 'FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC,W9XYZ,K1ABC\n'
printf 'FT8 261003_120015 14.074000 MHz: 3 spots; callsigns=k1abc,N0NEW\r\n'
printf 'WSPR 261003_120000 10.138700 MHz: 2 spots; callsigns=G4AAA,DL1BBB\n'
exec sleep 30)";

TEST_F(StationTest, HasThirteenTabsInTheirOrder) {
  open();
  const char* expected[] = {"Modes / Frequencies",
                            "SDR Config",
                            "Settings",
                            "Audio Receivers",
                            "Sharing",
                            "Live Map",
                            "Live FT8",
                            "Live JS8",
                            "Live WSPR",
                            "Live Text Modes",
                            "Live Images",
                            "Stats",
                            "Logs"};
  GtkNotebook* notebook = app_->window().notebook();
  ASSERT_EQ(gtk_notebook_get_n_pages(notebook), 13);
  for (int i = 0; i < 13; ++i)
    EXPECT_STREQ(gtk_notebook_get_tab_label_text(notebook, gtk_notebook_get_nth_page(notebook, i)), expected[i]);
  EXPECT_STREQ(gtk_window_get_title(app_->window().window()), "Tarnwick · Ostrand");
  EXPECT_THAT(program_log(), HasSubstr("Ready. Start reception explicitly; no receiver or reporting is started"));
}

TEST_F(StationTest, CountsWhatItsEnginesHear) {
  use_engine(three_cycles);
  open(two_receivers());
  EXPECT_EQ(gtk_notebook_get_current_page(app_->window().notebook()), 0);
  press("Start receivers");
  EXPECT_EQ(app_->window().current_page(), 6);
  EXPECT_EQ(config_files("session-"), 2);
  ASSERT_TRUE(turn_until([this] { return shows("15") || shows("30"); }));
  // Both engines print the same three cycles; every line counts for its channel.
  ASSERT_TRUE(turn_until([this] { return shows("34 spots  /  0 spots/hr  /  PSKR24: 0"); }));
  EXPECT_TRUE(shows("RSPdx · A1"));
  EXPECT_TRUE(shows("FT8 14.074000 MHz"));
  EXPECT_TRUE(shows("30 spots · 4 decodes"));
  EXPECT_TRUE(shows("3")) << "a callsign counts once per channel, in whatever case";
  EXPECT_FALSE(shows("WSPR 10.138700 MHz"));
  app_->window().show_page(8);
  EXPECT_TRUE(shows("WSPR 10.138700 MHz"));
  EXPECT_TRUE(shows("4 spots · 2 decodes"));

  press("Stop");
  ASSERT_TRUE(turn_until([this] { return !app_->receiving(); }));
  EXPECT_EQ(config_files("session-"), 0);
  EXPECT_THAT(program_log(), HasSubstr("[RSP1A · B2] Receiver stopped."));
  EXPECT_TRUE(shows("34 spots  /  0 spots/hr  /  PSKR24: 0")) << "counters stay until the next start";
  const std::string log = base::read_file(setup_.state_directory + "/gui.log");
  EXPECT_THAT(log, HasSubstr("[RSPdx · A1] FT8 261003_120000 14.074000 MHz: 12 spots; callsigns=K1ABC,W9XYZ,K1ABC\n"));
}

TEST_F(StationTest, RestartsACrashedEngineAloneAndStopCancelsTheWait) {
  use_engine("case $2 in *-0.conf) exit 3;; esac\nexec sleep 30");
  open(two_receivers());
  press("Start receivers");
  ASSERT_TRUE(turn_until([this] { return program_log().find("(attempt 2)") != std::string::npos; }));
  const std::string log = program_log();
  EXPECT_THAT(log, HasSubstr("[RSPdx · A1] Receiver exited with an error. Other receivers continue."));
  EXPECT_THAT(log, ::testing::Not(HasSubstr("[RSP1A · B2] Receiver exited")));
  EXPECT_FALSE(gtk_widget_get_sensitive(find_button(window(), "Start receivers")));
  press("Stop");
  ASSERT_TRUE(turn_until([this] { return !app_->receiving(); }));
  EXPECT_EQ(config_files("session-"), 0);
}

TEST_F(StationTest, AnEngineThatCannotStartUndoesTheStart) {
  open(two_receivers());
  std::filesystem::remove(setup_.tuner);
  press("Start receivers");
  ASSERT_NE(shown_dialog(), nullptr);
  EXPECT_THAT(dialog_text(shown_dialog()), HasSubstr("/engine"));
  answer(GTK_RESPONSE_CLOSE);
  EXPECT_FALSE(app_->receiving());
  EXPECT_EQ(config_files("session-"), 0);
  EXPECT_TRUE(gtk_widget_get_sensitive(find_button(window(), "Start receivers"))) << "the operator can try again";
}

TEST_F(StationTest, StartsOnlyOnReceiversThatADiscoveryHasFound) {
  use_engine("exec sleep 30", "echo 'no API service'; exit 5");
  open(two_receivers());
  GtkWidget* start = find_button(window(), "Start receivers");
  EXPECT_FALSE(gtk_widget_get_sensitive(start));
  const base::GStringPtr tooltip(gtk_widget_get_tooltip_text(start));
  EXPECT_STREQ(tooltip.get(), "Device discovery failed. Last device list retained; retry Refresh receivers.");
  EXPECT_THAT(program_log(), HasSubstr("Device discovery failed: no API service (exit code 5)"));
  app_->start_receivers();
  EXPECT_THAT(dialog_text(shown_dialog()), HasSubstr("Refresh receivers successfully before starting reception."));
  answer(GTK_RESPONSE_CLOSE);

  use_engine("exec sleep 30",
             "sleep 0.3; echo '0: RSPdx serial=A1 available=1'; echo '1: RSP1A serial=B2 available=0'");
  app_->window().show_page(1);
  press("Refresh receivers");
  EXPECT_FALSE(gtk_widget_get_sensitive(find_button(window(), "Refreshing…")));
  gtk_window_close(app_->window().window());
  EXPECT_THAT(program_log(), HasSubstr("Wait for the current device or service operation to finish before closing."));
  ASSERT_TRUE(turn_until([this] { return !app_->busy(); }));
  EXPECT_FALSE(app_->closed());
  EXPECT_TRUE(
      shows("Checked 2 receivers\nDevice list refreshed. Busy receivers are shown without interrupting "
            "reception."));
  EXPECT_FALSE(gtk_widget_get_sensitive(start)) << "one of them is busy";

  use_engine("exec sleep 30");
  press("Refresh receivers");
  ASSERT_TRUE(turn_until([start] { return gtk_widget_get_sensitive(start) != FALSE; }));
  press("Start receivers");
  use_engine("exec sleep 30", "true");
  app_->refresh_receivers();
  ASSERT_TRUE(turn_until([this] { return !app_->busy(); }));
  EXPECT_TRUE(app_->receiving());
  EXPECT_THAT(program_log(), HasSubstr("No local SDRplay receivers found. Check its API service."));
  press("Stop");
  ASSERT_TRUE(turn_until([this] { return !app_->receiving() && !app_->busy(); }));
  EXPECT_FALSE(gtk_widget_get_sensitive(start)) << "now they are missing";
}

TEST_F(StationTest, BadProfilesAreRefusedInWordsAndTheWindowGoesOn) {
  const auto link = directory_ + "/link.conf";
  std::filesystem::create_symlink(two_receivers(), link);
  std::filesystem::create_directory(directory_ + "/folder.conf");
  const struct {
    std::string path;
    const char* words;
  } cases[] = {
      {directory_ + "/missing.conf", "Cannot open configuration file: "},
      {directory_ + "/folder.conf", "configuration file"},
      {write("long.conf", std::string(2'000'000, '#')), "Configuration file exceeds size limit"},
      {write("nuls.conf", std::string(1000, '\0')), "Expected option = value"},
      {write("future.conf", "gui-format = multi-receiver-v2\n"), "Unsupported GUI profile format"},
  };
  for (const auto& example : cases) {
    open(example.path);
    ASSERT_NE(shown_dialog(), nullptr) << example.path;
    EXPECT_THAT(dialog_text(shown_dialog()), HasSubstr(example.words));
    EXPECT_THAT(program_log(), HasSubstr("Error: ")) << example.path;
    answer(GTK_RESPONSE_CLOSE);
    EXPECT_TRUE(gtk_widget_get_sensitive(find_button(window(), "Open .conf")));
    close_app();
  }
  open(link);
  EXPECT_EQ(shown_dialog(), nullptr) << "a link may be read; it is never written through";
}

TEST_F(StationTest, ClosingAsksOnlyWhileReceiversRun) {
  open(two_receivers());
  gtk_window_close(app_->window().window());
  ASSERT_TRUE(turn_until([this] { return app_->closed(); }, 3)) << "nothing runs: no question";
  close_app();

  open(two_receivers());
  press("Start receivers");
  gtk_window_close(app_->window().window());
  answer(GTK_RESPONSE_CANCEL);
  EXPECT_TRUE(app_->receiving());
  EXPECT_FALSE(app_->closed());
  gtk_window_close(app_->window().window());
  answer(GTK_RESPONSE_OK);
  EXPECT_TRUE(turn_until([this] { return app_->closed(); }, 5));
  EXPECT_EQ(config_files("session-"), 0);
}

TEST_F(StationTest, ClosingEndsAnEngineThatWillNotStop) {
  use_engine("trap '' TERM\nwhile :; do sleep 0.1; done");
  setup_.timing.stop_guard = std::chrono::seconds(30);
  setup_.timing.closing_limit = std::chrono::milliseconds(500);
  open(two_receivers());
  press("Start receivers");
  settle();
  gtk_window_close(app_->window().window());
  answer(GTK_RESPONSE_OK);
  gtk_window_close(app_->window().window());
  EXPECT_EQ(shown_dialog(), nullptr) << "the second press only repeats the text";
  EXPECT_TRUE(shows("Stopping the receivers. The window closes when they have stopped."));
  ASSERT_TRUE(turn_until([this] { return app_->closed(); }, 5));
  EXPECT_THAT(program_log(), HasSubstr("The window was closing, so Tarnwick ended this receiver without waiting."));
}

TEST_F(StationTest, AFoldSurvivesARebuildAndARestart) {
  open(two_receivers());
  press("Start receivers");
  ASSERT_TRUE(shows("FT8 14.074000 MHz"));
  press("RSPdx · A1: Hide this receiver's channels");
  EXPECT_FALSE(shows("FT8 14.074000 MHz"));
  app_->window().show_page(7);
  app_->window().show_page(6);
  EXPECT_FALSE(shows("FT8 14.074000 MHz"));
  press("Stop");
  ASSERT_TRUE(turn_until([this] { return !app_->receiving(); }));
  close_app();
  open(two_receivers());
  press("Start receivers");
  EXPECT_FALSE(shows("FT8 14.074000 MHz"));
  press("RSPdx · A1: Show this receiver's channels");
  EXPECT_TRUE(shows("FT8 14.074000 MHz"));
}

TEST_F(StationTest, StartsByItselfWhenTheOperatorChoseSo) {
  setup_.timing.start_period = std::chrono::milliseconds(50);
  base::KeyFile(setup_.config_directory + "/activity.ini").set("Startup", "start-receivers", true);
  open(two_receivers());
  ASSERT_TRUE(turn_until([this] { return app_->receiving(); }, 3));
  EXPECT_THAT(program_log(), HasSubstr("Starting the receivers (start when Tarnwick opens)."));
}

TEST_F(StationTest, AnEditIsSavedByItselfAndApplyAndSaveWritesTheOpenedFileToo) {
  const std::string opened = two_receivers();
  open(opened);
  GtkWidget* apply = find_button(window(), "Apply and Save");
  const auto primary = [apply] {
    return gtk_style_context_has_class(gtk_widget_get_style_context(apply), "primary") != FALSE;
  };
  EXPECT_FALSE(primary()) << "opening a profile is no edit";
  GtkWidget* callsign = find_labelled(window(), "Callsign");
  ASSERT_NE(callsign, nullptr);
  gtk_entry_set_text(GTK_ENTRY(callsign), "M0NEW");
  EXPECT_TRUE(primary());
  const std::string session = setup_.config_directory + "/session.conf";
  ASSERT_TRUE(turn_until([&] { return std::filesystem::exists(session); }, 3)) << "no autosave";
  EXPECT_THAT(base::read_file(session), HasSubstr("callsign = 'M0NEW'"));
  EXPECT_THAT(base::read_file(opened), ::testing::Not(HasSubstr("M0NEW")));
  press("Apply and Save");
  EXPECT_FALSE(primary());
  EXPECT_THAT(base::read_file(opened), HasSubstr("callsign = 'M0NEW'"));
  EXPECT_THAT(program_log(), HasSubstr("Settings saved. The receivers use them when they start."));
  close_app();
  open();
  EXPECT_THAT(program_log(), HasSubstr("Configuration restored: " + session));
  EXPECT_FALSE(
      gtk_style_context_has_class(gtk_widget_get_style_context(find_button(window(), "Apply and Save")), "primary"));
}

TEST_F(StationTest, SettingsThatCannotBeReadAreKeptAsideAndTold) {
  const std::string session = setup_.config_directory + "/session.conf";
  base::replace_file(session, "gui-format = multi-receiver-v1\nreceiver.ZZZ.future = 1\n");
  open();
  ASSERT_NE(shown_dialog(), nullptr);
  EXPECT_THAT(dialog_text(shown_dialog()), HasSubstr("The file is kept as " + session + ".unreadable"));
  answer(GTK_RESPONSE_CLOSE);
  EXPECT_EQ(base::read_file(session + ".unreadable"), base::read_file(session));
}

TEST_F(StationTest, AnUnwritableStateDirectoryIsSaidAndLeavesTheWindowUsable) {
  std::filesystem::create_directories(directory_ + "/state");
  write("state/tarnwick", "a file where the directory should be");
  open(two_receivers());
  press("Start receivers");
  ASSERT_NE(shown_dialog(), nullptr);
  EXPECT_THAT(dialog_text(shown_dialog()), HasSubstr(setup_.state_directory));
  answer(GTK_RESPONSE_CLOSE);
  EXPECT_FALSE(app_->receiving());
  EXPECT_EQ(config_files("session-"), 0);
}

}  // namespace
}  // namespace testing_gui
