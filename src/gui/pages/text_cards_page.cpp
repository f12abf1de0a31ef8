#include "gui/pages/text_cards_page.h"

#include "base/text.h"
#include "gui/kit/widgets.h"

namespace gui {

TextCardsPage::TextCardsPage() : error_(kit::label("", {"error"})), cards_(kit::vertical_box(14)) {
  GtkWidget* content = nullptr;
  page_ = kit::scrolled_page(content);
  gtk_widget_set_no_show_all(error_, TRUE);
  gtk_widget_hide(error_);
  kit::add(content, error_);
  kit::add(content, cards_);
}

void TextCardsPage::show(const std::vector<TextCard>& cards, const std::string& error) {
  kit::set_text(error_, base::valid_utf8(error));
  kit::set_visible(error_, !error.empty());
  if (cards == shown_) return;
  shown_ = cards;
  kit::remove_children(cards_);
  for (const auto& text : cards) {
    GtkWidget* card = kit::card(base::valid_utf8(text.heading));
    for (const auto& line : text.lines)
      kit::add(card, kit::label(base::valid_utf8(line), {"muted"}));
    kit::add(cards_, card);
  }
}

}  // namespace gui
