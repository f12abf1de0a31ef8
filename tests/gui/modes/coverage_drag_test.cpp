// The chart of receivers under the operator's hands: by pointer and by keyboard, in the whole launcher.
#include <algorithm>

#include <gmock/gmock.h>

#include "gui/kit/drop_down.h"
#include "gui/modes/modes_window.h"
#include "launcher/catalogue/bands.h"

namespace testing_gui {
namespace {

using ::testing::HasSubstr;

class CoverageDrag : public ModesWindow {
 protected:
  /// Two receivers alike: 40 to 20 m fit one of them, 17 m does not fit beside 40 or 30 m.
  void open_two() {
    use_engine("exec sleep 30", "printf '0: RSP2 serial=ONE available=1\\n1: RSP2 serial=TWO available=1\\n'");
    open(write("station.conf",
               "gui-format = multi-receiver-v1\nmode = decoder\nmodes = FT8\nbands = 40,30,20,17\n"
               "receiver.ONE.enabled = true\nreceiver.ONE.model = RSP2\n"
               "receiver.TWO.enabled = true\nreceiver.TWO.model = RSP2\n"
               "all-txt = " +
                   directory_ + "/ALL.TXT\n"));
  }

  /// The middle of a band's row in the chart; "" is All bands.
  double row_of(const std::string& band) {
    GtkWidget* anchor = band.empty() ? box("every", "", "Every mode on every covered band")
                                     : box("band", band, launcher::band_display_name(band));
    int x = 0, y = 0;
    EXPECT_TRUE(
        gtk_widget_translate_coordinates(anchor, chart(), 0, gtk_widget_get_allocated_height(anchor) / 2, &x, &y));
    return y;
  }
  void pointer(GdkEventType type, int column, double y) {
    GdkEvent* made = gdk_event_new(type);
    GdkWindow* at = gtk_widget_get_window(chart());
    const double width = std::min(gtk_widget_get_allocated_width(chart()) / 2.0, 40.0);
    const double x = (column + 0.5) * width;
    if (type == GDK_MOTION_NOTIFY) {
      made->motion.window = GDK_WINDOW(g_object_ref(at));
      made->motion.x = x;
      made->motion.y = y;
    } else {
      made->button.window = GDK_WINDOW(g_object_ref(at));
      made->button.button = GDK_BUTTON_PRIMARY;
      made->button.x = x;
      made->button.y = y;
    }
    gdk_event_set_device(made, gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())));
    gtk_main_do_event(made);
    gdk_event_free(made);
    settle();
  }
  /// Takes a bar by its first band, or by "" where it waits, and drops it.
  void drag(int column, const std::string& from, const std::string& to) {
    pointer(GDK_BUTTON_PRESS, column, row_of(from));
    EXPECT_THAT(chart_says(), HasSubstr("Held"));
    pointer(GDK_MOTION_NOTIFY, column, row_of(to));
    EXPECT_THAT(chart_says(),
                HasSubstr("Held, aimed at " + (to.empty() ? "All bands" : launcher::band_display_name(to))));
    pointer(GDK_BUTTON_RELEASE, column, row_of(to));
    EXPECT_THAT(chart_says(), ::testing::Not(HasSubstr("Held")));
  }
  void key(guint value) {
    GdkEvent* made = gdk_event_new(GDK_KEY_PRESS);
    made->key.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(window())));
    made->key.keyval = value;
    GdkKeymapKey* places = nullptr;
    gint count = 0;
    gdk_keymap_get_entries_for_keyval(gdk_keymap_get_for_display(gdk_display_get_default()), value, &places, &count);
    if (count > 0) made->key.hardware_keycode = static_cast<guint16>(places[0].keycode);
    g_free(places);
    gdk_event_set_device(made, gdk_seat_get_keyboard(gdk_display_get_default_seat(gdk_display_get_default())));
    gtk_main_do_event(made);
    gdk_event_free(made);
    settle();
  }
  /// What the chart says that a receiver carries.
  std::string carried(const std::string& serial) {
    const std::string says = chart_says();
    const auto begin = says.find(serial + ": ") + serial.size() + 2;
    return says.substr(begin, says.find('.', begin) - begin);
  }
  /// What the drop-downs of the bands say: "20:TWO" for each that is not Automatic.
  std::string pins() {
    std::string text;
    for (const auto& preset : launcher::band_presets) {
      const std::string band(preset.name);
      const std::string name = "Receiver of " + launcher::band_display_name(band);
      const auto found = find_all(window(), [&](GtkWidget* widget) {
        return GTK_IS_COMBO_BOX(widget) && atk_object_get_name(gtk_widget_get_accessible(widget)) == name;
      });
      const std::string serial = found.empty() ? "no drop-down" : kit::chosen(found.front());
      if (!serial.empty()) text += (text.empty() ? "" : " ") + band + ":" + serial;
    }
    return text;
  }
  bool note(const std::string& text) { return shows(text); }
};

TEST_F(CoverageDrag, ByPointer) {
  open_two();
  ASSERT_EQ(carried("ONE"), "40m, 30m and 20m");
  ASSERT_EQ(carried("TWO"), "17m");

  drag(1, "17", "6");
  EXPECT_TRUE(shows("6m is not ticked"));
  EXPECT_EQ(pins(), "");
  pointer(GDK_BUTTON_PRESS, 1, row_of("17"));
  EXPECT_FALSE(shows("6m is not ticked")) << "the note of the last drag goes with the next";
  pointer(GDK_BUTTON_RELEASE, 1, row_of("17"));
  EXPECT_EQ(pins(), "") << "dropped where it was taken";

  drag(1, "17", "20");
  EXPECT_EQ(pins(), "20:TWO 17:TWO") << "it keeps the band it had";
  EXPECT_EQ(carried("ONE"), "40m and 30m");
  drag(0, "40", "17");
  EXPECT_EQ(carried("ONE"), "17m") << "40 and 30 m do not fit beside it, and all are still carried";
  EXPECT_EQ(carried("TWO"), "40m, 30m and 20m") << "placed again";
  drag(0, "17", "");
  EXPECT_EQ(pins().find("ONE"), std::string::npos) << pins();
  drag(1, "20", "");
  EXPECT_EQ(pins(), "");
  ASSERT_TRUE(turn_until([&] { return saved("bands") && !saved("band.20.receiver"); }, 3)) << session();
}

TEST_F(CoverageDrag, ByKeyboard) {
  open_two();
  gtk_widget_grab_focus(chart());
  key(GDK_KEY_Right);
  key(GDK_KEY_Return);
  EXPECT_THAT(chart_says(), HasSubstr("TWO: 17m. Held, aimed at 17m."));
  key(GDK_KEY_Down);
  EXPECT_THAT(chart_says(), HasSubstr("Held, aimed at 15m"));
  key(GDK_KEY_Escape);
  EXPECT_EQ(pins(), "");
  EXPECT_THAT(chart_says(), ::testing::Not(HasSubstr("Held")));
  key(GDK_KEY_space);
  key(GDK_KEY_Up);
  key(GDK_KEY_Return);
  EXPECT_EQ(pins(), "20:TWO 17:TWO");
  EXPECT_EQ(carried("TWO"), "20m and 17m");
  EXPECT_TRUE(gtk_widget_has_focus(chart())) << "the keyboard stays with the chart";
}

TEST_F(CoverageDrag, AHoldOutlivesTheHoverAndNotTheFocus) {
  open_two();
  pointer(GDK_BUTTON_PRESS, 1, row_of("17"));
  GdkEvent* leave = gdk_event_new(GDK_LEAVE_NOTIFY);
  leave->crossing.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(chart())));
  gdk_event_set_device(leave, gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())));
  gtk_main_do_event(leave);
  gdk_event_free(leave);
  EXPECT_THAT(chart_says(), HasSubstr("Held"));
  pointer(GDK_BUTTON_RELEASE, 1, row_of("17"));
  gtk_widget_grab_focus(chart());
  key(GDK_KEY_Return);
  EXPECT_THAT(chart_says(), HasSubstr("Held"));
  key(GDK_KEY_Tab);
  EXPECT_THAT(chart_says(), ::testing::Not(HasSubstr("Held")));
}

}  // namespace
}  // namespace testing_gui
