// The whole launcher in process, on engines that are small shell scripts, with files of its own.
#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "gui/app.h"
#include "gui/widget_finder.h"

namespace testing_gui {

class StationTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Writes the engine's script; it is run as `sh ENGINE --config FILE --no-daemon`. Asked for the attached receivers,
  /// it runs the other script instead.
  void use_engine(const std::string& script, const std::string& listing = two_listed);
  /// Writes a file of the test's own and gives its path.
  std::string write(const std::string& name, const std::string& text);
  /// Two ticked receivers, A1 with 40 and 20 m FT8 and B2 with 30 m WSPR.
  std::string two_receivers();

  /// Builds the window, opens the settings and waits for the first discovery; `config_path` as --config gives it.
  gui::App& open(const std::string& config_path = {});
  /// The same without the wait.
  gui::App& open_at_once(const std::string& config_path = {});
  void close_app() { app_.reset(); }

  [[nodiscard]] GtkWidget* window() { return GTK_WIDGET(app_->window().window()); }
  [[nodiscard]] GtkWidget* page() {
    return gtk_notebook_get_nth_page(app_->window().notebook(), app_->window().current_page());
  }
  void press(const std::string& button);
  /// Presses a button of the dialog that is shown.
  void answer(int response);
  [[nodiscard]] bool shows(const std::string& text);
  /// The whole text of the log pane "Program / errors".
  [[nodiscard]] std::string program_log();
  /// How many files of the config directory have names that begin so.
  [[nodiscard]] int config_files(const std::string& beginning) const;

  /// Prints the two receivers.
  static constexpr const char* two_listed =
      "printf '0: RSPdx serial=A1 available=1\\n1: RSP1A serial=B2 available=1\\n'";

  std::string directory_;
  gui::App::Setup setup_;
  std::unique_ptr<gui::App> app_;
};

}  // namespace testing_gui
