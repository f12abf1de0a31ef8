// The choices that are kept beside the profile, each as soon as it is made: the phone app, what happens when the
// launcher is opened, and the interface size.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "base/key_file.h"
#include "base/signal_connection.h"
#include "base/timer.h"
#include "gui/kit/ui_scale.h"
#include "gui/settings/autostart_entry.h"

namespace gui {

/// The interface size kept in the launcher's key file, in percent; 0 for automatic.
int kept_interface_size(const base::KeyFile& choices);

/// Main thread only. A choice that cannot be kept is told through `show_error`, and its control goes back.
class KeptChoices {
 public:
  /// `choices` must outlive this object.
  KeptChoices(base::KeyFile& choices, Autostart autostart, std::function<void(const std::string&)> show_error);
  ~KeptChoices();
  KeptChoices(const KeptChoices&) = delete;
  KeptChoices& operator=(const KeptChoices&) = delete;

  // New cards, floating; each is built once.
  GtkWidget* phone_card();
  GtkWidget* opening_card();
  GtkWidget* display_card();

  /// Reads the choices again: another launcher, or the desktop's own settings, may have changed them.
  void show();

 private:
  struct Choice {
    KeptChoices* owner;
    const char* signal;          ///< of the control, when its value changes
    std::function<void()> show;  ///< puts the kept value on the control
    std::function<void()> keep;  ///< keeps the control's value; throws the reason
    const char* failure;         ///< what the reason is told with
    std::chrono::milliseconds delay{0};
    base::Timer waiting = {};
    base::SignalConnection changes = {};
  };

  void add_choice(GtkWidget* control, Choice choice);
  void add_tick(GtkWidget* check, const char* group, const char* key, const char* failure);
  void show(const Choice& choice);
  void changed(Choice& choice);
  void keep(const Choice& choice);
  void show_interface_size();
  void keep_interface_size();
  void label_automatic_size();

  base::KeyFile& choices_;
  const Autostart autostart_;
  const std::function<void(const std::string&)> show_error_;
  std::vector<std::unique_ptr<Choice>> kept_;
  GtkWidget* interface_size_ = nullptr;
  bool own_change_ = false;
  base::SignalConnection text_size_;
  ui_scale::Listener scale_;
};

}  // namespace gui
