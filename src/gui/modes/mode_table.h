// The table of bands and modes as widgets.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "gui/modes/coverage_view.h"
#include "gui/modes/table_view.h"

namespace modes_gui {

/// Main thread only. Its boxes carry the data "mt-kind", "mt-row" (a number), "mt-band" and "mt-tip".
class ModeTable {
 public:
  struct Actions {
    std::function<void(const ModeGrid&)> changed;
    std::function<void(std::size_t band, const std::string& serial)> pinned;  ///< empty serial is Automatic
    CoverageView::Actions coverage;
  };

  explicit ModeTable(Actions actions);
  ModeTable(const ModeTable&) = delete;
  ModeTable& operator=(const ModeTable&) = delete;

  [[nodiscard]] GtkWidget* widget() const { return grid_; }
  /// Sets states; widgets are made once. Never a change of the operator's.
  void show(const TableView& view);

 private:
  struct Box {
    GtkWidget* widget = nullptr;
    std::string tip;
  };

  void build();
  void build_head();
  void build_band(std::size_t band);
  void build_all_bands();
  GtkWidget* add_box(Box& box, const char* text, const char* kind, std::size_t row, int column, const char* name,
                     std::function<void()> clicked);
  void build_receivers(std::size_t band);
  void put(Box& box, HeaderState state, bool sensitive, const std::string& tip);
  void change(const std::function<void(ModeGrid&)>& by);
  void show_band(std::size_t band);
  void show_receivers(std::size_t band);
  void show_headers();

  const Actions actions_;
  GtkWidget* grid_;
  TableView view_;
  bool own_change_ = false;
  std::array<Box, band_count> bands_, rows_;
  std::array<std::array<Box, column_count>, band_count> cells_;
  std::array<Box, column_count> columns_;
  std::array<GtkWidget*, band_count> receivers_{};
  std::array<std::string, band_count> receiver_tips_;
  Box every_;
  GtkWidget* all_bands_ = nullptr;
  std::unique_ptr<CoverageView> coverage_;
};

}  // namespace modes_gui
