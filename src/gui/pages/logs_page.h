// The Logs tab: the decode logs and the program's own lines.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include <gtk/gtk.h>

#include "base/key_file.h"
#include "gui/kit/log_pane.h"
#include "results/line_class.h"

namespace gui {

class LogsPage {
 public:
  /// `choices` keeps which decode log is shown.
  explicit LogsPage(base::KeyFile& choices);

  /// One shown line, with or without its line feed.
  void append(results::Pane pane, results::Tag tag, std::string_view text);
  [[nodiscard]] GtkWidget* widget() const { return page_; }

 private:
  static constexpr std::size_t decode_logs = 4;

  GtkWidget* make_head();
  GtkWidget* make_panes();
  void show_decodes(std::size_t index);
  void clear_shown();
  void set_follow(bool on);

  base::KeyFile& choices_;
  std::array<kit::LogBuffer, decode_logs + 1> buffers_;  ///< in the order of results::Pane
  kit::LogView decodes_{"Decodes"};
  kit::LogView program_{"Program / errors"};
  GtkWidget* page_;
  GtkWidget* follow_ = nullptr;
  GtkWidget* family_ = nullptr;
  std::size_t shown_ = 0;
};

}  // namespace gui
