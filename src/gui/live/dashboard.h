// The dashboard of the Live tabs: one widget tree, moved to whichever of the three tabs is shown.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "base/key_file.h"
#include "base/signal_connection.h"
#include "base/time_text.h"
#include "base/timer.h"
#include "gui/live/activity_card_view.h"
#include "results/activity_model.h"
#include "results/card_layout.h"

namespace gui {

class Dashboard {
 public:
  /// `report` takes what could not be saved, for the log.
  Dashboard(results::ActivityModel& model, base::KeyFile& choices, base::Clock clock,
            std::function<void(const std::string&)> report);
  ~Dashboard();
  Dashboard(const Dashboard&) = delete;
  Dashboard& operator=(const Dashboard&) = delete;

  /// The tab page of a family; the caller appends it to the notebook. Call once per family, before enter().
  [[nodiscard]] GtkWidget* page(results::Family family) const;
  /// The notebook has switched to this family's tab: the tree moves there.
  void enter(results::Family family);
  /// Makes the cards anew if channels or receivers changed.
  void rebuild();
  /// Brings the counters to the present time and puts them on the labels.
  void refresh();
  /// The interface scale changed: every width is measured again.
  void measure_again();

 private:
  void rebuild_cards(std::vector<results::ActivityCard> cards);
  void toggle_fold(const std::string& label);
  void save_folds();
  void lay_out();
  [[nodiscard]] std::vector<int> measured_minimums();

  results::ActivityModel& model_;
  base::KeyFile& choices_;
  base::Clock clock_;
  std::function<void(const std::string&)> report_;

  results::Family family_ = results::Family::ft;
  std::array<GtkWidget*, 3> pages_{};
  GtkWidget* tree_;  ///< the scrolled area, in one of the pages
  GtkWidget* grid_ = nullptr;
  std::vector<results::ActivityCard> shown_;
  bool built_ = false;
  std::vector<std::unique_ptr<ActivityCardView>> cards_;
  std::vector<int> minimums_;
  std::optional<results::CardLayout> layout_;
  std::set<std::string> folded_;
  int width_ = 0;
  base::Timer layout_timer_;
  base::SignalConnection allocated_;
};

}  // namespace gui
