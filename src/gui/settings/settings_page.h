// The Settings tab.
#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

#include "base/key_file.h"
#include "gui/settings/kept_choices.h"
#include "gui/settings/profile_rows.h"

namespace gui {

/// What the tab needs from the launcher around it.
struct SettingsSurroundings {
  base::KeyFile& choices;                     ///< the launcher's display choices; outlives the page
  std::string state_directory;                ///< where ALL.TXT and the history are unless the profile says otherwise
  std::string autostart_directory;            ///< the desktop's
  std::string executable = own_executable();  ///< what the sign-in entry opens
  /// The operator changed the control of this profile key.
  std::function<void(const std::string& key)> edited = [](const std::string&) {};
  /// A choice could not be kept; the text is for the operator.
  std::function<void(const std::string& text)> show_error = [](const std::string&) {};
};

/// Main thread only. Must end before the window that its widget is in.
class SettingsPage {
 public:
  explicit SettingsPage(SettingsSurroundings surroundings);

  [[nodiscard]] GtkWidget* widget() const { return page_; }
  /// The control of a profile key; throws std::out_of_range for a key without one.
  [[nodiscard]] GtkWidget* control(const std::string& key) const { return rows_.control(key); }

  /// Puts the profile on the controls, with the defaults for keys that it lacks. Never an edit.
  void show(const options::Profile& profile) { rows_.show(profile); }
  /// Puts the controls into the profile; keys without a control stay.
  void read(options::Profile& profile) const { rows_.read(profile); }
  /// While receivers run, what they would have to be stopped for is off.
  void set_receiving(bool receiving) { rows_.set_receiving(receiving); }
  /// The tab is shown: choices that others may have changed are read again.
  void activate() { kept_.show(); }

 private:
  GtkWidget* page_;
  ProfileRows rows_;
  KeptChoices kept_;
};

}  // namespace gui
