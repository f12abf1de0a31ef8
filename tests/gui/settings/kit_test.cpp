// The scale, the theme and the scroll filter, on a display.
#include <clocale>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include "gui/kit/scroll_filter.h"
#include "gui/kit/theme.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace {

class Kit : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    ASSERT_TRUE(gtk_init_check(nullptr, nullptr));
    std::setlocale(LC_NUMERIC, "C");
    g_log_set_always_fatal(GLogLevelFlags(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    kit::load_theme();
    kit::install_scroll_filter();
  }
  void TearDown() override { ui_scale::set_factor(1); }

  static void settle() {
    while (gtk_events_pending())
      gtk_main_iteration_do(FALSE);
  }
};

std::pair<int, int> requested(GtkWidget* widget) {
  std::pair<int, int> size;
  gtk_widget_get_size_request(widget, &size.first, &size.second);
  return size;
}

TEST_F(Kit, ScaleFollowsTheChoice) {
  const struct {
    int percent, window_scale;
    double factor;
  } fixed[] = {{100, 1, 1}, {250, 1, 2.5}, {300, 1, 2.5}, {150, 2, 0.75}, {100, 4, 0.5}, {125, 0, 1.25}};
  for (const auto& c : fixed)
    EXPECT_EQ(ui_scale::fixed_factor(c.percent, c.window_scale), c.factor) << c.percent;
  const struct {
    int dpi;
    double factor;
  } automatic[] = {{-1, 1}, {0, 1}, {72 * 1024, 1}, {96 * 1024, 1}, {120 * 1024, 1.25}, {960 * 1024, 2.5}};
  for (const auto& c : automatic)
    EXPECT_EQ(ui_scale::automatic_factor(c.dpi), c.factor) << c.dpi;
}

TEST_F(Kit, ScaleResizesWhatIsRegisteredAndTellsListeners) {
  GtkWidget* window = gtk_offscreen_window_new();
  GtkWidget* box = kit::vertical_box(0);
  gtk_container_add(GTK_CONTAINER(window), box);
  ui_scale::add_size(box, 500, -1);
  EXPECT_EQ(requested(box), std::pair(500, -1));
  int calls = 0;
  {
    const ui_scale::Listener listener([&] { ++calls; });
    ui_scale::set_factor(1.25);
    EXPECT_EQ(requested(box), std::pair(625, -1));
    ui_scale::set_factor(1.2504);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(ui_scale::factor(), 1.25);
    ui_scale::set_factor(9);
    EXPECT_EQ(ui_scale::factor(), 2.5);
  }
  gtk_widget_destroy(window);
  ui_scale::set_factor(1.5);
  EXPECT_EQ(calls, 2);
}

TEST_F(Kit, ScaleFollowsTheTextSizeUntilTheWindowGoes) {
  GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  int percent = 0;
  ui_scale::follow_window(GTK_WINDOW(window), [&] { return percent; });
  GtkSettings* settings = gtk_settings_get_default();
  g_object_set(settings, "gtk-xft-dpi", 144 * 1024, nullptr);
  EXPECT_EQ(ui_scale::factor(), 1.5);
  EXPECT_EQ(ui_scale::automatic_percent(), 150);
  percent = 200;
  gtk_widget_show(window);
  settle();
  EXPECT_EQ(ui_scale::factor(), 2);
  gtk_widget_destroy(window);
  percent = 0;
  g_object_set(settings, "gtk-xft-dpi", 96 * 1024, nullptr);
  EXPECT_EQ(ui_scale::factor(), 2);
}

// The computed size of the text proves that the sheet is above the desktop's theme, and scaled as a whole.
TEST_F(Kit, ThemeIsInForceAndScales) {
  GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
  const auto font_size = [&] {
    double size = 0;
    gtk_style_context_get(gtk_widget_get_style_context(window), GTK_STATE_FLAG_NORMAL, "font-size", &size, nullptr);
    return size;
  };
  EXPECT_EQ(font_size(), 13);
  ui_scale::set_factor(1.5);
  EXPECT_EQ(font_size(), 19.5);
  gtk_widget_destroy(window);
  try {
    kit::load_theme("window { colour: red; }");
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_THAT(error.what(), testing::HasSubstr("Theme: ")) << error.what();
  }
}

class ScrollFilter : public Kit {
 protected:
  void SetUp() override {
    window_ = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    box_ = kit::vertical_box(4);
    area_ = kit::scrolled(box_);
    gtk_container_add(GTK_CONTAINER(window_), area_);
    combo_ = gtk_combo_box_text_new();
    for (const char* entry : {"a", "b", "c"})
      gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(combo_), entry);
    gtk_combo_box_set_active(GTK_COMBO_BOX(combo_), 1);
    spin_ = gtk_spin_button_new_with_range(0, 10, 1);
    gtk_spin_button_set_value(GTK_SPIN_BUTTON(spin_), 5);
    slider_ = gtk_scale_new_with_range(GTK_ORIENTATION_HORIZONTAL, 0, 10, 1);
    gtk_range_set_value(GTK_RANGE(slider_), 5);
    label_ = kit::label("words");
    for (GtkWidget* widget : {combo_, spin_, slider_, label_})
      kit::add(box_, widget);
    GtkWidget* tall = kit::label("");
    gtk_widget_set_size_request(tall, -1, 4000);
    kit::add(box_, tall);
    gtk_window_set_default_size(GTK_WINDOW(window_), 300, 300);
    gtk_widget_show_all(window_);
    settle();
  }
  void TearDown() override {
    gtk_widget_destroy(window_);
    Kit::TearDown();
  }

  // The window below `parent` that belongs to the widget or to a part of it; null if it has none of its own.
  static GdkWindow* own_window(GdkWindow* parent, GtkWidget* widget) {
    gpointer owner = nullptr;
    gdk_window_get_user_data(parent, &owner);
    if (owner && (owner == widget || gtk_widget_is_ancestor(GTK_WIDGET(owner), widget))) return parent;
    for (GList* child = gdk_window_peek_children(parent); child; child = child->next)
      if (GdkWindow* found = own_window(GDK_WINDOW(child->data), widget)) return found;
    return nullptr;
  }

  // As the display server would send it.
  void scroll(GtkWidget* over) {
    GdkWindow* target = own_window(gtk_widget_get_window(window_), over);
    if (!target) target = gtk_widget_get_window(over);
    GdkEvent* event = gdk_event_new(GDK_SCROLL);
    event->scroll.window = GDK_WINDOW(g_object_ref(target));
    event->scroll.direction = GDK_SCROLL_DOWN;
    gdk_event_set_device(event, gdk_seat_get_pointer(gdk_display_get_default_seat(gdk_display_get_default())));
    gdk_display_put_event(gdk_display_get_default(), event);
    gdk_event_free(event);
    settle();
  }

  double position() {
    return gtk_adjustment_get_value(gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(area_)));
  }

  GtkWidget *window_, *area_, *box_, *combo_, *spin_, *slider_, *label_;
};

TEST_F(ScrollFilter, GivesTheWheelToThePage) {
  double before = position();
  for (GtkWidget* over : {combo_, spin_, slider_, label_}) {
    scroll(over);
    EXPECT_GT(position(), before) << G_OBJECT_TYPE_NAME(over);
    before = position();
  }
  EXPECT_EQ(gtk_combo_box_get_active(GTK_COMBO_BOX(combo_)), 1);
  EXPECT_EQ(gtk_spin_button_get_value(GTK_SPIN_BUTTON(spin_)), 5);
  EXPECT_EQ(gtk_range_get_value(GTK_RANGE(slider_)), 5);
}

TEST_F(ScrollFilter, LeavesAModalDialogInCharge) {
  GtkWidget* dialog = gtk_dialog_new();
  gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
  gtk_widget_show(dialog);
  settle();
  scroll(spin_);
  EXPECT_EQ(position(), 0);
  EXPECT_EQ(gtk_spin_button_get_value(GTK_SPIN_BUTTON(spin_)), 5);
  gtk_widget_destroy(dialog);
}

}  // namespace
