// The Modes / Frequencies tab: what to listen for, band by band, and which receiver takes it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include <gtk/gtk.h>

#include "base/background.h"
#include "gui/modes/fax_view.h"
#include "gui/modes/mode_table.h"
#include "launcher/band_choices.h"
#include "options/station.h"

namespace modes_gui {

/// What the tab needs from the launcher around it.
struct ModesSurroundings {
  /// The settings now, with which receivers are available.
  std::function<options::Station()> station;
  std::function<ReceiverStates()> receivers = [] { return ReceiverStates(); };
  /// The operator's change: the settings become these, are saved, and show() follows.
  std::function<void(const options::Station& changed)> change;
  std::function<void()> open_sdr_config = [] {};
  std::function<void()> open_audio_receivers = [] {};
};

/// Main thread only. Must end before the window that its widget is in; its jobs do not call back after it.
class ModesTab {
 public:
  explicit ModesTab(ModesSurroundings surroundings);
  ModesTab(const ModesTab&) = delete;
  ModesTab& operator=(const ModesTab&) = delete;

  [[nodiscard]] GtkWidget* widget() const { return page_; }
  /// Takes the settings and how the receivers stand anew. Does nothing when neither changed.
  void show();
  /// The tab is opened: decoder programs may have been installed meanwhile.
  void activate();

 private:
  void build_notice(GtkWidget* card);
  void change(const options::Station& changed);
  void take_grid(const ModeGrid& grid);
  void pin(std::size_t band, const std::string& serial);
  void move(const Drag::Drop& drop);
  void press_fix();
  void choose();
  void choose_in_background();
  void render();
  void set_note(const std::string& note);

  const ModesSurroundings around_;
  GtkWidget* page_;
  std::unique_ptr<ModeTable> table_;
  std::unique_ptr<FaxView> fax_;
  GtkWidget* note_;
  GtkWidget* notice_;
  GtkWidget* fix_button_;
  options::Station station_;
  ReceiverStates receivers_;
  bool shown_ = false;
  launcher::BandChoices choices_;
  options::Station chosen_for_;  ///< what choices_ answers
  bool choosing_ = false;        ///< a job is under way; it is asked again when its answer is outdated
  ModeGrid grid_;                ///< as changed by hand, so that it remembers what came by a box
  Notice notice_shown_;
  base::Liveness alive_;
};

}  // namespace modes_gui
