// Builds the window: theme, pages in their order, footer.
#include "gui/app.h"
#include "gui/kit/ui_scale.h"
#include "gui/kit/widgets.h"
#include "gui/pages/coming_page.h"

namespace gui {

void App::build() {
  ui_scale::apply_choice(kept_interface_size(choices_), nullptr);
  build_pages();
  append_pages();
  window_->set_footer(footer_->widget());
  window_->present();
  ui_scale::follow_window(window_->window(), [this] { return kept_interface_size(choices_); });
  scale_listener_ = ui_scale::Listener([this] { dashboard_->measure_again(); });
}

void App::page_shown(int index) {
  constexpr int modes_tab = 0, settings_tab = 2;
  if (index == modes_tab) modes_tab_->activate();
  if (index == settings_tab) settings_page_->activate();
  constexpr int first_live_page = 6;
  constexpr results::Family families[] = {results::Family::ft, results::Family::js8, results::Family::wspr};
  const int family = index - first_live_page;
  if (family >= 0 && family < static_cast<int>(std::size(families))) dashboard_->enter(families[family]);
}

void App::build_pages() {
  const auto say = [this](const std::string& text) { report(text); };
  window_ = std::make_unique<MainWindow>([this](int index) { page_shown(index); }, [this] { close_window(); });
  footer_ = std::make_unique<Footer>(footer_actions());
  modes_tab_ = std::make_unique<modes_gui::ModesTab>(modes_surroundings());
  refresh_bar_ = std::make_unique<RefreshBar>([this] { refresh_receivers(); });
  config_page_ = std::make_unique<ConfigPage>(config_actions(), meter_source());
  dashboard_ = std::make_unique<Dashboard>(activity_, choices_, setup_.clock, say);
  settings_page_ = std::make_unique<SettingsPage>(settings_surroundings());
  logs_page_ = std::make_unique<LogsPage>(choices_);
}

void App::append_pages() {
  const auto live = [this](results::Family family) { return dashboard_->page(family); };
  window_->append_page("Modes / Frequencies", modes_tab_->widget());
  kit::add(config_page_->header(), refresh_bar_->widget(), true);
  window_->append_page("SDR Config", config_page_->widget());
  window_->append_page("Settings", settings_page_->widget());
  window_->append_page("Audio Receivers",
                       coming_page("AUDIO RECEIVERS",
                                   "Listening channels with a waterfall are not part of this version "
                                   "yet. Those of the profile are passed to the receivers."));
  window_->append_page("Sharing",
                       coming_page("SHARING", "Sharing receivers on the web is not part of this version yet."));
  window_->append_page("Live Map", coming_page("LIVE MAP",
                                               "The map of stations heard is not part of this version yet. "
                                               "What is decoded goes to ALL.TXT all the same."));
  window_->append_page("Live FT8", live(results::Family::ft));
  window_->append_page("Live JS8", live(results::Family::js8));
  window_->append_page("Live WSPR", live(results::Family::wspr));
  window_->append_page("Live Text Modes",
                       coming_page("LIVE TEXT MODES",
                                   "Decoded text has no view of its own in this version yet. Its lines "
                                   "stand in the Logs tab under Signals."));
  window_->append_page("Live Images", coming_page("LIVE IMAGES",
                                                  "Received pictures have no view of their own in this "
                                                  "version yet. The receivers store them all the same."));
  window_->append_page("Stats", coming_page("STATS", "Statistics are not part of this version yet."));
  window_->append_page("Logs", logs_page_->widget());
}

}  // namespace gui
