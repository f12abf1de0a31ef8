// From a tick in the table of bands to the repainted table, planner's answer included: the whole launcher in process.
// Bands are ticked and unticked at random, so that hardly a selection comes twice and none is remembered.
//
//   table_ticks RECEIVERS [TICKS]        (run it under a display: tests/with_display build/release/bin/table_ticks 4)
#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "gui/app.h"
#include "gui/kit/theme.h"
#include "loop_watch.h"
#include "own_station.h"

using own_station::LoopWatch;
using own_station::turn_for;

namespace {

constexpr const char* models[] = {"RSPdx", "RX-888", "RTL-SDR", "RSP1A"};
constexpr const char* backends[] = {"sdrplay", "rx888", "rtl-sdr", "sdrplay"};

std::string station(int receivers) {
  std::string text =
      "gui-format = multi-receiver-v1\nmode = decoder\nmodes = FT8,FT4,JS8,WSPR\nknown-channels = true\nbands = 20\n";
  for (int i = 0; i < receivers; ++i)
    text +=
        fmt::format("receiver.S{0:02}.enabled = true\nreceiver.S{0:02}.model = {1}\nreceiver.S{0:02}.backend = {2}\n",
                    i, models[i % 4], backends[i % 4]);
  return text;
}

std::string engine_script(int receivers) {
  std::string text = "#!/bin/sh\n";
  for (int i = 0; i < receivers; ++i)
    text += fmt::format("echo '{0}: {1} serial=S{0:02} available=1 backend={2}'\n", i, models[i % 4], backends[i % 4]);
  return text;
}

void collect(GtkWidget* widget, gpointer found) {
  const auto* kind = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "mt-kind"));
  if (kind && std::string_view(kind) == "band") static_cast<std::vector<GtkWidget*>*>(found)->push_back(widget);
  if (GTK_IS_CONTAINER(widget)) gtk_container_forall(GTK_CONTAINER(widget), collect, found);
}

/// The words that stand under the table while the planner works on another thread.
void find_checking(GtkWidget* widget, gpointer found) {
  if (GTK_IS_LABEL(widget) && std::string_view(gtk_label_get_text(GTK_LABEL(widget))).starts_with("Checking which"))
    *static_cast<bool*>(found) = true;
  if (GTK_IS_CONTAINER(widget)) gtk_container_forall(GTK_CONTAINER(widget), find_checking, found);
}

struct Painted {
  GtkWidget* page;
  bool fresh = false;
};

void after_paint(GdkFrameClock*, gpointer data) {
  auto& painted = *static_cast<Painted*>(data);
  bool checking = false;
  find_checking(painted.page, &checking);
  painted.fresh = !checking;
}

void measure(gui::App& app, int receivers, int ticks) {
  GtkWidget* page = gtk_notebook_get_nth_page(app.window().notebook(), 0);
  std::vector<GtkWidget*> bands;
  collect(page, &bands);
  Painted painted{page};
  GdkFrameClock* clock = gtk_widget_get_frame_clock(page);
  const gulong handler = g_signal_connect(clock, "after-paint", G_CALLBACK(after_paint), &painted);
  std::mt19937 random(1);
  std::vector<double> times;
  double longest = 0;
  for (int tick = 0; tick < ticks; ++tick) {
    GtkWidget* band = nullptr;
    do
      band = bands[random() % bands.size()];
    while (!gtk_widget_is_sensitive(band));
    LoopWatch::reset();
    const gint64 start = g_get_monotonic_time();
    gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(band), !gtk_toggle_button_get_active(GTK_TOGGLE_BUTTON(band)));
    const double call = static_cast<double>(g_get_monotonic_time() - start) / 1000;
    painted.fresh = false;
    while (!painted.fresh)
      g_main_context_iteration(nullptr, TRUE);
    times.push_back(static_cast<double>(g_get_monotonic_time() - start) / 1000);
    // The saving that follows is an iteration too.
    turn_for(tick % 20 == 19 ? 1.3 : 0.02);
    longest = std::max({longest, call, LoopWatch::longest_ms()});
  }
  g_signal_handler_disconnect(clock, handler);
  std::sort(times.begin(), times.end());
  fmt::print(
      "{} receivers, {} ticks: median {:.1f} ms, nine in ten {:.1f} ms, slowest {:.1f} ms; longest iteration "
      "{:.1f} ms\n",
      receivers, ticks, times[times.size() / 2], times[times.size() * 9 / 10], times.back(), longest);
}

}  // namespace

int main(int argc, char** argv) {
  const int receivers = argc > 1 ? std::atoi(argv[1]) : 4;
  const int ticks = argc > 2 ? std::atoi(argv[2]) : 200;
  gtk_init(&argc, &argv);
  kit::load_theme();
  const own_station::Directory directory;
  gui::App app(directory.setup(engine_script(receivers), station(receivers)));
  app.build();
  app.open();
  turn_for(2);
  LoopWatch::begin();
  measure(app, receivers, ticks);
}
