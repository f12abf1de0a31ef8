#include "gui/config/card_controls_grid.h"

#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"

namespace gui {
namespace {

GtkWidget* new_gain_note() {
  GtkWidget* note = wrapped_label("", {"small"});
  gtk_widget_set_name(note, "gain-note");
  gtk_widget_hide(note);
  return note;
}

}  // namespace

CardControlsGrid::CardControlsGrid(launcher::Family family, ChangeGuard& guard, Edited edited)
    : guard_(guard), edited_(std::move(edited)) {
  SettingGrid grid;
  for (const CardControl& control : card_controls(family)) {
    const auto changed = [this, index = widgets_.size()] {
      edited_(widgets_[index]->control(), widgets_[index]->value());
    };
    CardWidget* made = widgets_.emplace_back(make_card_widget(control, family, guard_, changed)).get();
    if (control.kind == CardKind::check) {
      grid.add_wide(made->widget());
      continue;
    }
    GtkWidget* caption = grid.add_beside(control.caption, made->widget());
    kit::name_by_label(caption, made->operated());
    made->set_caption(caption);
    if (made->control().key == std::string_view("rtl-gain")) grid.add_wide(gain_note_ = new_gain_note());
  }
  grid_ = grid.widget();
}

CardWidget* CardControlsGrid::find(std::string_view key) const {
  for (const auto& widget : widgets_)
    if (widget->control().key == key) return widget.get();
  return nullptr;
}

void CardControlsGrid::show(const CardFacts& facts) {
  const ChangeGuard::Quiet quiet(guard_);
  for (const auto& widget : widgets_) {
    const CardControl& control = widget->control();
    if (control.kind == CardKind::choice) widget->set_choices(choices_of(control, facts));
    widget->set_deferred(facts.running);
    widget->show(shown_setting(control, facts.settings));
    widget->set_state(control_state(control, facts));
  }
}

void CardControlsGrid::show_gain_note(const std::string& text) {
  if (!gain_note_) return;
  kit::set_text(gain_note_, text);
  kit::set_visible(gain_note_, !text.empty());
}

}  // namespace gui
