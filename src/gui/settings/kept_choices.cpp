#include "gui/settings/kept_choices.h"

#include <algorithm>

#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"
#include "gui/settings/settings_texts.h"

namespace gui {
namespace {

constexpr int default_port = 7373;
// A held arrow of the spin button passes many ports.
constexpr auto port_delay = std::chrono::milliseconds(1000);
constexpr const char* size_group = "Display";
constexpr const char* size_key = "interface-size";
constexpr const char* phone_failure = "Cannot save the phone app setting: ";
constexpr const char* no_phone_server = "This version does not run the phone app server yet.";

bool is_ticked(GtkWidget* check) {
  return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(check)) != FALSE;
}

void tick(GtkWidget* check, bool on) {
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(check), on);
}

void add_token_row(SettingGrid& grid) {
  GtkWidget* token = gtk_entry_new();
  gtk_entry_set_max_length(GTK_ENTRY(token), 8);
  gtk_widget_set_hexpand(token, TRUE);
  GtkWidget* set = kit::button("Set token", [] {});
  GtkWidget* row = kit::horizontal_box(8);
  kit::add(row, token, true);
  kit::add(row, set);
  gtk_widget_show(token);
  for (GtkWidget* widget : {token, set}) {
    kit::set_sensitive(widget, false);
    kit::set_tooltip(widget, no_phone_server);
  }
  kit::name_by_label(grid.add_beside("Token", row), token);
}

}  // namespace

int kept_interface_size(const base::KeyFile& choices) {
  return interface_size_percent(choices.get(size_group, size_key, "auto"));
}

KeptChoices::KeptChoices(base::KeyFile& choices, Autostart autostart,
                         std::function<void(const std::string&)> show_error)
    : choices_(choices), autostart_(std::move(autostart)), show_error_(std::move(show_error)) {}

KeptChoices::~KeptChoices() {
  for (const auto& choice : kept_)
    if (choice->waiting.armed()) keep(*choice);
}

void KeptChoices::add_choice(GtkWidget* control, Choice new_choice) {
  Choice& choice = *kept_.emplace_back(std::make_unique<Choice>(std::move(new_choice)));
  show(choice);
  choice.changes = base::SignalConnection(control, choice.signal, G_CALLBACK((+[](GtkWidget*, gpointer data) {
                                            Choice& self = *static_cast<Choice*>(data);
                                            self.owner->changed(self);
                                          })),
                                          &choice);
}

void KeptChoices::show(const Choice& choice) {
  own_change_ = true;
  choice.show();
  own_change_ = false;
}

void KeptChoices::show() {
  for (const auto& choice : kept_)
    if (!choice->waiting.armed()) show(*choice);
}

void KeptChoices::changed(Choice& choice) {
  if (own_change_) return;
  if (choice.delay.count() == 0) return keep(choice);
  choice.waiting = base::Timer::once(choice.delay, [this, &choice] { keep(choice); });
}

void KeptChoices::keep(const Choice& choice) {
  try {
    choice.keep();
  } catch (const std::exception& error) {
    show(choice);
    show_error_(choice.failure + std::string(error.what()));
  }
}

void KeptChoices::add_tick(GtkWidget* check, const char* group, const char* key, const char* failure) {
  add_choice(check, {.owner = this,
                     .signal = "toggled",
                     .show = [=, this] { tick(check, choices_.get(group, key, false)); },
                     .keep = [=, this] { choices_.set(group, key, is_ticked(check)); },
                     .failure = failure});
}

GtkWidget* KeptChoices::phone_card() {
  GtkWidget* card = kit::card("PHONE APP");
  SettingGrid grid;
  GtkWidget* start = wrapped_check("Start the phone app server when Tarnwick opens");
  grid.add_wide(start);
  add_tick(start, "PhoneApp", "start-server", phone_failure);

  GtkWidget* port = number_button(1, 65535, 1, 0);
  kit::set_tooltip(port,
                   "The port the phone app connects to. Pick one that nothing else on this computer uses; open it in "
                   "the firewall if the phone connects from outside your network.");
  grid.add_beside("Port", port);
  GtkSpinButton* number = GTK_SPIN_BUTTON(port);
  add_choice(port,
             {.owner = this,
              .signal = "value-changed",
              .show = [=, this] { gtk_spin_button_set_value(number, choices_.get("PhoneApp", "port", default_port)); },
              .keep = [=, this] { choices_.set("PhoneApp", "port", gtk_spin_button_get_value_as_int(number)); },
              .failure = phone_failure,
              .delay = port_delay});
  add_token_row(grid);
  kit::add(card, grid.widget());
  kit::add(card, wrapped_label(std::string(no_phone_server) + " What you choose here is kept.", {"small"}));
  return card;
}

GtkWidget* KeptChoices::opening_card() {
  GtkWidget* card = kit::card("START WHEN TARNWICK OPENS");
  GtkWidget* start = wrapped_check("Start the receivers when Tarnwick opens");
  kit::set_tooltip(
      start,
      "A few seconds after Tarnwick opens, once it has found the receivers, it presses Start receivers for "
      "you, with the current settings. For a station that must come back on its own after a power cut or "
      "an update, also have the computer sign in and open Tarnwick by itself.");
  kit::add(card, start);
  add_tick(start, "Startup", "start-receivers", "Cannot save the start-up setting: ");

  GtkWidget* open = wrapped_check("Open Tarnwick when I sign in");
  kit::set_tooltip(open,
                   "Adds Tarnwick to your desktop's autostart (~/.config/autostart/tarnwick.desktop), so it opens at "
                   "sign-in. Set the computer to sign you in automatically if the station runs unattended; the System "
                   "service above is the alternative that needs no sign-in at all.");
  kit::add(card, open);
  add_choice(open, {.owner = this,
                    .signal = "toggled",
                    .show = [=, this] { tick(open, autostart_.present()); },
                    .keep = [=, this] { autostart_.set(is_ticked(open)); },
                    .failure = "Cannot write the sign-in entry: "});
  return card;
}

GtkWidget* KeptChoices::display_card() {
  GtkWidget* card = kit::card("DISPLAY");
  interface_size_ = gtk_combo_box_text_new();
  for (const int percent : interface_sizes())
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(interface_size_), interface_size_label(percent, 100).c_str());
  gtk_widget_set_halign(interface_size_, GTK_ALIGN_START);
  gtk_widget_show(interface_size_);
  kit::set_tooltip(interface_size_, interface_size_tooltip);
  SettingGrid grid;
  grid.add_beside("Interface size", interface_size_);
  kit::add(card, grid.widget());
  add_choice(interface_size_, {.owner = this,
                               .signal = "changed",
                               .show = [this] { show_interface_size(); },
                               .keep = [this] { keep_interface_size(); },
                               .failure = "Cannot save the interface size: "});
  label_automatic_size();
  scale_ = ui_scale::Listener([this] { label_automatic_size(); });
  text_size_ = base::SignalConnection(gtk_settings_get_default(), "notify::gtk-xft-dpi",
                                      G_CALLBACK((+[](GObject*, GParamSpec*, gpointer self) {
                                        static_cast<KeptChoices*>(self)->label_automatic_size();
                                      })),
                                      this);
  return card;
}

void KeptChoices::show_interface_size() {
  const auto sizes = interface_sizes();
  const auto chosen = std::ranges::find(sizes, kept_interface_size(choices_));
  gtk_combo_box_set_active(GTK_COMBO_BOX(interface_size_), static_cast<int>(chosen - sizes.begin()));
}

void KeptChoices::keep_interface_size() {
  const int index = gtk_combo_box_get_active(GTK_COMBO_BOX(interface_size_));
  if (index < 0) return;
  const int percent = interface_sizes()[static_cast<std::size_t>(index)];
  choices_.set(size_group, size_key, interface_size_value(percent));
  GtkWidget* window = gtk_widget_get_toplevel(interface_size_);
  ui_scale::apply_choice(percent, GTK_IS_WINDOW(window) ? GTK_WINDOW(window) : nullptr);
}

// The first entry says what it comes to here.
void KeptChoices::label_automatic_size() {
  GtkTreeModel* entries = gtk_combo_box_get_model(GTK_COMBO_BOX(interface_size_));
  GtkTreeIter first;
  if (!gtk_tree_model_get_iter_first(entries, &first)) return;
  const std::string text = interface_size_label(0, ui_scale::automatic_percent());
  gtk_list_store_set(GTK_LIST_STORE(entries), &first, 0, text.c_str(), -1);
}

}  // namespace gui
