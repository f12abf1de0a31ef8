// The receivers of the session above their cards: tick, what each carries, Spot, Share, Remove.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "base/gobject_ptr.h"
#include "gui/config/change_guard.h"
#include "gui/config/config_view.h"

namespace gui {

/// Main thread only. Its rows end with it.
class SelectionRows {
 public:
  SelectionRows(const ConfigActions& actions, ChangeGuard& guard);
  SelectionRows(const SelectionRows&) = delete;
  SelectionRows& operator=(const SelectionRows&) = delete;
  ~SelectionRows();

  [[nodiscard]] GtkWidget* widget() const { return grid_.get(); }
  /// Makes a row for each receiver, in order. The rows last until the next call.
  void rebuild(const std::vector<options::ReceiverProfile>& receivers);
  /// Brings the rows up to date; the receivers are those of the last rebuild().
  void show(const StationView& view);

 private:
  struct Row {
    GtkWidget *tick, *line, *spot, *share, *remove;
    options::ReceiverProfile receiver;
    bool attached = false;
  };

  void add_row(int index, const options::ReceiverProfile& receiver);
  GtkWidget* box(const char* text, const char* tooltip, const std::string& serial, const ConfigActions::Tick& set);
  void ask_to_remove(const std::string& serial);
  static void show_row(Row& row, const StationView& view);

  const ConfigActions& actions_;
  ChangeGuard& guard_;
  base::GObjectPtr<GtkWidget> grid_;
  std::map<std::string, Row> rows_;
};

}  // namespace gui
