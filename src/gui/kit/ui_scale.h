// The size of everything on the screen as one factor: it rewrites the program's own style sheets and widget sizes, and
// drawing code multiplies its measures by it. Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtk/gtk.h>

namespace ui_scale {

/// The present factor, 0.5 to 2.5; 1 until set.
double factor();
/// `units` of the natural size in pixels, rounded to the nearest.
int scaled(int units);
/// Limits the factor (limited_factor) and, on a change of 0.001 or more, rewrites every style sheet, resizes every
/// registered widget and calls the listeners.
void set_factor(double factor);

/// Registers a style sheet as written for factor 1 and loads it at the present factor. Throws
/// std::runtime_error with the parser's message; then nothing is registered.
void add_css(GtkCssProvider* provider, std::string css);
/// Gives a widget a fixed size in units, -1 for a side that stays free. Forgotten when the widget goes.
void add_size(GtkWidget* widget, int width, int height);

/// Called after every change of the factor, for as long as it lives. Move-only.
class Listener {
 public:
  Listener() = default;
  explicit Listener(std::function<void()> changed);

 private:
  struct Remove {
    void operator()(const std::function<void()>* changed) const;
  };
  std::unique_ptr<const std::function<void()>, Remove> changed_;
};

/// The factor of a fixed size: `percent` without what the toolkit applies by itself, the whole-number scale of the
/// window (taken as 1 when smaller).
double fixed_factor(int percent, int window_scale);
/// The factor of the automatic size: the text size of desktop and monitor as "gtk-xft-dpi" has it, in 1024ths of a dot
/// per inch; never below 1.
double automatic_factor(int xft_dpi);
/// The automatic size here and now, in percent.
int automatic_percent();

/// The operator's choice in percent; 0 or below means automatic.
using Choice = std::function<int()>;
/// Applies a choice; without a window as for the primary monitor.
void apply_choice(int percent, GtkWindow* window);
/// Keeps the factor at the choice as the window moves to other monitors and the desktop's text size changes, until the
/// window is destroyed.
void follow_window(GtkWindow* window, Choice choice);

}  // namespace ui_scale
