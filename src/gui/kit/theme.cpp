#include "gui/kit/theme.h"

#include <stdexcept>

#include <gtk/gtk.h>

#include "base/gobject_ptr.h"
#include "gui/kit/style_sheet.h"
#include "gui/kit/ui_scale.h"

namespace kit {

void load_theme(const std::string& css) {
  g_object_set(gtk_settings_get_default(), "gtk-application-prefer-dark-theme", TRUE, nullptr);
  const auto provider = base::GObjectPtr<GtkCssProvider>::adopt(gtk_css_provider_new());
  try {
    ui_scale::add_css(provider.get(), css);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(std::string("Theme: ") + error.what());
  }
  gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider.get()),
                                            GTK_STYLE_PROVIDER_PRIORITY_USER);
}

void load_theme() {
  load_theme(style_sheet);
}

}  // namespace kit
