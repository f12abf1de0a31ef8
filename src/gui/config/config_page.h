// The SDR Config tab: the receivers of the session, a card for each, and the defaults of new ones.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtk/gtk.h>

#include "gui/config/config_view.h"
#include "gui/config/receiver_card.h"
#include "gui/config/selection_rows.h"

namespace gui {

/// Main thread only.
class ConfigPage {
 public:
  explicit ConfigPage(ConfigActions actions, MeterSource meters = {});
  ConfigPage(const ConfigPage&) = delete;
  ConfigPage& operator=(const ConfigPage&) = delete;
  ~ConfigPage();

  [[nodiscard]] GtkWidget* widget() const { return page_; }
  /// A box above the rows, for what looks for receivers.
  [[nodiscard]] GtkWidget* header() const { return header_; }

  /// Puts the station on the controls; never an edit. Cards are made anew only when the set of receivers changed.
  void show(const StationView& view);
  /// The engine refused live edits: the controls that were edited return to these values. Never an edit; unknown
  /// serials are ignored.
  void show_applied(const std::string& serial, const options::Profile& settings);
  /// There is a new reading of this receiver: its card alone is drawn. Unknown serials are ignored.
  void show_meters(const std::string& serial);
  /// Some meter is on the screen.
  [[nodiscard]] bool meters_shown() const;

 private:
  using Receivers = std::vector<std::pair<std::string, std::string>>;  ///< serial, and what else makes its card

  void rebuild(const options::Station& station);
  void show_defaults(const StationView& view);

  const ConfigActions actions_;
  const MeterSource meters_;
  ChangeGuard guard_;
  GtkWidget* page_;
  GtkWidget* header_;
  SelectionRows rows_;
  GtkWidget* cards_box_;
  std::map<std::string, std::unique_ptr<ReceiverCard>> cards_;
  base::GObjectPtr<GtkWidget> defaults_;
  CardControlsGrid default_controls_;
  Receivers shown_;
};

}  // namespace gui
