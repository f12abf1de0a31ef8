#include "gui/live/activity_card_view.h"

#include "base/text.h"
#include "gui/kit/widgets.h"

namespace gui {

ActivityCardView::ActivityCardView(results::ActivityCard card, std::function<void()> toggled)
    : card_(std::move(card)), box_(kit::vertical_box(8, {"card"})) {
  kit::add(box_, make_head(std::move(toggled)));
  if (!card_.audio_line.empty()) kit::add(box_, kit::label(base::valid_utf8(card_.audio_line), {"muted"}));
  make_grid();
  kit::add(box_, body_);
  g_object_set_data(G_OBJECT(box_), "activity-index", GINT_TO_POINTER(card_.ordinal));
}

GtkWidget* ActivityCardView::make_head(std::function<void()> toggled) {
  GtkWidget* head = kit::horizontal_box(8);
  fold_button_ = kit::button("▾", std::move(toggled), {"fold"});
  kit::add(head, fold_button_);
  GtkWidget* name = kit::line_label(base::valid_utf8(card_.label), {"section"});
  gtk_label_set_ellipsize(GTK_LABEL(name), PANGO_ELLIPSIZE_END);
  kit::add(head, name, true);
  sum_ = kit::line_label("0 spots · 0 decodes", {"small"});
  gtk_label_set_xalign(GTK_LABEL(sum_), 1);
  kit::add(head, sum_);
  kit::add(head, kit::line_label("RF", {"muted"}));
  return head;
}

void ActivityCardView::make_grid() {
  body_ = gtk_grid_new();
  gtk_grid_set_column_spacing(GTK_GRID(body_), 14);
  gtk_grid_set_row_spacing(GTK_GRID(body_), 8);
  gtk_widget_show(body_);
  if (!card_.only_line.empty()) {
    cell(0, 0, card_.only_line, {"muted"});
    return;
  }
  int column = 0;
  for (const char* head : results::activity_column_heads) {
    GtkWidget* label = cell(column, 0, head, {"small"});
    gtk_label_set_justify(GTK_LABEL(label), column == 0 ? GTK_JUSTIFY_LEFT : GTK_JUSTIFY_RIGHT);
    gtk_widget_set_valign(label, GTK_ALIGN_END);
    ++column;
  }
  for (std::size_t i = 0; i < card_.rows.size(); ++i)
    make_row(static_cast<int>(i) + 1, card_.rows[i]);
}

void ActivityCardView::make_row(int index, const results::ActivityRow& row) {
  GtkWidget* name = cell(0, index, row.text, {"muted"});
  gtk_widget_set_margin_end(name, 6);
  rows_.push_back({row.key, cell(1, index, "0", {"good"}), cell(2, index, "0", {}), cell(3, index, "—", {}),
                   cell(4, index, "—", {})});
}

GtkWidget* ActivityCardView::cell(int column, int row, const std::string& text,
                                  std::initializer_list<const char*> classes) {
  GtkWidget* label = kit::line_label(base::valid_utf8(text), classes);
  gtk_label_set_xalign(GTK_LABEL(label), column == 0 ? 0 : 1);
  gtk_widget_set_hexpand(label, column == 0);
  gtk_grid_attach(GTK_GRID(body_), label, column, row, 1, 1);
  return label;
}

void ActivityCardView::refresh(const results::ActivityModel& model) {
  kit::set_text(sum_, model.sum_text(card_));
  for (const auto& row : rows_) {
    const results::RowTexts texts = model.row_texts(row.key);
    kit::set_text(row.spots, texts.spots);
    kit::set_text(row.decodes, texts.decodes);
    kit::set_text(row.callsigns, texts.callsigns);
    kit::set_text(row.average, texts.average);
  }
}

void ActivityCardView::fold(bool folded) {
  const char* words = folded ? "Show this receiver's channels" : "Hide this receiver's channels";
  kit::set_visible(body_, !folded);
  kit::set_button_text(fold_button_, folded ? "▸" : "▾");
  kit::set_tooltip(fold_button_, words);
  kit::set_accessible(fold_button_, base::valid_utf8(card_.label) + ": " + words);
}

}  // namespace gui
