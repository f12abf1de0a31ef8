#include "gui/pages/coming_page.h"

#include "gui/kit/widgets.h"

namespace gui {

GtkWidget* coming_page(const char* heading, const char* sentence) {
  GtkWidget* content = nullptr;
  GtkWidget* page = kit::scrolled_page(content);
  GtkWidget* card = kit::card(heading);
  kit::add(card, kit::label(sentence, {"muted"}));
  kit::add(content, card);
  return page;
}

}  // namespace gui
