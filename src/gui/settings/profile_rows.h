// The controls of the station's settings: the cards of setting_cards() as widgets.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "base/signal_connection.h"
#include "gui/settings/setting_grid.h"
#include "gui/settings/settings_rows.h"

namespace gui {

/// Main thread only.
class ProfileRows {
 public:
  /// `edited` gets the key of a control that the operator changed; nothing that this class changes by itself is an
  /// edit. It may call back.
  ProfileRows(std::string state_directory, std::function<void(const std::string& key)> edited);
  ProfileRows(const ProfileRows&) = delete;
  ProfileRows& operator=(const ProfileRows&) = delete;

  /// The cards, in the order of setting_cards(); floating until the caller puts them somewhere.
  [[nodiscard]] const std::vector<GtkWidget*>& cards() const { return cards_; }
  /// The control of a key; throws std::out_of_range for a key without one.
  [[nodiscard]] GtkWidget* control(const std::string& key) const { return by_key_.at(key)->control; }

  /// Puts the profile on the controls. A control that already stands for its value is left alone, so that what is being
  /// typed stays as it was typed.
  void show(const options::Profile& profile);
  /// Puts the controls into the profile: the keys of all rows are set or erased, others stay.
  void read(options::Profile& profile) const;
  void set_receiving(bool receiving);

 private:
  struct Row {
    const SettingRow* row;
    ProfileRows* owner;
    GtkWidget* label = nullptr;  ///< null for a check, which carries it itself
    GtkWidget* control = nullptr;
    std::string given = {};  ///< a text's bytes as shown: what cannot be displayed is written back as it came
    bool wanted = false;     ///< a reporting row's tick; it comes back when a half-typed callsign is whole again
    base::SignalConnection edits = {};
  };

  GtkWidget* build_card(const SettingCard& card);
  void build_row(SettingGrid& grid, const SettingRow& row);
  static void changed(GtkWidget* control, gpointer row);
  void put_value(Row& row, const std::string& value);
  [[nodiscard]] std::string value_of(const Row& row) const;
  [[nodiscard]] std::string identity() const;
  [[nodiscard]] bool identity_valid() const;
  [[nodiscard]] bool may_report() const;
  void update();

  const std::string state_directory_;
  const std::function<void(const std::string&)> edited_;
  std::vector<GtkWidget*> cards_;
  std::vector<std::unique_ptr<Row>> rows_;
  std::map<std::string, Row*> by_key_;
  GtkWidget* reporting_label_;
  bool own_change_ = false;
  bool receiving_ = false;
  bool audio_mode_ = false;
};

}  // namespace gui
