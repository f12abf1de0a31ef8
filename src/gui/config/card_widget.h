// The control of one row of a card's table, as widgets.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "gui/config/card_controls.h"
#include "gui/config/change_guard.h"

namespace gui {

/// Main thread only. The widgets belong to the container that they are put into, and the object must not outlive them.
class CardWidget {
 public:
  virtual ~CardWidget() = default;
  CardWidget(const CardWidget&) = delete;
  CardWidget& operator=(const CardWidget&) = delete;

  [[nodiscard]] const CardControl& control() const { return control_; }
  /// What goes beside the caption; a check carries its caption itself.
  [[nodiscard]] GtkWidget* widget() const { return widget_; }
  /// The widget that is operated: named for assistive tools, and by the key.
  [[nodiscard]] GtkWidget* operated() const { return operated_; }

  /// What the control stands for, as the profile would have it.
  [[nodiscard]] virtual std::string value() const = 0;
  /// Shows a value, unless the control stands for it already or text is being typed that has yet to be committed. Never
  /// an edit.
  void show(const std::string& value);
  /// Shows a value whatever is being typed. Never an edit.
  void put(const std::string& value);
  virtual void set_choices(const std::vector<CardChoice>&) {}
  /// Text tells of a change only on Enter, or when the box loses the focus.
  virtual void set_deferred(bool) {}
  void set_state(const ControlState& state);
  /// The caption beside it, which shares its state; null for a check.
  void set_caption(GtkWidget* caption) { caption_ = caption; }

 protected:
  CardWidget(const CardControl& control, ChangeGuard& guard, std::function<void()> changed)
      : control_(control), guard_(guard), changed_(std::move(changed)) {}
  /// `also` is a second part that is operated.
  void adopt(GtkWidget* widget, GtkWidget* operated, GtkWidget* also = nullptr);
  virtual void put_value(const std::string& value) = 0;
  [[nodiscard]] virtual bool being_typed() const { return false; }
  /// The signals of the widgets end here.
  void tell() const {
    if (!guard_.quiet()) changed_();
  }

  const CardControl& control_;
  ChangeGuard& guard_;

 private:
  const std::function<void()> changed_;
  GtkWidget* widget_ = nullptr;
  GtkWidget* operated_ = nullptr;
  GtkWidget* also_ = nullptr;
  GtkWidget* caption_ = nullptr;
  bool shown_ = false;  ///< a value has been put on it
};

/// `changed` is called for each change that the operator makes.
std::unique_ptr<CardWidget> make_card_widget(const CardControl& control, launcher::Family family, ChangeGuard& guard,
                                             std::function<void()> changed);

}  // namespace gui
