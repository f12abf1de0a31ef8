// What the meters and the live sliders of sixteen receivers cost the window, and how soon a slider's value is on its
// way: the whole launcher in process, its control sockets those of stand-in engines whose levels never rest.
//
//   config_window [POLLS]
//
// Run it under a display: tests/with_display build/release/bin/config_window. With POLLS each receiver is asked so many
// times as fast as the answers come, instead: what memory grows by.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <string>
#include <unistd.h>
#include <vector>

#include <fmt/format.h>

#include "base/file_write.h"
#include "gui/app.h"
#include "gui/kit/theme.h"
#include "own_station.h"
#include "stand_in_engines.h"

using own_station::turn_for;
using own_station::turn_until;

namespace {

constexpr int receivers = 16;
constexpr int config_page = 1, sharing_page = 4;
constexpr const char* slider_serial = "S01";  // an RX-888
constexpr double slider_end = 31.5;           // its attenuator

struct Receiver {
  const char* model;
  const char* backend;
  const char* band;
};

/// There are thirteen bands; receivers beyond them listen.
Receiver receiver_at(int index) {
  constexpr const char* bands[] = {"160", "80", "60", "40", "30", "20", "17", "15", "12", "10", "6", "2", "70cm"};
  const char* band = index < 13 ? bands[index] : nullptr;
  if (index >= 8 && index < 13) return {"RTL-SDR Blog V4", "rtl-sdr", band};
  if (index == 1 || index == 4 || index == 7) return {"RX-888 MKII", "rx888", band};
  return {"RSPdx", "sdrplay", band};
}

std::string station() {
  std::string text = "gui-format = multi-receiver-v1\nmode = hybrid\nmodes = FT8\n", bands;
  for (int i = 0; i < receivers; ++i) {
    const Receiver receiver = receiver_at(i);
    text +=
        fmt::format("receiver.S{0:02}.enabled = true\nreceiver.S{0:02}.model = {1}\nreceiver.S{0:02}.backend = {2}\n",
                    i, receiver.model, receiver.backend);
    if (receiver.band == nullptr) {
      text += fmt::format("audio.v{0} = id=v{0},frequency=14.2M\nband.@v{0}.receiver = S{0:02}\n", i);
      continue;
    }
    bands += (i ? "," : "") + std::string(receiver.band);
    text += fmt::format("band.{}.receiver = S{:02}\n", receiver.band, i);
  }
  return text + "bands = " + bands + "\n";
}

std::string engine() {
  std::string listing;
  for (int i = 0; i < receivers; ++i) {
    const Receiver receiver = receiver_at(i);
    listing += fmt::format("{0}: {1} serial=S{0:02} available=1 backend={2}\n", i, receiver.model, receiver.backend);
  }
  return "#!/bin/sh\nif [ \"$1\" = --list-devices ]; then\ncat <<'END'\n" + listing + "END\nexit\nfi\nexec sleep 600\n";
}

std::vector<std::string> sockets(const own_station::Directory& directory) {
  const std::string folder = directory.state() + "/audio-control";
  base::make_private_directory(folder);
  std::vector<std::string> paths;
  paths.reserve(receivers);
  for (int i = 0; i < receivers; ++i)
    paths.push_back(fmt::format("{}/audio-{}-{}.sock", folder, ::getpid(), i));
  return paths;
}

GtkWidget* find(GtkWidget* root, const std::function<bool(GtkWidget*)>& fits) {
  if (fits(root)) return root;
  if (!GTK_IS_CONTAINER(root)) return nullptr;
  GList* children = gtk_container_get_children(GTK_CONTAINER(root));
  GtkWidget* found = nullptr;
  for (const GList* child = children; child != nullptr && found == nullptr; child = child->next)
    found = find(GTK_WIDGET(child->data), fits);
  g_list_free(children);
  return found;
}

GtkRange* find_slider(GtkWidget* window) {
  GtkWidget* card = find(window, [](GtkWidget* widget) {
    const auto* serial = static_cast<const char*>(g_object_get_data(G_OBJECT(widget), "receiver-serial"));
    return serial != nullptr && std::string(serial) == slider_serial;
  });
  return GTK_RANGE(find(card, [](GtkWidget* widget) {
    return GTK_IS_SCALE(widget) && gtk_adjustment_get_upper(gtk_range_get_adjustment(GTK_RANGE(widget))) == slider_end;
  }));
}

/// Share of one core over ten seconds, in percent, with what was painted and asked in a second.
void tell_cost(const char* what, GtkWidget* window, const stand_in::Engines::Shared& engines) {
  constexpr double seconds = 10;
  GdkFrameClock* clock = gtk_widget_get_frame_clock(window);
  turn_for(2);
  int frames = 0;
  const auto count = +[](GdkFrameClock*, int* painted) { ++*painted; };
  const gulong connection = g_signal_connect(clock, "after-paint", G_CALLBACK(count), &frames);
  const unsigned polls = engines.polls;
  const double before = stand_in::processor_seconds();
  turn_for(seconds);
  const double used = stand_in::processor_seconds() - before;
  g_signal_handler_disconnect(clock, connection);
  fmt::print("{}: {:.2f} % of a core, {:.1f} frames/s, {:.1f} polls/s of all receivers\n", what, 100 * used / seconds,
             frames / seconds, (engines.polls - polls) / seconds);
  std::fflush(stdout);
}

/// The slider is dragged for a moment and let go of. Returns when it last moved, in microseconds.
gint64 drag(GtkRange* slider, double from) {
  constexpr int moves = 10;
  for (int i = 1; i < moves; ++i) {
    gtk_range_set_value(slider, from + 0.5 * i);
    turn_for(0.02);
  }
  gtk_range_set_value(slider, from + 0.5 * moves);
  return g_get_monotonic_time();
}

class Times {
 public:
  void take(gint64 microseconds) { taken_.push_back(1e-3 * static_cast<double>(microseconds)); }
  /// "least, median, most" in milliseconds.
  std::string text() {
    std::sort(taken_.begin(), taken_.end());
    return fmt::format("{:.1f}, {:.1f}, {:.1f} ms", taken_.front(), taken_[taken_.size() / 2], taken_.back());
  }

 private:
  std::vector<double> taken_;
};

/// From the last movement to the engine's having the request; and from its refusal to the old value's being painted.
void tell_slider_times(GtkRange* slider, stand_in::Engines::Shared& engine) {
  constexpr int drags = 40;
  Times sent, returned;
  for (int i = 0; i < drags; ++i) {
    engine.refuses = i % 2 == 1;
    const int changes = engine.changes;
    const double applied = gtk_range_get_value(slider);
    const gint64 moved = drag(slider, i * 3 % 20);
    turn_until([&] { return engine.changes > changes && engine.told > moved; });
    sent.take(engine.asked - moved);
    if (engine.refuses) {
      bool painted = false;
      turn_until([&] { return gtk_range_get_value(slider) == applied; });
      GdkFrameClock* clock = gtk_widget_get_frame_clock(GTK_WIDGET(slider));
      const auto done = +[](GdkFrameClock*, bool* flag) { *flag = true; };
      const gulong connection = g_signal_connect(clock, "after-paint", G_CALLBACK(done), &painted);
      turn_until([&] { return painted; });
      g_signal_handler_disconnect(clock, connection);
      returned.take(g_get_monotonic_time() - engine.told);
    }
    turn_for(0.2);
  }
  fmt::print("slider, least, median and most: request after {}; a refused value painted back after {}\n", sent.text(),
             returned.text());
}

void tell_costs(gui::App& app, stand_in::Engines::Shared& engines) {
  GtkWidget* window = GTK_WIDGET(app.window().window());
  app.window().show_page(config_page);
  tell_cost("SDR Config shown, sixteen receivers running", window, engines);
  tell_slider_times(find_slider(window), engines);
  gtk_window_maximize(GTK_WINDOW(window));
  tell_cost("the same in a window of the whole screen", window, engines);
  app.window().show_page(sharing_page);
  tell_cost("another tab", window, engines);
  app.window().show_page(config_page);
  gtk_widget_hide(window);
  tell_cost("window unmapped", window, engines);
}

/// Memory in use at each tenth of the way.
void tell_growth(gui::App& app, const stand_in::Engines::Shared& engines, unsigned polls) {
  app.window().show_page(config_page);
  for (unsigned tenth = 1; tenth <= 10; ++tenth) {
    turn_until([&] { return engines.polls / receivers >= polls / 10 * tenth; });
    fmt::print("{} polls of each receiver: {:.3f} MB allocated, {:.1f} MB resident\n", engines.polls / receivers,
               static_cast<double>(::mallinfo2().uordblks) / (1 << 20), own_station::resident_megabytes());
    std::fflush(stdout);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const unsigned polls = argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 0;
  const own_station::Directory directory;
  stand_in::Engines engines(sockets(directory));
  gtk_init(&argc, &argv);
  kit::load_theme();
  gui::App::Setup setup = directory.setup(engine(), station());
  if (polls) setup.timing.meter_period = std::chrono::milliseconds(1);
  gui::App app(setup);
  app.build();
  app.open();
  turn_until([&] { return !app.busy(); });
  app.window().show_page(config_page);
  if (!polls) tell_cost("SDR Config shown, nothing running", GTK_WIDGET(app.window().window()), engines.shared());
  app.start_receivers();
  if (!app.receiving()) return 1;
  if (polls)
    tell_growth(app, engines.shared(), polls);
  else
    tell_costs(app, engines.shared());
  app.stop_receivers();
  turn_until([&] { return !app.receiving(); });
}
