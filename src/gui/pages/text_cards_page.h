// A page of cards that only tell: a heading and a few lines each.
#pragma once

#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "gui/pages/text_card.h"

namespace gui {

class TextCardsPage {
 public:
  TextCardsPage();
  /// Shows the cards in order; `error` above them when it is not empty. Touches no widget when nothing changed.
  void show(const std::vector<TextCard>& cards, const std::string& error);
  [[nodiscard]] GtkWidget* widget() const { return page_; }

 private:
  GtkWidget* page_;
  GtkWidget* error_;
  GtkWidget* cards_;
  std::vector<TextCard> shown_;
};

}  // namespace gui
