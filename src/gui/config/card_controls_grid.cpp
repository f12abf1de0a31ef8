#include "gui/config/card_controls_grid.h"

#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"

namespace gui {

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

}  // namespace gui
