// The launcher's entry: the order in which things start.
#include <clocale>
#include <cstdio>
#include <stdexcept>
#include <unistd.h>

#include <fmt/format.h>
#include <gtk/gtk.h>

#include "gui/app.h"
#include "gui/kit/scroll_filter.h"
#include "gui/kit/theme.h"
#include "gui/launcher_arguments.h"
#include "host/crash_notes.h"
#include "options/migration.h"
#include "options/paths.h"

namespace {

bool is_root() {
  return ::geteuid() == 0;
}

// Root writes nothing, not even this: a file of root's would lock the operator out of the station's own settings.
void prepare_files() {
  if (is_root()) return;
  host::install_crash_notes(options::state_directory());
  options::migrate_former_name(options::process_environment());
}

void open_toolkit(int& argc, char**& argv) {
  if (!gtk_init_check(&argc, &argv))
    throw std::runtime_error("No graphical display is available. Run tarnwick for the CLI.");
  std::setlocale(LC_NUMERIC, "C");
  kit::install_scroll_filter();
}

int run(int argc, char** argv) {
  prepare_files();
  const auto arguments = gui::parse_arguments({argv + 1, argv + argc});
  if (arguments.help) {
    fmt::print("{}", gui::usage_text);
    return 0;
  }
  int no_arguments = 1;
  open_toolkit(no_arguments, argv);
  if (is_root())
    throw std::runtime_error(
        "Run the launcher as your normal desktop user. Service controls request administrator authorization "
        "separately.");
  kit::load_theme();
  gui::App app(gui::App::Setup::of_user(arguments));
  app.run();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    fmt::print(stderr, "Launcher: {}\n", error.what());
    return 1;
  }
}
