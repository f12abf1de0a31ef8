// The SDR Config tab in a window, driven through its controls.
#include "gui/config/config_page.h"

#include <clocale>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include "base/gobject_ptr.h"
#include "gui/kit/theme.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"
#include "gui/widget_finder.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing_gui::settle;

class ConfigTab : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_TRUE(gtk_init_check(nullptr, nullptr));
    std::setlocale(LC_NUMERIC, "C");
    g_log_set_always_fatal(GLogLevelFlags(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    kit::load_theme();
  }

  void SetUp() override {
    station_.common = {{"mode", "decoder"}, {"modes", "FT8"}, {"bands", "40,20"}};
    station_.receivers = {{"ONE", "RSP2", {{"antenna", "A"}, {"agc", "off"}}, true, true},
                          {"TWO", "R820T", {{"backend", "rtl-sdr"}}, true, true},
                          {"USB", "RX-888", {{"backend", "rx888"}}, false, true}};
    gui::ConfigActions actions;
    const auto note = [this](const char* what) {
      return [this, what](const auto&... parts) {
        std::string line = what;
        ((line += fmt::format(" {}", parts)), ...);
        edits_.push_back(line);
      };
    };
    actions.edit = [this](const std::string& serial, const std::string& key, const std::string& value) {
      edits_.push_back(fmt::format("{} {}={}", serial, key, value));
      station_ = gui::with_setting(station_, serial, key, value);
      show();
    };
    actions.edit_live = note("live");
    actions.edit_common = note("common");
    actions.set_enabled = note("enabled");
    actions.set_spot = note("spot");
    actions.set_share = note("share");
    actions.remove = note("remove");
    gui::MeterSource meters;
    meters.snapshot = [this](const std::string& serial) { return serial == "ONE" ? &snapshot_ : nullptr; };
    meters.now = [this] { return snapshot_.taken; };
    page_ = std::make_unique<gui::ConfigPage>(actions, meters);
    window_ = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_window_set_default_size(GTK_WINDOW(window_), 1076, 700);
    gtk_container_add(GTK_CONTAINER(window_), page_->widget());
    show();
    gtk_widget_show(window_);
    settle();
  }
  void TearDown() override {
    page_.reset();
    gtk_widget_destroy(window_);
    settle();
    ui_scale::set_factor(1);
  }

  void show() {
    const launcher::BandChoices choices = launcher::band_choices(station_);
    page_->show({.station = station_, .choices = choices, .planned = {}, .running = running_});
  }
  GtkWidget* card(const std::string& serial) {
    const auto found = testing_gui::find_all(window_, [&](GtkWidget* widget) {
      const char* data = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "receiver-serial"));
      return data && serial == data;
    });
    return found.empty() ? nullptr : found.front();
  }
  GtkWidget* control(const std::string& serial, const std::string& key) {
    return testing_gui::find_all(card(serial), [&](GtkWidget* widget) { return key == gtk_widget_get_name(widget); })
        .at(0);
  }
  void slide(const std::string& serial, const std::string& key, double position) {
    gtk_range_set_value(GTK_RANGE(control(serial, key)), position);
  }
  double position(const std::string& serial, const std::string& key) {
    return gtk_range_get_value(GTK_RANGE(control(serial, key)));
  }
  void type(const std::string& serial, const std::string& key, const char* text) {
    gtk_entry_set_text(GTK_ENTRY(control(serial, key)), text);
  }
  std::string typed(const std::string& serial, const std::string& key) {
    return gtk_entry_get_text(GTK_ENTRY(control(serial, key)));
  }

  options::Station station_;
  std::set<std::string> running_;
  receiver::MeterSnapshot snapshot_;  ///< of ONE
  std::vector<std::string> edits_;
  std::unique_ptr<gui::ConfigPage> page_;
  GtkWidget* window_ = nullptr;
};

TEST_F(ConfigTab, TellsEachEditOnceAndKeepsItsWidgets) {
  GtkWidget* before = card("ONE");
  slide("ONE", "gain-reduction", -40);
  slide("ONE", "gain-reduction", -40.3);
  type("ONE", "sample-rate", "2.5M");
  gtk_combo_box_set_active_id(GTK_COMBO_BOX(control("ONE", "antenna")), "HiZ");
  type("ONE", "center-frequency", "7.1M");
  slide("USB", "rx888-attenuation", 3.3);
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(control("TWO", "agc")), FALSE);
  EXPECT_THAT(edits_, ElementsAre("ONE gain-reduction=40", "ONE sample-rate=2500000", "ONE antenna=HiZ",
                                  "ONE center-frequency=7.1M", "USB rx888-attenuation=3.5", "TWO agc=off"));
  EXPECT_EQ(typed("ONE", "sample-rate"), "2.5M");
  EXPECT_EQ(typed("ONE", "center-frequency"), "7.1M");
  EXPECT_TRUE(gtk_widget_is_visible(control("TWO", "rtl-gain")));
  EXPECT_EQ(card("ONE"), before);
}

// A profile that is opened, a plan that changes, a receiver that starts: none of it is an edit.
TEST_F(ConfigTab, TakesNothingThatItShowsForAnEdit) {
  station_.receivers[0].settings = {
      {"antenna", "B"},     {"agc", "on"},          {"gain-reduction", "30"},     {"lna-state", "255"},
      {"ppm", "-1.23456"},  {"audio-gain", "loud"}, {"sample-rate", "2048000"},   {"rf-notch", "on"},
      {"usb-mode", "bulk"}, {"bandwidth", "3k"},    {"center-frequency", "14.1M"}};
  show();
  running_ = {"ONE"};
  show();
  page_->show_applied("ONE", {{"gain-reduction", "31"}, {"antenna", "A"}});
  page_->show_applied("nobody", {{"antenna", "A"}});
  // What a number box does when the focus leaves it.
  for (GtkWidget* box :
       testing_gui::find_all(card("ONE"), [](GtkWidget* widget) { return GTK_IS_SPIN_BUTTON(widget); }))
    gtk_spin_button_update(GTK_SPIN_BUTTON(box));
  EXPECT_THAT(edits_, IsEmpty());
  EXPECT_EQ(typed("ONE", "sample-rate"), "2.048 MS/s · 1.38 MHz, one band");
  EXPECT_STREQ(gtk_combo_box_get_active_id(GTK_COMBO_BOX(control("ONE", "lna-state"))), "255");
}

TEST_F(ConfigTab, SendsLiveEditsOfARunningReceiverAndTakesThemBack) {
  running_ = {"ONE"};
  show();
  EXPECT_FALSE(gtk_widget_is_sensitive(control("ONE", "sample-rate")));
  EXPECT_TRUE(gtk_widget_is_sensitive(control("ONE", "gain-reduction")));
  EXPECT_TRUE(gtk_widget_is_sensitive(control("USB", "rx888-rate")));
  slide("ONE", "gain-reduction", -40);
  gtk_combo_box_set_active_id(GTK_COMBO_BOX(control("ONE", "antenna")), "B");
  show();
  EXPECT_EQ(position("ONE", "gain-reduction"), -40);
  // The engine refuses the gain; the antenna has yet to be sent.
  page_->show_applied("ONE", {{"gain-reduction", "50"}, {"antenna", "B"}});
  EXPECT_EQ(position("ONE", "gain-reduction"), -50);
  show();
  EXPECT_STREQ(gtk_combo_box_get_active_id(GTK_COMBO_BOX(control("ONE", "antenna"))), "B");
  // It stops before it answers: what is saved is what shows.
  running_.clear();
  show();
  EXPECT_STREQ(gtk_combo_box_get_active_id(GTK_COMBO_BOX(control("ONE", "antenna"))), "A");
  EXPECT_THAT(edits_, ElementsAre("live ONE gain-reduction 40", "live ONE antenna B"));
}

TEST_F(ConfigTab, MetersFollowTheirReadingsOnTheScreen) {
  const auto texts = [this] { return testing_gui::visible_texts(card("ONE")); };
  station_.receivers[0].settings = {{"gain-reduction", "50"}};
  running_ = {"ONE"};
  snapshot_.taken = 1;
  snapshot_.reading.level_state = snapshot_.reading.if_state = "ready";
  snapshot_.reading.rms = -42;
  snapshot_.reading.if_reduction = 33;
  show();
  EXPECT_THAT(texts(), Contains("−42.0 dBFS"));
  EXPECT_EQ(position("ONE", "gain-reduction"), -33);
  gtk_widget_hide(window_);
  snapshot_.reading.rms = -30;
  page_->show_meters("ONE");
  gtk_widget_show(window_);
  settle();
  EXPECT_THAT(texts(), Contains("−30.0 dBFS")) << "what changed out of sight is caught up";
  snapshot_.error = "Audio request timed out";
  page_->show_meters("ONE");
  EXPECT_THAT(texts(), AllOf(Contains("—"), Not(Contains("−30.0 dBFS")), Not(Contains("−33 dB"))));
  EXPECT_EQ(position("ONE", "gain-reduction"), -33) << "it keeps its place";
  EXPECT_THAT(edits_, IsEmpty());
}

TEST_F(ConfigTab, MovesARunningCaptureOnlyWhenTheBoxIsLeft) {
  running_ = {"ONE"};
  show();
  GtkWidget* entry = control("ONE", "center-frequency");
  type("ONE", "center-frequency", "7.1M");
  show();
  EXPECT_THAT(edits_, IsEmpty());
  EXPECT_EQ(typed("ONE", "center-frequency"), "7.1M");
  gtk_widget_activate(entry);
  EXPECT_THAT(edits_, ElementsAre("live ONE center-frequency 7.1M"));
  page_->show_applied("ONE", {{"center-frequency", "14108000.000000"}});
  EXPECT_EQ(typed("ONE", "center-frequency"), "");
  edits_.clear();
  type("ONE", "center-frequency", "14.1M");
  gtk_widget_grab_focus(entry);
  gtk_widget_grab_focus(control("ONE", "ppm"));
  settle();
  EXPECT_THAT(edits_, ElementsAre("live ONE center-frequency 14.1M"));
  edits_.clear();
  type("ONE", "center-frequency", "");
  gtk_widget_activate(entry);
  EXPECT_THAT(edits_, ElementsAre("live ONE center-frequency ")) << "who sends live edits has to know of it";
}

TEST_F(ConfigTab, TicksAndRemovesReceivers) {
  EXPECT_THAT(testing_gui::visible_texts(window_), Contains("40m 20m · 10 MS/s · 7.2 MHz"));
  gtk_button_clicked(GTK_BUTTON(testing_gui::find_button(window_, "RX-888 · USB")));
  gtk_button_clicked(GTK_BUTTON(testing_gui::find_button(window_, "Spot RSP2 · ONE")));
  gtk_button_clicked(GTK_BUTTON(testing_gui::find_button(window_, "Share R820T · TWO")));
  gtk_button_clicked(GTK_BUTTON(testing_gui::find_button(window_, "Remove RSP2 · ONE")));
  settle();
  GtkWidget* dialog = testing_gui::shown_dialog();
  ASSERT_NE(dialog, nullptr);
  EXPECT_THAT(testing_gui::dialog_text(dialog), HasSubstr("Remove receiver RSP2 · ONE from this session?\n\nBands "));
  gtk_dialog_response(GTK_DIALOG(dialog), GTK_RESPONSE_OK);
  settle();
  EXPECT_THAT(edits_, ElementsAre("enabled USB true", "spot ONE false", "share TWO false", "remove ONE"));
  running_ = {"ONE"};
  show();
  EXPECT_FALSE(gtk_widget_is_sensitive(testing_gui::find_button(window_, "Remove RSP2 · ONE")));
  running_.clear();
  station_.receivers.erase(station_.receivers.begin());
  show();
  EXPECT_EQ(card("ONE"), nullptr);
  EXPECT_NE(card("TWO"), nullptr);
}

// Arrow keys on a closed drop-down must not change a setting in passing.
TEST_F(ConfigTab, LeavesClosedDropDownsAlone) {
  gboolean handled = FALSE;
  GtkWidget* combo = control("ONE", "antenna");
  g_signal_emit_by_name(combo, "move-active", GTK_SCROLL_STEP_DOWN, &handled);
  EXPECT_STREQ(gtk_combo_box_get_active_id(GTK_COMBO_BOX(combo)), "A");
  EXPECT_THAT(edits_, IsEmpty());
}

TEST_F(ConfigTab, FitsTheFirstWindowAtEverySize) {
  for (const double factor : {1.0, 1.5, 2.5}) {
    ui_scale::set_factor(factor);
    gtk_window_resize(GTK_WINDOW(window_), ui_scale::scaled(1056), 700);
    EXPECT_TRUE(testing_gui::turn_until([&] {
      return gtk_widget_get_allocated_width(card("ONE")) >= ui_scale::scaled(500);
    })) << factor;
    for (const char* serial : {"ONE", "TWO", "USB"}) {
      int x = 0, y = 0;
      ASSERT_TRUE(gtk_widget_translate_coordinates(card(serial), page_->widget(), 0, 0, &x, &y));
      EXPECT_LE(x + gtk_widget_get_allocated_width(card(serial)), gtk_widget_get_allocated_width(page_->widget()))
          << serial << " at " << factor;
    }
  }
}

}  // namespace
