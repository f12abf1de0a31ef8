#include "gui/config/selection_rows.h"

#include <fmt/format.h>

#include "base/signal_connection.h"
#include "base/text.h"
#include "gui/config/selection_line.h"
#include "gui/kit/dialogs.h"
#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"

namespace gui {
namespace {

using launcher::DeviceStatus;

constexpr const char* no_receiver = "No receiver is listed yet.";

bool ticked(GtkWidget* check) {
  return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(check)) != FALSE;
}

void set_ticked(GtkWidget* check, bool on) {
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(check), on);
}

const launcher::ReceiverChoice* choice_of(const launcher::BandChoices& choices, const std::string& serial) {
  for (const launcher::ReceiverChoice& choice : choices.receivers)
    if (choice.serial == serial) return &choice;
  return nullptr;
}

}  // namespace

SelectionRows::SelectionRows(const ConfigActions& actions, ChangeGuard& guard)
    : actions_(actions), guard_(guard), grid_(base::GObjectPtr<GtkWidget>::share(gtk_grid_new())) {
  gtk_grid_set_column_spacing(GTK_GRID(grid_.get()), 14);
  gtk_grid_set_row_spacing(GTK_GRID(grid_.get()), 6);
  gtk_widget_show(grid_.get());
  rebuild({});
}

SelectionRows::~SelectionRows() {
  const ChangeGuard::Quiet quiet(guard_);
  kit::remove_children(grid_.get());
}

void SelectionRows::rebuild(const std::vector<options::ReceiverProfile>& receivers) {
  const ChangeGuard::Quiet quiet(guard_);
  kit::remove_children(grid_.get());
  rows_.clear();
  int index = 0;
  for (const options::ReceiverProfile& receiver : receivers)
    add_row(index++, receiver);
  if (receivers.empty()) gtk_grid_attach(GTK_GRID(grid_.get()), kit::label(no_receiver, {"muted"}), 0, 0, 1, 1);
}

GtkWidget* SelectionRows::box(const char* text, const char* tooltip, const std::string& serial,
                              const ConfigActions::Tick& set) {
  GtkWidget* check = kit::check_button(text);
  gtk_widget_set_valign(check, GTK_ALIGN_CENTER);
  kit::set_tooltip(check, tooltip);
  base::connect_forever(check, "toggled", [this, check, serial, &set] {
    if (!guard_.quiet()) set(serial, ticked(check));
  });
  return check;
}

void SelectionRows::add_row(int index, const options::ReceiverProfile& receiver) {
  const std::string& serial = receiver.serial;
  const std::string name = base::valid_utf8(receiver.label());
  Row row{};
  row.receiver = receiver;
  row.tick = box(name.c_str(), "", serial, actions_.set_enabled);
  row.line = wrapped_label("");
  gtk_widget_set_hexpand(row.line, TRUE);
  gtk_widget_set_valign(row.line, GTK_ALIGN_CENTER);
  row.spot = box("Spot", spot_tooltip, serial, actions_.set_spot);
  row.share = box("Share", share_tooltip, serial, actions_.set_share);
  row.remove = kit::button("Remove", [this, serial] { ask_to_remove(serial); });
  gtk_widget_set_valign(row.remove, GTK_ALIGN_CENTER);
  for (const auto& [control, text] : {std::pair(row.spot, "Spot"), {row.share, "Share"}, {row.remove, "Remove"}})
    kit::set_accessible(control, fmt::format("{} {}", text, name));
  int column = 0;
  for (GtkWidget* widget : {row.tick, row.line, row.spot, row.share, row.remove})
    gtk_grid_attach(GTK_GRID(grid_.get()), widget, column++, index, 1, 1);
  rows_.emplace(serial, std::move(row));
}

void SelectionRows::ask_to_remove(const std::string& serial) {
  const Row& row = rows_.at(serial);
  GtkWidget* window = gtk_widget_get_toplevel(grid_.get());
  kit::ask(GTK_IS_WINDOW(window) ? GTK_WINDOW(window) : nullptr, removal_question(row.receiver, row.attached),
           [remove = actions_.remove, serial] { remove(serial); });
}

void SelectionRows::show(const StationView& view) {
  const ChangeGuard::Quiet quiet(guard_);
  for (const options::ReceiverProfile& receiver : view.station.receivers)
    if (const auto row = rows_.find(receiver.serial); row != rows_.end()) {
      row->second.receiver = receiver;
      show_row(row->second, view);
    }
}

void SelectionRows::show_row(Row& row, const StationView& view) {
  const options::ReceiverProfile& receiver = row.receiver;
  const std::string& serial = receiver.serial;
  const bool running = view.running.contains(serial);
  const auto listed = view.statuses.find(serial);
  const auto status = listed == view.statuses.end() ? DeviceStatus::missing : listed->second;
  row.attached = running || status != DeviceStatus::missing;
  const std::string name = base::valid_utf8(receiver.label());
  kit::set_button_text(row.tick, listed == view.statuses.end() ? name : with_status(name, status));
  set_ticked(row.tick, receiver.enabled);
  set_ticked(row.spot, receiver.spot);
  set_ticked(row.share, receiver.share);
  const SelectionLine line = selection_line(view.station, receiver, choice_of(view.choices, serial));
  kit::set_text(row.line, line.text);
  kit::set_class(row.line, "warning", line.warning);
  kit::set_class(row.line, "muted", !line.warning);
  kit::set_accessible(row.tick, {}, line.text);
  kit::set_sensitive(row.remove, !running);
  kit::set_tooltip(row.remove, remove_tooltip(running));
}

}  // namespace gui
