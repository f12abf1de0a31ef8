#include "gui/config/card_widget.h"

#include "base/signal_connection.h"
#include "base/text.h"
#include "gui/config/card_choices.h"
#include "gui/config/slider_widget.h"
#include "gui/kit/drop_down.h"
#include "gui/kit/widgets.h"
#include "gui/settings/setting_grid.h"

namespace gui {
namespace {

class CheckWidget : public CardWidget {
 public:
  CheckWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed)
      : CardWidget(control, guard, std::move(changed)), check_(wrapped_check(control.caption)) {
    adopt(check_, check_);
    base::connect_forever(check_, "toggled", [this] { tell(); });
  }
  [[nodiscard]] std::string value() const override {
    return gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(check_)) ? "on" : "off";
  }

 private:
  void put_value(const std::string& value) override {
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(check_), value == "on");
  }
  GtkWidget* check_;
};

class ChoiceWidget : public CardWidget {
 public:
  ChoiceWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed)
      : CardWidget(control, guard, std::move(changed)), combo_(kit::drop_down()) {
    adopt(combo_, combo_);
    base::connect_forever(combo_, "changed", [this] { tell(); });
  }
  [[nodiscard]] std::string value() const override { return kit::chosen(combo_); }
  void set_choices(const std::vector<CardChoice>& choices) override {
    std::vector<std::pair<std::string, std::string>> entries;
    for (const CardChoice& choice : choices)
      entries.emplace_back(choice.value, choice.text);
    kit::set_entries(combo_, entries);
  }

 private:
  void put_value(const std::string& value) override {
    gtk_combo_box_set_active_id(GTK_COMBO_BOX(combo_), value.c_str());
  }
  GtkWidget* combo_;
};

class RateWidget : public CardWidget {
 public:
  RateWidget(const CardControl& control, launcher::Family family, ChangeGuard& guard, std::function<void()> changed)
      : CardWidget(control, guard, std::move(changed)), family_(family), combo_(kit::drop_down(true)) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (const CardChoice& choice : rate_choices(family))
      entries.emplace_back(choice.value, choice.text);
    kit::set_entries(combo_, entries);
    entry_ = gtk_bin_get_child(GTK_BIN(combo_));
    gtk_entry_set_width_chars(GTK_ENTRY(entry_), 24);
    kit::set_accessible(combo_, std::string(control.caption));
    adopt(combo_, entry_);
    base::connect_forever(combo_, "changed", [this] { tell(); });
  }
  [[nodiscard]] std::string value() const override {
    return rate_value(family_, gtk_entry_get_text(GTK_ENTRY(entry_)));
  }

 private:
  void put_value(const std::string& value) override {
    gtk_entry_set_text(GTK_ENTRY(entry_), base::valid_utf8(rate_text(family_, value)).c_str());
  }
  const launcher::Family family_;
  GtkWidget* combo_;
  GtkWidget* entry_;
};

class EntryWidget : public CardWidget {
 public:
  EntryWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed)
      : CardWidget(control, guard, std::move(changed)), entry_(gtk_entry_new()) {
    gtk_entry_set_placeholder_text(GTK_ENTRY(entry_), control.placeholder);
    gtk_widget_show(entry_);
    adopt(entry_, entry_);
    base::connect_forever(entry_, "changed", [this] { typed(); });
    base::connect_forever(entry_, "activate", [this] { commit(); });
    g_signal_connect(entry_, "focus-out-event", G_CALLBACK(&EntryWidget::left), this);
  }
  [[nodiscard]] std::string value() const override {
    const std::string text = gtk_entry_get_text(GTK_ENTRY(entry_));
    return text == base::valid_utf8(given_) ? given_ : std::string(base::trim(text));
  }
  void set_deferred(bool deferred) override { deferred_ = deferred; }

 private:
  static gboolean left(GtkWidget*, GdkEvent*, gpointer self) {
    static_cast<EntryWidget*>(self)->commit();
    return FALSE;
  }
  void put_value(const std::string& value) override {
    given_ = told_ = value;
    uncommitted_ = false;
    gtk_entry_set_text(GTK_ENTRY(entry_), base::valid_utf8(value).c_str());
  }
  [[nodiscard]] bool being_typed() const override { return uncommitted_; }
  void typed() {
    if (guard_.quiet()) return;
    if (deferred_)
      uncommitted_ = true;
    else
      tell_value();
  }
  void commit() {
    if (std::exchange(uncommitted_, false) && value() != told_) tell_value();
  }
  void tell_value() {
    told_ = value();
    tell();
  }

  GtkWidget* entry_;
  std::string given_;  ///< the bytes last shown: what cannot be displayed is written back as it came
  std::string told_;   ///< the value that the launcher knows
  bool deferred_ = false;
  bool uncommitted_ = false;
};

}  // namespace

void CardWidget::adopt(GtkWidget* widget, GtkWidget* operated, GtkWidget* also) {
  widget_ = widget;
  operated_ = operated;
  also_ = also;
  gtk_widget_set_name(operated, control_.key);
}

void CardWidget::show(const std::string& value) {
  if ((this->value() != value && !being_typed()) || !shown_) put(value);
}

void CardWidget::put(const std::string& value) {
  const ChangeGuard::Quiet quiet(guard_);
  shown_ = true;
  put_value(value);
}

void CardWidget::set_state(const ControlState& state) {
  for (GtkWidget* part : {widget_, caption_}) {
    if (!part) continue;
    kit::set_visible(part, state.exists);
    kit::set_sensitive(part, state.sensitive);
    kit::set_tooltip(part, state.tooltip);
  }
  // Where the tooltip is that of a part around them, an assistive tool would not find it.
  for (GtkWidget* part : {operated_, also_})
    if (part && part != widget_) kit::set_accessible(part, {}, state.tooltip);
}

std::unique_ptr<CardWidget> make_card_widget(const CardControl& control, launcher::Family family, ChangeGuard& guard,
                                             std::function<void()> changed) {
  switch (control.kind) {
    case CardKind::check:
      return std::make_unique<CheckWidget>(control, guard, std::move(changed));
    case CardKind::choice:
      return std::make_unique<ChoiceWidget>(control, guard, std::move(changed));
    case CardKind::rate:
      return std::make_unique<RateWidget>(control, family, guard, std::move(changed));
    case CardKind::entry:
      return std::make_unique<EntryWidget>(control, guard, std::move(changed));
    default:
      return std::make_unique<SliderWidget>(control, guard, std::move(changed));
  }
}

}  // namespace gui
