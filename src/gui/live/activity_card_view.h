// One receiver's card on a Live tab.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "results/activity_cards.h"
#include "results/activity_model.h"

namespace gui {

/// The widgets of one card. They belong to the container that widget() is put into and live as long as it does.
class ActivityCardView {
 public:
  /// `toggled` is run by a click on the fold button.
  ActivityCardView(results::ActivityCard card, std::function<void()> toggled);

  /// Puts the counters on the labels.
  void refresh(const results::ActivityModel& model);
  void fold(bool folded);

  [[nodiscard]] GtkWidget* widget() const { return box_; }
  [[nodiscard]] const std::string& label() const { return card_.label; }

 private:
  struct Row {
    std::string key;
    GtkWidget* spots;
    GtkWidget* decodes;
    GtkWidget* callsigns;
    GtkWidget* average;
  };

  GtkWidget* make_head(std::function<void()> toggled);
  void make_grid();
  void make_row(int index, const results::ActivityRow& row);
  GtkWidget* cell(int column, int row, const std::string& text, std::initializer_list<const char*> classes);

  results::ActivityCard card_;
  GtkWidget* box_;
  GtkWidget* fold_button_ = nullptr;
  GtkWidget* sum_ = nullptr;
  GtkWidget* body_ = nullptr;  ///< what folding hides
  std::vector<Row> rows_;
};

}  // namespace gui
