#include "gui/kit/ui_scale.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "base/gobject_ptr.h"
#include "base/scaled_css.h"
#include "base/signal_connection.h"

namespace ui_scale {
namespace {

constexpr double smallest_change = 0.001;
constexpr double natural_dots_per_inch = 96;
constexpr double dpi_fraction = 1024;  // the toolkit's setting counts in these

// Object data cannot tell a stored 0 from no value: sizes are stored with this added, so that -1 is told from it too.
constexpr int stored_offset = 2;
constexpr const char* width_key = "ui-scale-width";
constexpr const char* height_key = "ui-scale-height";

struct Sheet {
  base::GObjectPtr<GtkCssProvider> provider;
  std::string css;
};

struct State {
  double factor = 1;
  std::vector<Sheet> sheets;
  std::vector<GtkWidget*> sized;  // weak: forget_widget takes them out
  std::vector<const std::function<void()>*> listeners;
};

State& state() {
  static State the_state;
  return the_state;
}

void load(const Sheet& sheet) {
  base::ErrorSlot error;
  gtk_css_provider_load_from_data(sheet.provider.get(), scaled_css(sheet.css, factor()).c_str(), -1, error.out());
  if (error) throw std::runtime_error(error.message());
}

void forget_widget(gpointer, GObject* widget) {
  std::erase_if(state().sized, [widget](GtkWidget* one) { return static_cast<void*>(one) == widget; });
}

int stored_side(GtkWidget* widget, const char* key) {
  return GPOINTER_TO_INT(g_object_get_data(G_OBJECT(widget), key)) - stored_offset;
}

void store_side(GtkWidget* widget, const char* key, int units) {
  g_object_set_data(G_OBJECT(widget), key, GINT_TO_POINTER(std::max(units, -1) + stored_offset));
}

int scaled_side(int units) {
  return units < 0 ? -1 : scaled(units);
}

void resize(GtkWidget* widget) {
  gtk_widget_set_size_request(widget, scaled_side(stored_side(widget, width_key)),
                              scaled_side(stored_side(widget, height_key)));
}

int window_scale(GtkWindow* window) {
  if (window) return gtk_widget_get_scale_factor(GTK_WIDGET(window));
  GdkDisplay* display = gdk_display_get_default();
  GdkMonitor* monitor = gdk_display_get_primary_monitor(display);
  if (!monitor) monitor = gdk_display_get_monitor(display, 0);
  return monitor ? gdk_monitor_get_scale_factor(monitor) : 1;
}

double automatic_factor_now() {
  int dpi = 0;
  g_object_get(gtk_settings_get_default(), "gtk-xft-dpi", &dpi, nullptr);
  return automatic_factor(dpi);
}

// One followed window; it lives from follow_window until the window's destruction.
class Following {
 public:
  Following(GtkWindow* window, Choice choice) : window_(window), choice_(std::move(choice)) {
    const auto on = [this](gpointer instance, const char* signal, GCallback handler) {
      connections_.emplace_back(instance, signal, handler, this);
    };
    const GCallback notified =
        G_CALLBACK((+[](GObject*, GParamSpec*, gpointer self) { static_cast<Following*>(self)->apply(); }));
    on(window, "notify::scale-factor", notified);
    on(gtk_settings_get_default(), "notify::gtk-xft-dpi", notified);
    on(window, "map", G_CALLBACK((+[](GtkWidget*, gpointer self) { static_cast<Following*>(self)->apply(); })));
    on(window, "configure-event", G_CALLBACK((+[](GtkWidget*, GdkEvent*, gpointer self) -> gboolean {
         static_cast<Following*>(self)->apply();
         return GDK_EVENT_PROPAGATE;
       })));
    g_signal_connect(window, "destroy",
                     G_CALLBACK((+[](GtkWidget*, gpointer self) { delete static_cast<Following*>(self); })), this);
  }

 private:
  void apply() { apply_choice(choice_(), window_); }

  GtkWindow* window_;
  Choice choice_;
  std::vector<base::SignalConnection> connections_;
};

}  // namespace

double factor() {
  return state().factor;
}

int scaled(int units) {
  return static_cast<int>(std::lround(units * factor()));
}

void set_factor(double wanted) {
  const double limited = limited_factor(wanted);
  if (std::abs(limited - factor()) < smallest_change) return;
  state().factor = limited;
  for (const auto& sheet : state().sheets)
    load(sheet);
  for (GtkWidget* widget : state().sized)
    resize(widget);
  // A listener may add or end listeners.
  for (const auto* changed : std::vector(state().listeners))
    if (std::count(state().listeners.begin(), state().listeners.end(), changed)) (*changed)();
}

void add_css(GtkCssProvider* provider, std::string css) {
  Sheet sheet{base::GObjectPtr<GtkCssProvider>::share(provider), std::move(css)};
  load(sheet);
  state().sheets.push_back(std::move(sheet));
}

void add_size(GtkWidget* widget, int width, int height) {
  auto& sized = state().sized;
  if (std::find(sized.begin(), sized.end(), widget) == sized.end()) {
    sized.push_back(widget);
    g_object_weak_ref(G_OBJECT(widget), &forget_widget, nullptr);
  }
  store_side(widget, width_key, width);
  store_side(widget, height_key, height);
  resize(widget);
}

Listener::Listener(std::function<void()> changed) : changed_(new std::function<void()>(std::move(changed))) {
  state().listeners.push_back(changed_.get());
}

void Listener::Remove::operator()(const std::function<void()>* changed) const {
  std::erase(state().listeners, changed);
  delete changed;
}

double fixed_factor(int percent, int scale) {
  return limited_factor(percent / 100.0 / std::max(scale, 1));
}

double automatic_factor(int xft_dpi) {
  return limited_factor(std::max(xft_dpi / dpi_fraction / natural_dots_per_inch, 1.0));
}

int automatic_percent() {
  return static_cast<int>(std::lround(automatic_factor_now() * 100));
}

void apply_choice(int percent, GtkWindow* window) {
  set_factor(percent > 0 ? fixed_factor(percent, window_scale(window)) : automatic_factor_now());
}

void follow_window(GtkWindow* window, Choice choice) {
  new Following(window, std::move(choice));
}

}  // namespace ui_scale
