// The station's settings as the launcher holds them: one profile map, restored at the start and saved by itself.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "base/time_text.h"
#include "base/timer.h"
#include "options/journal.h"
#include "options/profile.h"
#include "options/receiver_store.h"
#include "options/station.h"

namespace options {

/// What the session needs from the launcher around it. All are called on the main thread; none may destroy the session.
struct SessionHooks {
  /// The operator is told something.
  std::function<void(const std::string& text)> report = [](const std::string&) {};
  /// The settings, or what of them is saved, changed: the controls show them anew.
  std::function<void()> changed = [] {};
  /// session.conf was written: the sharing service follows.
  std::function<void()> saved = [] {};
  /// A receiver operation or an audio change is in flight: an autosave waits until it has ended.
  std::function<bool()> busy = [] { return false; };
  /// The window is closing: an autosave does nothing any more.
  std::function<bool()> closing = [] { return false; };
};

/// Where a session lives, and how long it waits.
struct SessionPlace {
  std::string config_directory;  ///< gui.conf, session.conf, receivers.conf
  std::string state_directory;   ///< settings.log, and the default output files
  std::chrono::milliseconds autosave_delay{1000};
  base::Clock clock = base::system_clock();
};

/// Main thread only, on a GLib main loop. Starts with the built-in defaults; at the start of the launcher
/// load_receivers() is called, then restore() or open().
class Session {
 public:
  Session(SessionPlace place, SessionHooks hooks);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// The built-in default profile, with its output files in `state_directory`.
  static Profile default_profile(const std::string& state_directory);

  /// The settings now: always a multi-receiver profile that parse_station accepts.
  [[nodiscard]] const Profile& profile() const { return profile_; }
  /// The same, taken apart, with each receiver's availability as take_inventory() left it.
  [[nodiscard]] Station station() const;
  /// The serials that count as available: in no file, and none before the first take_inventory(). They outlast a change
  /// of the profile.
  [[nodiscard]] const std::set<std::string>& available() const { return available_; }
  /// One value of the profile, or `fallback` where it does not stand.
  [[nodiscard]] std::string value(const std::string& key, const std::string& fallback = {}) const;

  // Edits of the operator: nothing happens when the value is what it was; otherwise the controls are told and an
  // autosave is requested. They throw in the words of parse_station, and then nothing has changed.
  void edit(const std::string& key, const std::string& value);
  void erase(const std::string& key);
  /// Takes the receiver and its pins out of the session; its settings stay in receivers.conf. Unknown serials are
  /// ignored.
  void remove_receiver(const std::string& serial);

  /// Replaces all settings, without an autosave: for what is no edit, and for many keys at once. A single-receiver
  /// profile becomes a station of its one receiver. Throws in the words of parse_station; then nothing has changed.
  void set_profile(const Profile& profile);

  /// Takes over the receivers of a refreshed inventory with their availability. No edit of the operator's: nothing is
  /// saved before the next save(), and settings that were the ones in use still are.
  /// A receiver that this launcher runs has to stay available while it runs, although a listing shows it in use, or the
  /// plan would fail on it: whoever refreshes the inventory names the running ones to launcher::merge_devices(), which
  /// sees to that. Between two refreshes nothing changes here, so a receiver that was started stays what it was.
  void take_inventory(const Station& station);

  /// Arms the autosave, or puts a waiting one off again.
  void request_autosave();
  /// Writes session.conf and, where a receiver's settings changed, receivers.conf and the journal. Throws when
  /// session.conf could not be written; a failure of the rest is reported.
  void save();
  /// Writes the profile to config_path() too, when that is a file of the operator's own choice, so that it follows the
  /// edit. Throws when it could not be written.
  void save_opened();

  /// Reads receivers.conf; a failure is reported, and the store is then empty.
  void load_receivers();
  /// Brings back session.conf, or else gui.conf. What cannot be read is reported, and the first such file is copied to
  /// "{path}.unreadable". With neither, the defaults stay.
  void restore();
  /// Opens a profile as the launcher's own. Throws with the reason; then nothing has changed.
  void open(const std::string& path);

  /// What the operator is to be told in a dialog about settings that could not be loaded; once.
  [[nodiscard]] std::optional<std::string> take_unreadable_note();

  /// The profile that the launcher calls its own.
  [[nodiscard]] const std::string& config_path() const { return config_path_; }

  /// The settings now are the ones in use: saved, started or just loaded.
  void store_fingerprint() { saved_fingerprint_ = fingerprint(); }
  /// Whether the settings differ from those at the last store_fingerprint().
  [[nodiscard]] bool differs() const { return fingerprint() != saved_fingerprint_; }

  /// Every receiver ever saved, also those not in the session.
  [[nodiscard]] const ReceiverStore& receivers() const { return receivers_; }
  /// The journal of setting changes, settings.log.
  [[nodiscard]] const Journal& journal() const { return journal_; }

 private:
  void apply(const Profile& profile);
  void change(const Profile& profile);
  bool restore_from(const char* name);
  void autosave();
  void update_receivers();
  [[nodiscard]] const std::string& fingerprint() const;
  [[nodiscard]] std::string config_file(const char* name) const { return place_.config_directory + "/" + name; }

  SessionPlace place_;
  SessionHooks hooks_;
  Profile profile_;
  std::string config_path_;
  std::string saved_fingerprint_;
  mutable std::optional<std::string> fingerprint_;  ///< of profile_, once asked for
  std::optional<std::string> unreadable_note_;
  std::set<std::string> available_;
  ReceiverStore receivers_;
  bool receivers_unsaved_ = false;  ///< receivers_ holds what receivers.conf does not
  Journal journal_;
  base::Timer autosave_timer_;
};

}  // namespace options
