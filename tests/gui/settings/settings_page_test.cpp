// The Settings tab in a window, driven through its controls.
#include "gui/settings/settings_page.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include "base/file_write.h"
#include "base/gobject_ptr.h"
#include "gui/kit/theme.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"
#include "gui/widget_finder.h"

namespace {

using options::Profile;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing_gui::settle;

const Profile station = {{"callsign", "K1ABC"}, {"grid", "FN42"},          {"pskreporter", "true"}, {"mode", "decoder"},
                         {"workers", "3"},      {"all-txt", "/a/ALL.TXT"}, {"bands", "20"}};

class SettingsTab : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_TRUE(gtk_init_check(nullptr, nullptr));
    std::setlocale(LC_NUMERIC, "C");
    g_log_set_always_fatal(GLogLevelFlags(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    kit::load_theme();
  }

  void SetUp() override {
    std::filesystem::remove_all(directory_);
    open();
  }
  void TearDown() override {
    close();
    ui_scale::set_factor(1);
  }

  void open() {
    page_ = std::make_unique<gui::SettingsPage>(
        gui::SettingsSurroundings{.choices = choices_,
                                  .state_directory = "/state",
                                  .autostart_directory = directory_ + "/autostart",
                                  .executable = "/usr/bin/tarnwick-gui",
                                  .edited = [this](const std::string& key) { edits_.push_back(key); },
                                  .show_error = [this](const std::string& text) { errors_.push_back(text); }});
    window_ = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_default_size(GTK_WINDOW(window_), 1076, 700);
    gtk_container_add(GTK_CONTAINER(window_), page_->widget());
    gtk_widget_show(window_);
    settle();
  }
  void close() {
    page_.reset();
    if (window_) gtk_widget_destroy(window_);
    window_ = nullptr;
    settle();
  }

  void type(const char* key, const char* text) { gtk_entry_set_text(GTK_ENTRY(page_->control(key)), text); }
  void tick(const char* key, bool on) { gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(page_->control(key)), on); }
  bool ticked(const char* key) { return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(page_->control(key))) != FALSE; }
  bool sensitive(const char* key) { return gtk_widget_get_sensitive(page_->control(key)) != FALSE; }
  std::string tooltip(const char* key) {
    const base::GStringPtr text(gtk_widget_get_tooltip_text(page_->control(key)));
    return text ? text.get() : "";
  }
  Profile read(Profile profile = {}) {
    page_->read(profile);
    return profile;
  }
  GtkWidget* check(const std::string& label) { return testing_gui::find_button(window_, label); }
  GtkWidget* combo() {
    return testing_gui::find_all(window_, [](GtkWidget* widget) { return GTK_IS_COMBO_BOX(widget) != FALSE; }).front();
  }
  auto texts() { return testing_gui::visible_texts(window_); }

  const std::string directory_ = testing::TempDir() + "tarnwick-settings-tab";
  base::KeyFile choices_{directory_ + "/activity.ini"};
  std::vector<std::string> edits_, errors_;
  std::unique_ptr<gui::SettingsPage> page_;
  GtkWidget* window_ = nullptr;
};

TEST_F(SettingsTab, ReadsBackWhatItShowsAndKeepsForeignKeys) {
  page_->show(station);
  page_->show(station);
  EXPECT_THAT(edits_, IsEmpty());
  Profile expected = station;
  expected.merge(Profile{{"decode-depth", "2"},
                         {"decoder-timeout", "12.0"},
                         {"history-days", "7"},
                         {"history-db", "/state/history.sqlite3"},
                         {"known-channels-report", "false"},
                         {"online-callsign-check", "true"},
                         {"stats", "true"},
                         {"wspr-timeout", "60"},
                         {"wsprnet", "false"}});
  EXPECT_EQ(read(station), expected);
}

TEST_F(SettingsTab, TellsEachEditAndReadsIt) {
  page_->show(station);
  type("wav", " /tmp/a.wav ");
  tick("stats", false);
  gtk_spin_button_set_value(GTK_SPIN_BUTTON(page_->control("workers")), 0);
  gtk_spin_button_set_value(GTK_SPIN_BUTTON(page_->control("decoder-timeout")), 99);
  EXPECT_THAT(edits_, testing::IsSupersetOf({"wav", "stats", "workers", "decoder-timeout"}));
  const Profile profile = read(station);
  EXPECT_EQ(profile.at("wav"), "/tmp/a.wav");
  EXPECT_EQ(profile.at("stats"), "false");
  EXPECT_EQ(profile.at("decoder-timeout"), "60.0");
  EXPECT_FALSE(profile.contains("workers"));
  // What comes back from the session must not disturb what is being typed.
  edits_.clear();
  page_->show(profile);
  EXPECT_STREQ(gtk_entry_get_text(GTK_ENTRY(page_->control("wav"))), " /tmp/a.wav ");
  EXPECT_THAT(edits_, IsEmpty());
}

TEST_F(SettingsTab, WritesBytesBackThatCannotBeDisplayed) {
  const Profile odd = {{"all-txt", "/caf\xE9/ALL.TXT"}};
  page_->show(odd);
  EXPECT_EQ(read(odd).at("all-txt"), odd.at("all-txt"));
}

TEST_F(SettingsTab, ReportsOnlyUnderAValidIdentity) {
  page_->show(station);
  EXPECT_THAT(texts(), Contains("PSK Reporter: enabled. Station identity is valid."));
  type("callsign", "K1");
  EXPECT_FALSE(ticked("pskreporter") || sensitive("pskreporter") || sensitive("wsprnet"));
  EXPECT_TRUE(sensitive("known-channels-report"));
  EXPECT_EQ(read().at("pskreporter"), "false");
  EXPECT_THAT(texts(), Contains("PSK Reporter: off. Enter a valid callsign and a 4, 6 or 8 character grid to enable "
                                "reporting."));
  page_->show(read(station));
  type("callsign", "k1abd");
  EXPECT_TRUE(ticked("pskreporter"));
  tick("pskreporter", false);
  EXPECT_THAT(texts(), Contains("PSK Reporter: off. Station identity is valid."));
  EXPECT_THAT(edits_, ElementsAre("callsign", "callsign", "pskreporter"));
}

TEST_F(SettingsTab, NeverReportsForAProfileThatDoesNotSaySo) {
  page_->show(station);
  type("callsign", "K1");
  page_->show({{"callsign", "W9"}, {"grid", "EN37"}});
  type("callsign", "W9XYZ");
  EXPECT_FALSE(ticked("pskreporter"));
  Profile audio = station;
  audio["mode"] = "audio";
  page_->show(audio);
  EXPECT_FALSE(ticked("pskreporter") || sensitive("pskreporter"));
  EXPECT_THAT(texts(), Contains("PSK Reporter: off in audio mode."));
  audio["mode"] = "decoder";
  audio["pskreporter"] = "false";
  page_->show(audio);
  EXPECT_FALSE(ticked("pskreporter"));
}

TEST_F(SettingsTab, LocksWhatNeedsARestartWhileReceiving) {
  page_->show(station);
  const std::string before = tooltip("wspr-timeout");
  page_->set_receiving(true);
  for (const char* key : {"callsign", "all-txt", "workers", "wspr-timeout", "stats"}) {
    EXPECT_FALSE(sensitive(key)) << key;
    EXPECT_EQ(tooltip(key), "Stop reception to change this setting.") << key;
  }
  EXPECT_TRUE(sensitive("decode-depth") && sensitive("pskreporter"));
  page_->set_receiving(false);
  EXPECT_TRUE(sensitive("wspr-timeout"));
  EXPECT_EQ(tooltip("wspr-timeout"), before);
  EXPECT_THAT(edits_, IsEmpty());
}

TEST_F(SettingsTab, KeepsChoicesAtOnce) {
  const std::pair<const char*, std::pair<const char*, const char*>> ticks[] = {
      {"Start the receivers when Tarnwick opens", {"Startup", "start-receivers"}},
      {"Start the phone app server when Tarnwick opens", {"PhoneApp", "start-server"}}};
  for (const auto& [label, place] : ticks) {
    gtk_button_clicked(GTK_BUTTON(check(label)));
    EXPECT_TRUE(choices_.get(place.first, place.second, false)) << label;
  }
  gtk_button_clicked(GTK_BUTTON(check("Open Tarnwick when I sign in")));
  EXPECT_THAT(base::read_file(directory_ + "/autostart/tarnwick.desktop"), testing::HasSubstr("/usr/bin/tarnwick-gui"));
  close();
  open();
  for (const auto& [label, place] : ticks)
    EXPECT_TRUE(gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(check(label))));
  gtk_button_clicked(GTK_BUTTON(check("Open Tarnwick when I sign in")));
  EXPECT_FALSE(std::filesystem::exists(directory_ + "/autostart/tarnwick.desktop"));
  EXPECT_THAT(errors_, IsEmpty());
  EXPECT_THAT(edits_, IsEmpty());
}

TEST_F(SettingsTab, AppliesTheInterfaceSizeAtOnce) {
  gtk_combo_box_set_active(GTK_COMBO_BOX(combo()), 3);
  EXPECT_EQ(ui_scale::factor(), 1.5);
  EXPECT_EQ(gui::kept_interface_size(choices_), 150);
  choices_.set("Display", "interface-size", "200");
  page_->activate();
  EXPECT_EQ(gtk_combo_box_get_active(GTK_COMBO_BOX(combo())), 5);
  EXPECT_EQ(ui_scale::factor(), 1.5);
  gtk_combo_box_set_active(GTK_COMBO_BOX(combo()), 0);
  const base::GStringPtr text(gtk_combo_box_text_get_active_text(GTK_COMBO_BOX_TEXT(combo())));
  EXPECT_STREQ(text.get(), "Automatic (100 %)");
}

TEST_F(SettingsTab, TakesBackWhatCannotBeKept) {
  std::filesystem::create_directories(choices_.path());
  std::ofstream(directory_ + "/autostart") << "in the way";
  GtkWidget* start = check("Start the receivers when Tarnwick opens");
  gtk_button_clicked(GTK_BUTTON(start));
  GtkWidget* open_at_sign_in = check("Open Tarnwick when I sign in");
  gtk_button_clicked(GTK_BUTTON(open_at_sign_in));
  gtk_combo_box_set_active(GTK_COMBO_BOX(combo()), 4);
  EXPECT_FALSE(gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(start)));
  EXPECT_FALSE(gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(open_at_sign_in)));
  EXPECT_EQ(gtk_combo_box_get_active(GTK_COMBO_BOX(combo())), 0);
  EXPECT_EQ(ui_scale::factor(), 1);
  EXPECT_THAT(errors_, ElementsAre(testing::StartsWith("Cannot save the start-up setting: "),
                                   testing::StartsWith("Cannot write the sign-in entry: "),
                                   testing::StartsWith("Cannot save the interface size: ")));
}

// Every control says what it is; a combo box would otherwise give its chosen entry as its name.
TEST_F(SettingsTab, NamesEveryControlForAssistiveTools) {
  const auto controls = testing_gui::find_all(window_, [](GtkWidget* widget) {
    return GTK_IS_ENTRY(widget) || GTK_IS_SPIN_BUTTON(widget) || GTK_IS_COMBO_BOX(widget);
  });
  EXPECT_GE(controls.size(), 15U);
  for (GtkWidget* control : controls) {
    AtkRelationSet* relations = atk_object_ref_relation_set(gtk_widget_get_accessible(control));
    EXPECT_TRUE(atk_relation_set_contains(relations, ATK_RELATION_LABELLED_BY)) << G_OBJECT_TYPE_NAME(control);
    g_object_unref(relations);
  }
}

// Two columns fit the launcher's first window, at every size of its text.
TEST_F(SettingsTab, FitsTwoColumnsIntoTheFirstWindow) {
  page_->show(station);
  GtkWidget* flow =
      testing_gui::find_all(window_, [](GtkWidget* widget) { return GTK_IS_FLOW_BOX(widget) != FALSE; }).front();
  const auto column = [flow](int index) {
    GtkAllocation place;
    gtk_widget_get_allocation(GTK_WIDGET(gtk_flow_box_get_child_at_index(GTK_FLOW_BOX(flow), index)), &place);
    return place;
  };
  for (const double factor : {1.0, 1.5, 2.5}) {
    ui_scale::set_factor(factor);
    gtk_window_resize(GTK_WINDOW(window_), ui_scale::scaled(1056), 700);
    EXPECT_TRUE(testing_gui::turn_until([&] { return column(0).width >= ui_scale::scaled(500); })) << factor;
    EXPECT_GT(column(1).x, column(0).x) << factor;
    EXPECT_EQ(column(2).x, column(0).x) << factor;
    EXPECT_LE(column(1).x + column(1).width, gtk_widget_get_allocated_width(page_->widget())) << factor;
  }
}

}  // namespace
