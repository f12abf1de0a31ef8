#include "gui/station_fixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdlib.h>

#include "gui/kit/widgets.h"

namespace testing_gui {

void StationTest::SetUp() {
  std::string name = ::testing::TempDir() + "tarnwick-window-XXXXXX";
  ASSERT_NE(::mkdtemp(name.data()), nullptr);
  directory_ = name;
  setup_.config_directory = directory_ + "/config/tarnwick";
  setup_.state_directory = directory_ + "/state/tarnwick";
  setup_.autostart_directory = directory_ + "/config/autostart";
  setup_.timing.stop_guard = std::chrono::milliseconds(300);
  setup_.timing.back_off.fill(std::chrono::milliseconds(200));
  setup_.programs = {"/bin/false", "", directory_ + "/usb", directory_ + "/proc"};
  setup_.timing.closing_limit = std::chrono::seconds(2);
  use_engine("exec sleep 30");
}

void StationTest::TearDown() {
  app_.reset();
  settle();
  std::filesystem::remove_all(directory_);
}

void StationTest::use_engine(const std::string& script, const std::string& listing) {
  setup_.tuner =
      write("engine", "#!/bin/sh\nif [ \"$1\" = --list-devices ]; then\n" + listing + "\nexit\nfi\n" + script + "\n");
  std::filesystem::permissions(setup_.tuner, std::filesystem::perms::owner_all);
}

std::string StationTest::write(const std::string& name, const std::string& text) {
  const std::string path = directory_ + "/" + name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::string StationTest::two_receivers() {
  return write("station.conf",
               "gui-format = multi-receiver-v1\nmode = decoder\nmodes = FT8\nbands = 40,20,30\nband-modes = 30:WSPR\n"
               "receiver.A1.enabled = true\nreceiver.A1.model = RSPdx\n"
               "receiver.B2.enabled = true\nreceiver.B2.model = RSP1A\nband.30.receiver = B2\n"
               "band.40.receiver = A1\nband.20.receiver = A1\n"
               "all-txt = " +
                   directory_ + "/ALL.TXT\n");
}

gui::App& StationTest::open(const std::string& config_path) {
  open_at_once(config_path);
  EXPECT_TRUE(turn_until([this] { return !app_->busy(); }, 10)) << "the discovery does not end";
  settle();
  return *app_;
}

gui::App& StationTest::open_at_once(const std::string& config_path) {
  setup_.config_path = config_path;
  app_ = std::make_unique<gui::App>(setup_);
  app_->build();
  app_->open();
  settle();
  return *app_;
}

void StationTest::press(const std::string& button) {
  GtkWidget* widget = find_button(window(), button);
  ASSERT_NE(widget, nullptr) << button;
  ASSERT_TRUE(gtk_widget_is_sensitive(widget)) << button << " is insensitive";
  gtk_button_clicked(GTK_BUTTON(widget));
}

void StationTest::answer(int response) {
  ASSERT_TRUE(turn_until([] { return shown_dialog() != nullptr; }, 3)) << "no dialog";
  gtk_dialog_response(GTK_DIALOG(shown_dialog()), response);
  settle();
}

bool StationTest::shows(const std::string& text) {
  const auto texts = visible_texts(window());
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::string StationTest::program_log() {
  settle();
  std::string text;
  for (GtkWidget* view : find_all(window(), [](GtkWidget* w) { return GTK_IS_TEXT_VIEW(w); })) {
    const char* name = atk_object_get_name(gtk_widget_get_accessible(view));
    if (!name || std::string(name) != "Program / errors") continue;
    GtkTextIter start, end;
    GtkTextBuffer* buffer = gtk_text_view_get_buffer(GTK_TEXT_VIEW(view));
    gtk_text_buffer_get_bounds(buffer, &start, &end);
    const base::GStringPtr content(gtk_text_buffer_get_text(buffer, &start, &end, FALSE));
    text = content.get();
  }
  return text;
}

int StationTest::config_files(const std::string& beginning) const {
  int count = 0;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(setup_.config_directory, error))
    count += entry.path().filename().string().starts_with(beginning);
  return count;
}

}  // namespace testing_gui
