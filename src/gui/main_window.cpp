#include "gui/main_window.h"

#include <algorithm>
#include <cmath>

#include "base/gobject_ptr.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"

namespace gui {
namespace {

constexpr int natural_width = 1120;
constexpr int natural_height = 820;
constexpr double share_of_work_area = 0.9;

GdkRectangle work_area() {
  GdkRectangle area{0, 0, natural_width, natural_height};
  GdkDisplay* display = gdk_display_get_default();
  GdkMonitor* monitor = gdk_display_get_primary_monitor(display);
  if (!monitor) monitor = gdk_display_get_monitor(display, 0);
  if (monitor) gdk_monitor_get_workarea(monitor, &area);
  return area;
}

int wanted_side(int natural, int available) {
  return std::min(static_cast<int>(std::lround(natural * ui_scale::factor())),
                  static_cast<int>(available * share_of_work_area));
}

}  // namespace

MainWindow::MainWindow(std::function<void(int)> page_shown, std::function<void()> close_asked)
    : window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
      box_(kit::vertical_box(16)),
      notebook_(gtk_notebook_new()),
      page_shown_(std::move(page_shown)),
      close_asked_(std::move(close_asked)) {
  gtk_window_set_title(GTK_WINDOW(window_), "Tarnwick · Ostrand");
  gtk_window_set_icon_name(GTK_WINDOW(window_), "tarnwick");
  gtk_window_set_default_size(GTK_WINDOW(window_), natural_width, natural_height);
  gtk_container_set_border_width(GTK_CONTAINER(box_), 22);
  gtk_container_add(GTK_CONTAINER(window_), box_);
  kit::add(box_, kit::line_label("Tarnwick by Ostrand", {"title"}));

  gtk_notebook_set_scrollable(GTK_NOTEBOOK(notebook_), TRUE);
  gtk_notebook_set_action_widget(GTK_NOTEBOOK(notebook_), tab_bar_end(), GTK_PACK_END);
  gtk_widget_show(notebook_);
  kit::add(box_, notebook_, true);
  kit::set_accessible(notebook_, "Station");
  atk_object_add_relationship(gtk_widget_get_accessible(notebook_), ATK_RELATION_DESCRIBED_BY,
                              gtk_widget_get_accessible(totals_label_));

  g_signal_connect(notebook_, "switch-page", G_CALLBACK((+[](GtkNotebook*, GtkWidget*, guint index, gpointer self) {
                     static_cast<MainWindow*>(self)->page_shown_(static_cast<int>(index));
                   })),
                   this);
  g_signal_connect(window_, "delete-event", G_CALLBACK((+[](GtkWidget*, GdkEvent*, gpointer self) -> gboolean {
                     static_cast<MainWindow*>(self)->close_asked_();
                     return GDK_EVENT_STOP;
                   })),
                   this);
}

MainWindow::~MainWindow() {
  // Destroying the notebook switches pages; nobody is there to hear of it.
  page_shown_ = [](int) {};
  gtk_widget_destroy(window_);
}

// At the right end of the tab bar: visible on every tab, and no higher than the tabs.
GtkWidget* MainWindow::tab_bar_end() {
  GtkWidget* box = kit::horizontal_box(10);
  update_button_ = kit::button("Update!", [] {}, {"update"});
  gtk_widget_set_no_show_all(update_button_, TRUE);
  gtk_widget_hide(update_button_);
  totals_label_ = kit::line_label("0 spots  /  0 spots/hr  /  PSKR24: 0", {"metric"});
  kit::add(box, update_button_);
  kit::add(box, totals_label_);
  gtk_widget_set_valign(box, GTK_ALIGN_CENTER);
  return box;
}

void MainWindow::append_page(const char* tab_label, GtkWidget* page) {
  gtk_notebook_append_page(GTK_NOTEBOOK(notebook_), page, kit::line_label(tab_label));
  // Without a name of its own the tab's accessible object asks the notebook for it, also while the page is leaving.
  const int index = gtk_notebook_get_n_pages(GTK_NOTEBOOK(notebook_)) - 1;
  const auto tab =
      base::GObjectPtr<AtkObject>::adopt(atk_object_ref_accessible_child(gtk_widget_get_accessible(notebook_), index));
  if (tab) atk_object_set_name(tab.get(), tab_label);
  kit::set_accessible(page, tab_label);
}

void MainWindow::set_footer(GtkWidget* footer) {
  kit::add(box_, footer);
}

void MainWindow::show_page(int index) {
  gtk_notebook_set_current_page(GTK_NOTEBOOK(notebook_), index);
}

int MainWindow::current_page() const {
  return gtk_notebook_get_current_page(GTK_NOTEBOOK(notebook_));
}

void MainWindow::show_totals(const std::string& text) {
  kit::set_text(totals_label_, text);
  kit::set_accessible(notebook_, {}, text);
}

void MainWindow::present() {
  const GdkRectangle area = work_area();
  gtk_window_resize(GTK_WINDOW(window_), wanted_side(natural_width, area.width),
                    wanted_side(natural_height, area.height));
  gtk_widget_show(window_);
}

}  // namespace gui
