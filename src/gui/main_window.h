// The one window: title, notebook with the totals at its right end, footer.
#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

namespace gui {

class MainWindow {
 public:
  /// `page_shown` gets the index of the page switched to; `close_asked` is run for every attempt to close the window,
  /// which never closes by itself.
  MainWindow(std::function<void(int)> page_shown, std::function<void()> close_asked);
  ~MainWindow();
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  void append_page(const char* tab_label, GtkWidget* page);
  void set_footer(GtkWidget* footer);
  void show_page(int index);
  [[nodiscard]] int current_page() const;
  /// The text at the right end of the tab bar.
  void show_totals(const std::string& text);
  /// Gives the window its first size, scaled and within 90% of the monitor's work area, and shows it.
  void present();

  [[nodiscard]] GtkWindow* window() const { return GTK_WINDOW(window_); }
  [[nodiscard]] GtkNotebook* notebook() const { return GTK_NOTEBOOK(notebook_); }

 private:
  GtkWidget* tab_bar_end();

  GtkWidget* window_;
  GtkWidget* box_;
  GtkWidget* notebook_;
  GtkWidget* update_button_ = nullptr;
  GtkWidget* totals_label_ = nullptr;
  std::function<void(int)> page_shown_;
  std::function<void()> close_asked_;
};

}  // namespace gui
