#include "gui/kit/log_pane.h"

#include <fmt/format.h>

#include "gui/kit/widgets.h"

namespace kit {
namespace {

constexpr struct {
  const char* name;
  const char* colour;
} tags[] = {{"normal", "#B0C6DA"}, {"good", "#35C759"}, {"warning", "#FFB020"}, {"error", "#FF5247"}};

constexpr auto flush_delay = std::chrono::milliseconds(100);
constexpr int text_margin = 8;
// One insertion of this many lines stays well below a frame.
constexpr std::size_t lines_per_flush = 250;

std::string shortened(std::string line) {
  if (line.size() <= LogBuffer::longest_line) return line;
  const std::size_t whole = line.size();
  std::size_t cut = LogBuffer::longest_line;
  // Not inside a character of several bytes.
  while (cut > 0 && (static_cast<unsigned char>(line[cut]) & 0xC0) == 0x80)
    --cut;
  line.resize(cut);
  line += fmt::format(" … ({} bytes)", whole);
  return line;
}

}  // namespace

LogBuffer::LogBuffer() : buffer_(base::GObjectPtr<GtkTextBuffer>::adopt(gtk_text_buffer_new(nullptr))) {
  for (const auto& tag : tags)
    gtk_text_buffer_create_tag(buffer_.get(), tag.name, "foreground", tag.colour, nullptr);
}

void LogBuffer::append(std::string line, const char* tag) {
  gathered_.push_back({shortened(std::move(line)), tag});
  if (gathered_.size() > capacity) gathered_.pop_front();
  if (!flush_timer_.armed()) flush_timer_ = base::Timer::once(flush_delay, [this] { flush(); });
}

void LogBuffer::clear() {
  gathered_.clear();
  gtk_text_buffer_set_text(buffer_.get(), "", 0);
}

void LogBuffer::flush() {
  for (std::size_t i = 0; i < lines_per_flush && !gathered_.empty(); ++i) {
    insert(gathered_.front());
    gathered_.pop_front();
  }
  trim();
  if (!gathered_.empty()) flush_timer_ = base::Timer::once(flush_delay, [this] { flush(); });
}

void LogBuffer::insert(const Line& line) {
  GtkTextIter end;
  gtk_text_buffer_get_end_iter(buffer_.get(), &end);
  const std::string text = line.text + "\n";
  gtk_text_buffer_insert_with_tags_by_name(buffer_.get(), &end, text.data(), static_cast<int>(text.size()), line.tag,
                                           nullptr);
}

void LogBuffer::trim() {
  // The buffer counts the empty line behind the last line feed.
  const int excess = gtk_text_buffer_get_line_count(buffer_.get()) - 1 - static_cast<int>(capacity);
  if (excess <= 0) return;
  GtkTextIter start, end;
  gtk_text_buffer_get_start_iter(buffer_.get(), &start);
  gtk_text_buffer_get_iter_at_line(buffer_.get(), &end, excess);
  gtk_text_buffer_delete(buffer_.get(), &start, &end);
}

LogView::LogView(const char* accessible_name) : view_(gtk_text_view_new()) {
  GtkTextView* view = GTK_TEXT_VIEW(view_);
  gtk_text_view_set_editable(view, FALSE);
  gtk_text_view_set_cursor_visible(view, FALSE);
  gtk_text_view_set_wrap_mode(view, GTK_WRAP_WORD_CHAR);
  gtk_text_view_set_monospace(view, TRUE);
  gtk_text_view_set_accepts_tab(view, FALSE);
  gtk_text_view_set_left_margin(view, text_margin);
  gtk_text_view_set_right_margin(view, text_margin);
  gtk_widget_show(view_);
  set_accessible(view_, accessible_name);
  area_ = scrolled(view_, GTK_POLICY_NEVER);
  add_class(area_, "log");
  GtkAdjustment* position = gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(area_));
  height_changed_ = base::SignalConnection(
      position, "changed",
      G_CALLBACK((+[](GtkAdjustment*, gpointer self) { static_cast<LogView*>(self)->scroll_to_end(); })), this);
}

void LogView::show(const LogBuffer& buffer) {
  gtk_text_view_set_buffer(GTK_TEXT_VIEW(view_), buffer.buffer());
  scroll_to_end();
}

void LogView::follow(bool on) {
  follow_ = on;
  scroll_to_end();
}

void LogView::scroll_to_end() {
  if (!follow_) return;
  GtkAdjustment* position = gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(area_));
  gtk_adjustment_set_value(position, gtk_adjustment_get_upper(position) - gtk_adjustment_get_page_size(position));
}

}  // namespace kit
