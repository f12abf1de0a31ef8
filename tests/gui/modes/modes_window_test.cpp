// The tab as the operator meets it, in the whole launcher.
#include "gui/modes/modes_window.h"

#include <filesystem>
#include <stdlib.h>

#include <gmock/gmock.h>

namespace testing_gui {
namespace {

using ::testing::HasSubstr;

TEST_F(ModesWindow, ABoxIsAnEditThatIsSavedAndItsWidgetStays) {
  open(two_receivers());
  GtkWidget* cell = box("cell", "20", "CW on 20m");
  ASSERT_NE(cell, nullptr);
  EXPECT_EQ(box("cell", "60", "JS8 on 60m"), nullptr) << "no frequency, no box";
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(cell), TRUE);
  settle();
  EXPECT_EQ(box("cell", "20", "CW on 20m"), cell);
  EXPECT_TRUE(gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(cell)));
  const std::string session = setup_.config_directory + "/session.conf";
  ASSERT_TRUE(turn_until([&] { return std::filesystem::exists(session); }, 3));
  EXPECT_THAT(base::read_file(session), HasSubstr("known-band-modes = '40:,30:,20:cw'"));
}

TEST_F(ModesWindow, AMissingDecoderGreysItsColumns) {
  const std::string path = ::getenv("PATH");
  ::setenv("PATH", directory_.c_str(), 1);
  write("js8-wav", "#!/bin/sh\n");
  std::filesystem::permissions(directory_ + "/js8-wav", std::filesystem::perms::owner_all);
  open(two_receivers());
  ::setenv("PATH", path.c_str(), 1);
  GtkWidget* ft8 = box("cell", "20", "FT8 on 20m");
  EXPECT_FALSE(gtk_widget_get_sensitive(ft8));
  EXPECT_THAT(tip(ft8), HasSubstr("not installed"));
  EXPECT_THAT(tip(box("cell", "20", "JS8 on 20m")), ::testing::Not(HasSubstr("not installed")));
}

/// Each button beside the notice does what it says, and the settings follow it.
TEST_F(ModesWindow, TheButtonBesideTheNoticeCures) {
  struct Case {
    const char *settings, *bands, *button, *cured;
    bool startable;  ///< before the cure
  };
  const Case cases[] = {
      {"receiver.A1.sample-rate = 2048000\n", "40,30", "Set Sample rate to Automatic", "sample-rate", false},
      {"receiver.A1.sample-rate = 2048000\n", "40", "Set Sample rate to Automatic", "sample-rate", true},
      {"receiver.A1.center-frequency = 7.1M\n", "40", "Clear Capture center", "center-frequency", true},
      {"receiver.A1.bandwidth = 6k\n", "40", "Clear Channel bandwidth", "bandwidth", false},
      {"receiver.B2.enabled = true\nband.160.receiver = A1\nband.20.receiver = A1\n", "160,20", "Set 160m to Automatic",
       "band.160", false},
  };
  for (const Case& example : cases) {
    SCOPED_TRACE(example.settings);
    open(station(example.settings, example.bands));
    EXPECT_EQ(gtk_widget_is_sensitive(find_button(window(), "Start receivers")), example.startable);
    press(example.button);
    settle();
    EXPECT_TRUE(gtk_widget_is_sensitive(find_button(window(), "Start receivers")));
    ASSERT_TRUE(turn_until([&] { return saved("bands") && !saved(example.cured); }, 3)) << session();
    GtkWidget* button = find_button(window(), example.button);
    EXPECT_TRUE(!button || !gtk_widget_get_visible(button)) << "cured, and still on offer";
    close_app();
    std::filesystem::remove_all(setup_.config_directory);
  }
}

TEST_F(ModesWindow, WhatAnotherTabCuresIsOpened) {
  const struct {
    const char *settings, *button;
    int page;
  } cases[] = {
      {"receiver.A1.lna-state = 31\n", "Open SDR Config", 1},
      {"mode = hybrid\naudio.v = id=v,frequency=50.2M\n", "Open Audio Receivers", 3},
  };
  for (const auto& example : cases) {
    open(station(example.settings, "40"));
    press(example.button);
    EXPECT_EQ(app_->window().current_page(), example.page) << example.settings;
    close_app();
  }
}

TEST_F(ModesWindow, NoCureIsOfferedForAReceiverThatRuns) {
  open(station("receiver.A1.sample-rate = 2048000\n", "40"));
  GtkWidget* button = find_button(window(), "Set Sample rate to Automatic");
  ASSERT_TRUE(button && gtk_widget_get_visible(button));
  press("Start receivers");
  ASSERT_TRUE(turn_until([&] { return !gtk_widget_get_visible(button); }, 3));
  press("Stop");
  ASSERT_TRUE(turn_until([&] { return gtk_widget_get_visible(button) != FALSE; }, 5));
}

}  // namespace
}  // namespace testing_gui
