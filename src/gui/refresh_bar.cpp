#include "gui/refresh_bar.h"

#include "base/text.h"
#include "gui/kit/widgets.h"

namespace gui {

RefreshBar::RefreshBar(std::function<void()> refresh)
    : box_(kit::horizontal_box(10)),
      button_(kit::button("Refresh receivers", std::move(refresh))),
      status_(kit::label("", {"muted"})) {
  gtk_widget_set_valign(button_, GTK_ALIGN_START);
  kit::add(box_, button_);
  kit::add(box_, status_, true);
}

void RefreshBar::show(bool checking, bool available, const std::string& status) {
  kit::set_button_text(button_, checking ? "Refreshing…" : "Refresh receivers");
  kit::set_sensitive(button_, available && !checking);
  kit::set_text(status_, base::valid_utf8(status));
}

}  // namespace gui
