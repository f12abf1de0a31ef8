// The weather fax stations as widgets.
#pragma once

#include <functional>
#include <vector>

#include <gtk/gtk.h>

#include "gui/modes/fax_block.h"

namespace modes_gui {

/// Main thread only. Its boxes carry the data "mt-kind", "mt-row" (the station's place) and "mt-tip".
class FaxView {
 public:
  explicit FaxView(std::function<void(const FaxIds&)> changed);
  FaxView(const FaxView&) = delete;
  FaxView& operator=(const FaxView&) = delete;

  [[nodiscard]] GtkWidget* widget() const { return card_; }
  /// Sets states; widgets are made once. Never a change of the operator's.
  /// `by_band`: the known-frequency modes differ from band to band, and only frequencies inside a band are decoded.
  void show(const FaxIds& ticked, bool by_band);

 private:
  struct Box {
    GtkWidget* widget;
    const FaxStation* station;  ///< null with an empty id: every station
    std::string id;             ///< of one frequency; empty for a whole station
  };

  void add_station(GtkWidget* grid, int row, const FaxStation& station);
  GtkWidget* add_box(const std::string& text, const char* kind, int row, const std::string& tip, Box box);
  void pressed(const Box& box);

  const std::function<void(const FaxIds&)> changed_;
  GtkWidget* card_;
  GtkWidget* summary_;
  std::vector<Box> boxes_;
  FaxIds ticked_;
  bool own_change_ = false;
};

}  // namespace modes_gui
