// The card of one receiver: its meters, the settings of its family, and what is known of its frequency.
#pragma once

#include <map>
#include <string>

#include <gtk/gtk.h>

#include "base/gobject_ptr.h"
#include "gui/config/card_controls_grid.h"
#include "gui/config/config_view.h"

namespace gui {

/// Main thread only. Its widgets end with it.
class ReceiverCard {
 public:
  /// `actions` and `guard` must outlive it.
  ReceiverCard(const options::ReceiverProfile& receiver, launcher::Family family, const ConfigActions& actions,
               ChangeGuard& guard);
  ReceiverCard(const ReceiverCard&) = delete;
  ReceiverCard& operator=(const ReceiverCard&) = delete;
  ~ReceiverCard();

  [[nodiscard]] GtkWidget* widget() const { return card_.get(); }
  void show(const StationView& view);
  /// Takes back what was edited of these settings: the controls show these values. Never an edit.
  void show_applied(const options::Profile& settings);

 private:
  GtkWidget* calibration();
  void edited(const CardControl& control, const std::string& value);
  void settle_pending(const options::Profile& settings);
  void show_controls();

  const std::string serial_;
  const ConfigActions& actions_;
  ChangeGuard& guard_;
  base::GObjectPtr<GtkWidget> card_;
  CardControlsGrid controls_;
  GtkWidget* estimate_;
  CardFacts facts_;
  options::Profile pending_;  ///< live edits that the settings do not have yet
};

}  // namespace gui
