// Tabs whose work this version does not do yet: each says what will be there.
#pragma once

#include <gtk/gtk.h>

namespace gui {

/// A quiet page with a heading and a sentence.
GtkWidget* coming_page(const char* heading, const char* sentence);

}  // namespace gui
