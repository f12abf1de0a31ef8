#include "gui/pages/logs_page.h"

#include <algorithm>

#include "base/signal_connection.h"
#include "gui/kit/widgets.h"

namespace gui {
namespace {

constexpr const char* choices_group = "Logs";
constexpr const char* family_key = "decode-family";
constexpr const char* decode_names[] = {"FT8", "JS8", "WSPR", "Signals"};

constexpr std::size_t program_index = static_cast<std::size_t>(results::Pane::program);

GtkWidget* titled(const char* title, GtkWidget* view) {
  GtkWidget* box = kit::vertical_box(6);
  kit::add(box, kit::line_label(title, {"section"}));
  kit::add(box, view, true);
  return box;
}

}  // namespace

LogsPage::LogsPage(base::KeyFile& choices) : choices_(choices), page_(kit::vertical_box(10)) {
  gtk_container_set_border_width(GTK_CONTAINER(page_), 4);
  kit::add(page_, make_head());
  kit::add(page_, make_panes(), true);
  program_.show(buffers_[program_index]);
  const std::string saved = choices_.get(choices_group, family_key, decode_names[0]);
  const auto* found = std::find(std::begin(decode_names), std::end(decode_names), saved);
  const auto index = found == std::end(decode_names) ? 0 : found - std::begin(decode_names);
  gtk_combo_box_set_active(GTK_COMBO_BOX(family_), static_cast<int>(index));
  show_decodes(static_cast<std::size_t>(index));
  base::connect_forever(family_, "changed", [this] {
    show_decodes(static_cast<std::size_t>(std::max(0, gtk_combo_box_get_active(GTK_COMBO_BOX(family_)))));
    try {
      choices_.set(choices_group, family_key, decode_names[shown_]);
    } catch (const std::exception&) {
      // The choice of a pane is not worth a word: it holds until the launcher closes.
    }
  });
}

GtkWidget* LogsPage::make_head() {
  GtkWidget* head = kit::horizontal_box(14);
  follow_ = kit::check_button("Follow latest");
  gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(follow_), TRUE);
  base::connect_forever(follow_, "toggled",
                        [this] { set_follow(gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(follow_)) != FALSE); });
  kit::add(head, follow_);
  GtkWidget* diagnostic = kit::check_button("Diagnostic mode");
  gtk_widget_set_sensitive(diagnostic, FALSE);
  kit::set_tooltip(diagnostic, "Sending diagnostics is not part of this version yet.");
  kit::add(head, diagnostic);
  GtkWidget* family_label = kit::line_label("Decodes of", {"muted"});
  family_ = gtk_combo_box_text_new();
  for (const char* name : decode_names)
    gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(family_), name);
  gtk_widget_show(family_);
  kit::name_by_label(family_label, family_);
  kit::add(head, family_label);
  kit::add(head, family_);
  GtkWidget* clear = kit::button("Clear", [this] { clear_shown(); });
  kit::set_tooltip(clear, "Empty the decode log that is shown. The files keep everything.");
  kit::add(head, clear);
  return head;
}

GtkWidget* LogsPage::make_panes() {
  GtkWidget* panes = gtk_paned_new(GTK_ORIENTATION_VERTICAL);
  gtk_paned_pack1(GTK_PANED(panes), titled("Decodes", decodes_.widget()), TRUE, FALSE);
  gtk_paned_pack2(GTK_PANED(panes), titled("Program / errors", program_.widget()), TRUE, FALSE);
  gtk_widget_show(panes);
  return panes;
}

void LogsPage::append(results::Pane pane, results::Tag tag, std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  buffers_[static_cast<std::size_t>(pane)].append(std::string(text), results::tag_name(tag).data());
}

void LogsPage::show_decodes(std::size_t index) {
  shown_ = index;
  decodes_.show(buffers_[index]);
}

void LogsPage::clear_shown() {
  buffers_[shown_].clear();
}

void LogsPage::set_follow(bool on) {
  decodes_.follow(on);
  program_.follow(on);
}

}  // namespace gui
