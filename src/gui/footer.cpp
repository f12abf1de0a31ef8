#include "gui/footer.h"

#include "base/text.h"
#include "gui/kit/widgets.h"

namespace gui {

Footer::Footer(Actions actions)
    : box_(kit::vertical_box(6)),
      start_(kit::button("Start receivers", std::move(actions.start), {"primary"})),
      stop_(kit::button("Stop", std::move(actions.stop))),
      open_(kit::button("Open .conf", std::move(actions.open_profile))),
      apply_(kit::button("Apply and Save", std::move(actions.apply_and_save))),
      status_label_(kit::label("", {"muted"})),
      profile_label_(kit::line_label("", {"small"})) {
  GtkWidget* buttons = kit::horizontal_box(10);
  for (GtkWidget* button : {start_, stop_, open_, apply_})
    kit::add(buttons, button);
  gtk_label_set_ellipsize(GTK_LABEL(profile_label_), PANGO_ELLIPSIZE_MIDDLE);
  kit::add(box_, buttons);
  // Nothing permanent stands below the buttons: both labels keep hidden through show_all of the window.
  for (GtkWidget* label : {status_label_, profile_label_}) {
    gtk_widget_set_no_show_all(label, TRUE);
    gtk_widget_hide(label);
    kit::add(box_, label);
  }
}

void Footer::show(const FooterState& state) {
  state_text_ = base::valid_utf8(state.text);
  if (!message_shown_) {
    kit::set_text(status_label_, state_text_);
    kit::set_class(status_label_, "error", state.text_is_error);
  }
  kit::set_sensitive(start_, state.start_sensitive);
  kit::set_tooltip(start_, base::valid_utf8(state.start_tooltip));
  kit::set_sensitive(stop_, state.stop_sensitive);
  kit::set_sensitive(apply_, state.apply_sensitive);
  kit::set_class(apply_, "primary", state.apply_primary);
  kit::set_button_text(apply_, state.apply_label);
  kit::set_tooltip(apply_, state.apply_tooltip);
}

void Footer::show_profile(const std::string& config_path) {
  kit::set_text(profile_label_, "Profile: " + base::valid_utf8(config_path));
}

void Footer::show_message(const std::string& text) {
  message_shown_ = true;
  kit::set_class(status_label_, "error", false);
  kit::set_text(status_label_, text);
  kit::set_visible(status_label_, true);
}

void Footer::clear_message() {
  message_shown_ = false;
  kit::set_visible(status_label_, false);
  kit::set_text(status_label_, state_text_);
}

bool Footer::start_sensitive() const {
  return gtk_widget_get_sensitive(start_) != FALSE;
}

}  // namespace gui
