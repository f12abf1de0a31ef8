// The card of one receiver: its meters, the settings of its family, and what is known of its frequency.
#pragma once

#include <map>
#include <string>

#include <gtk/gtk.h>

#include "base/gobject_ptr.h"
#include "gui/config/card_controls_grid.h"
#include "gui/config/config_view.h"
#include "gui/config/meter_strip.h"

namespace gui {

/// Main thread only. Its widgets end with it.
class ReceiverCard {
 public:
  /// `actions`, `meters` and `guard` must outlive it.
  ReceiverCard(const options::ReceiverProfile& receiver, launcher::Family family, const ConfigActions& actions,
               const MeterSource& meters, ChangeGuard& guard);
  ReceiverCard(const ReceiverCard&) = delete;
  ReceiverCard& operator=(const ReceiverCard&) = delete;
  ~ReceiverCard();

  [[nodiscard]] GtkWidget* widget() const { return card_.get(); }
  void show(const StationView& view);
  /// The engine refused live edits, and runs with these settings: what was edited returns to them, but for edits that
  /// are among them. Never an edit.
  void show_applied(const options::Profile& settings);
  /// Puts the newest readings on the meters and what follows them, now or when they come to the screen. Never an edit.
  void show_meters();
  [[nodiscard]] bool meters_mapped() const { return strip_.mapped(); }

 private:
  GtkWidget* calibration();
  void edited(const CardControl& control, const std::string& value);
  void settle_pending();

  const std::string serial_;
  const ConfigActions& actions_;
  const MeterSource& meters_;
  ChangeGuard& guard_;
  base::GObjectPtr<GtkWidget> card_;
  MeterStrip strip_;
  CardControlsGrid controls_;
  GtkWidget* estimate_;
  options::Profile saved_;    ///< its effective settings
  CardFacts facts_;           ///< with the settings as the controls show them
  options::Profile pending_;  ///< live edits that the settings do not have yet
};

}  // namespace gui
