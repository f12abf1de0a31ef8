// main of the window tests: the toolkit as the launcher opens it, and any of its complaints ends the test.
#include <clocale>

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include "gui/kit/theme.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  gtk_init(&argc, &argv);
  std::setlocale(LC_NUMERIC, "C");
  g_log_set_always_fatal(GLogLevelFlags(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING | G_LOG_FATAL_MASK));
  kit::load_theme();
  return RUN_ALL_TESTS();
}
