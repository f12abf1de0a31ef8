// What a burst of engine lines costs the window: the whole launcher in process, its engines small programs that print
// as fast as they can. Prints the longest iteration of the main loop, the throughput and the memory.
//
//   window_burst ENGINES LINES_PER_ENGINE
//
// Run it under a display: tests/with_display build/release/bin/window_burst 16 1250
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fmt/format.h>

#include "gui/app.h"
#include "gui/kit/theme.h"
#include "loop_watch.h"
#include "own_station.h"

using own_station::LoopWatch;
using own_station::resident_megabytes;
using own_station::turn_for;
using own_station::turn_until;

namespace {

std::string engine_script(int engines, long lines) {
  std::string listing;
  for (int i = 0; i < engines; ++i)
    listing += fmt::format("echo '{0}: RSPdx serial=S{0:02} available=1'\n", i);
  return fmt::format(
      "#!/bin/sh\nif [ \"$1\" = --list-devices ]; then\n{}exit\nfi\nsleep 3\n"
      "mawk 'BEGIN {{ for (i = 0; i < {}; i++) printf \"FT8 261122_%02d%02d%02d 14.074000 MHz: 12 spots; "
      "callsigns=K1ABC,W9XYZ,DL1AAA,G4BBB,F5CCC\\n\", i / 3600 % 24, i / 60 % 60, i % 60 }}'\nexec sleep 600\n",
      listing, lines);
}

std::string station(int engines) {
  std::string text = "gui-format = multi-receiver-v1\nmode = hybrid\nmodes = FT8\n";
  const char* bands[] = {"160", "80", "60", "40", "30", "20", "17", "15", "12", "10", "6", "2", "70cm"};
  std::string list;
  for (int i = 0; i < engines; ++i) {
    text += fmt::format("receiver.S{:02}.enabled = true\nreceiver.S{:02}.model = RSPdx\n", i, i);
    // There are thirteen bands; receivers beyond them listen.
    if (i >= 13) {
      text += fmt::format("audio.v{0} = id=v{0},frequency=14.2M\nband.@v{0}.receiver = S{0:02}\n", i);
      continue;
    }
    list += (i ? "," : "") + std::string(bands[i]);
    text += fmt::format("band.{}.receiver = S{:02}\n", bands[i], i);
  }
  return text + "bands = " + list + "\n";
}

}  // namespace

int main(int argc, char** argv) {
  const int engines = argc > 1 ? std::atoi(argv[1]) : 16;
  const long lines = argc > 2 ? std::atol(argv[2]) : 1250;
  gtk_init(&argc, &argv);
  kit::load_theme();
  const own_station::Directory directory;
  {
    gui::App app(directory.setup(engine_script(engines, lines), station(engines)));
    app.build();
    app.open();
    turn_until([&] { return !app.busy(); });
    turn_for(2);
    const std::uint64_t expected = static_cast<std::uint64_t>(engines) * static_cast<std::uint64_t>(lines);
    const double before = resident_megabytes();
    LoopWatch::begin();
    const gint64 start = g_get_monotonic_time();
    app.start_receivers();
    const double start_ms = static_cast<double>(g_get_monotonic_time() - start) / 1000;
    // The click and the first drawing of the cards are told apart: the engines print only after both.
    turn_for(2);
    const double drawing_ms = LoopWatch::longest_ms();
    LoopWatch::reset();
    turn_until([&] { return app.activity().total_decodes() >= expected; });
    const double seconds = static_cast<double>(g_get_monotonic_time() - start) / G_USEC_PER_SEC;
    const double after = resident_megabytes();
    turn_for(2);
    fmt::print(
        "{} engines x {} lines: {:.2f} s, {:.0f} lines/s, start {:.1f} ms, longest iteration until drawn {:.1f} ms, in "
        "the burst {:.1f} ms, "
        "memory {:.1f} -> {:.1f} MB\n",
        engines, lines, seconds, static_cast<double>(expected) / seconds, start_ms, drawing_ms, LoopWatch::longest_ms(),
        before, after);
    app.stop_receivers();
    turn_until([&] { return !app.receiving(); });
  }
}
