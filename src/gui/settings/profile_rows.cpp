#include "gui/settings/profile_rows.h"

#include "base/text.h"
#include "gui/kit/widgets.h"
#include "gui/settings/settings_texts.h"

namespace gui {
namespace {

GtkWidget* new_control(const SettingRow& row) {
  if (row.control == RowControl::check) return wrapped_check(row.label);
  if (row.control == RowControl::number)
    return number_button(row.limits.lowest, row.limits.highest, row.limits.step, row.limits.decimals);
  GtkWidget* entry = gtk_entry_new();
  gtk_widget_set_hexpand(entry, TRUE);
  gtk_widget_show(entry);
  return entry;
}

const char* edit_signal(RowControl control) {
  switch (control) {
    case RowControl::check:
      return "toggled";
    case RowControl::number:
      return "value-changed";
    default:
      return "changed";
  }
}

bool is_ticked(GtkWidget* check) {
  return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(check)) != FALSE;
}

std::string entered(GtkWidget* entry) {
  return gtk_entry_get_text(GTK_ENTRY(entry));
}

}  // namespace

ProfileRows::ProfileRows(std::string state_directory, std::function<void(const std::string&)> edited)
    : state_directory_(std::move(state_directory)),
      edited_(std::move(edited)),
      reporting_label_(wrapped_label("", {"small"})) {
  for (const auto& card : setting_cards())
    cards_.push_back(build_card(card));
  show({});
}

GtkWidget* ProfileRows::build_card(const SettingCard& card) {
  GtkWidget* box = kit::card(card.heading);
  SettingGrid grid;
  bool reports = false;
  for (const auto& row : card.rows) {
    build_row(grid, row);
    reports = reports || row.needs_identity;
  }
  kit::add(box, grid.widget());
  if (reports) kit::add(box, reporting_label_);
  kit::add(box, wrapped_label(card.closing_line, {"small"}));
  return box;
}

void ProfileRows::build_row(SettingGrid& grid, const SettingRow& table_row) {
  Row& row = *rows_.emplace_back(std::make_unique<Row>(Row{.row = &table_row, .owner = this}));
  by_key_[table_row.key] = &row;
  row.control = new_control(table_row);
  if (table_row.control == RowControl::check)
    grid.add_wide(row.control);
  else if (table_row.control == RowControl::path)
    row.label = grid.add_below(table_row.label, row.control, table_row.help);
  else
    row.label = grid.add_beside(table_row.label, row.control);
  row.edits =
      base::SignalConnection(row.control, edit_signal(table_row.control), G_CALLBACK(&ProfileRows::changed), &row);
}

void ProfileRows::changed(GtkWidget*, gpointer data) {
  Row& row = *static_cast<Row*>(data);
  ProfileRows& self = *row.owner;
  if (self.own_change_) return;
  if (row.row->needs_identity) row.wanted = is_ticked(row.control);
  self.update();
  self.edited_(row.row->key);
}

std::string ProfileRows::value_of(const Row& row) const {
  switch (row.row->control) {
    case RowControl::check:
      return is_ticked(row.control) ? "true" : "false";
    case RowControl::number:
      return number_text(*row.row, gtk_spin_button_get_value(GTK_SPIN_BUTTON(row.control)));
    default: {
      const std::string text = entered(row.control);
      return text == base::valid_utf8(row.given) ? row.given : std::string(base::trim(text));
    }
  }
}

void ProfileRows::put_value(Row& row, const std::string& value) {
  switch (row.row->control) {
    case RowControl::check:
      gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(row.control), value == "true");
      break;
    case RowControl::number:
      gtk_spin_button_set_value(GTK_SPIN_BUTTON(row.control), g_ascii_strtod(value.c_str(), nullptr));
      break;
    default:
      row.given = value;
      gtk_entry_set_text(GTK_ENTRY(row.control), base::valid_utf8(value).c_str());
  }
}

void ProfileRows::show(const options::Profile& profile) {
  const auto station_before = std::pair(identity(), audio_mode_);
  const auto mode = profile.find("mode");
  audio_mode_ = mode != profile.end() && mode->second == "audio";
  const auto shown = [&](const Row& row) { return shown_value(*row.row, profile, state_directory_); };
  own_change_ = true;
  for (const auto& row : rows_)
    if (value_of(*row) != shown(*row)) put_value(*row, shown(*row));
  own_change_ = false;
  // A tick that waits for its callsign is kept only while the station stays the one that is being typed.
  const bool same_station = station_before == std::pair(identity(), audio_mode_);
  for (const auto& row : rows_)
    if (row->row->needs_identity && !(same_station && shown(*row) == "false" && !may_report()))
      row->wanted = shown(*row) == "true" && may_report();
  update();
}

void ProfileRows::read(options::Profile& profile) const {
  for (const auto& row : rows_)
    write_value(*row->row, value_of(*row), profile);
}

void ProfileRows::set_receiving(bool receiving) {
  receiving_ = receiving;
  update();
}

std::string ProfileRows::identity() const {
  return entered(control("callsign")) + "\n" + entered(control("grid"));
}

bool ProfileRows::identity_valid() const {
  return identity_is_valid(entered(control("callsign")), entered(control("grid")));
}

bool ProfileRows::may_report() const {
  return identity_valid() && !audio_mode_;
}

// Brings everything that follows from the values up to date: ticks, sensitivity, tooltips and the reporting state.
void ProfileRows::update() {
  const bool allowed = may_report();
  own_change_ = true;
  for (const auto& row : rows_) {
    if (row->row->needs_identity) gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(row->control), allowed && row->wanted);
    const RowState state = row_state(*row->row, receiving_, allowed);
    kit::set_sensitive(row->control, state.sensitive);
    kit::set_tooltip(row->control, state.tooltip);
    if (!row->label) continue;
    kit::set_sensitive(row->label, state.sensitive);
    kit::set_tooltip(row->label, state.tooltip);
  }
  own_change_ = false;
  kit::set_text(reporting_label_, reporting_text({audio_mode_, identity_valid(), is_ticked(control("pskreporter"))}));
}

}  // namespace gui
