// Dialogs that never run a main loop of their own: assistive tools would freeze until they close, and the receivers'
// lines would be handled inside them.
#pragma once

#include <functional>
#include <string>

#include <gtk/gtk.h>

namespace kit {

/// A modal message with a Close button.
void show_message(GtkWindow* parent, GtkMessageType type, const std::string& text);
/// A modal question with OK and Cancel; `accepted` runs on OK only, `declined` on every other answer.
void ask(
    GtkWindow* parent, const std::string& text, std::function<void()> accepted, std::function<void()> declined = [] {});

struct FileQuestion {
  const char* title;
  const char* filter_name;
  const char* pattern;  ///< a shell pattern such as "*.conf"
};
/// A modal file chooser with Cancel and Open; `chosen` gets the path.
void choose_file(GtkWindow* parent, const FileQuestion& question, std::function<void(std::string)> chosen);

}  // namespace kit
