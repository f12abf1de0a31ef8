// The tab as the operator meets it, in the whole launcher.
#include <filesystem>
#include <stdlib.h>

#include <gmock/gmock.h>

#include "base/file_write.h"
#include "gui/station_fixture.h"

namespace testing_gui {
namespace {

using ::testing::HasSubstr;

class ModesWindow : public StationTest {
 protected:
  GtkWidget* box(const std::string& kind, const std::string& band, const std::string& name) {
    const auto found = find_all(window(), [&](GtkWidget* widget) {
      const auto* its_kind = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-kind"));
      const auto* its_band = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-band"));
      const char* its_name = its_kind ? atk_object_get_name(gtk_widget_get_accessible(widget)) : nullptr;
      return its_kind && kind == its_kind && (its_band ? its_band : "") == band && its_name && name == its_name;
    });
    return found.empty() ? nullptr : found.front();
  }
  GtkWidget* chart() {
    const auto found = find_all(window(), [](GtkWidget* widget) {
      const char* name = atk_object_get_name(gtk_widget_get_accessible(widget));
      return GTK_IS_DRAWING_AREA(widget) && name && std::string(name) == "Receiver coverage";
    });
    return found.empty() ? nullptr : found.front();
  }
  std::string chart_says() { return atk_object_get_description(gtk_widget_get_accessible(chart())); }
  static std::string tip(GtkWidget* widget) {
    return static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-tip"));
  }
};

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

TEST_F(ModesWindow, TheChartIsReachedByKeyboard) {
  open(two_receivers());
  ASSERT_NE(chart(), nullptr);
  EXPECT_TRUE(gtk_widget_get_can_focus(chart()));
  EXPECT_THAT(chart_says(), HasSubstr("1 · RSPdx · A1"));
}

}  // namespace
}  // namespace testing_gui
