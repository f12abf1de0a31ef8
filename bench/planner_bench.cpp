// A cold plan: what the operator waits for between a tick and the answer.
#include <random>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "launcher/band_choices.h"
#include "launcher/planner.h"

namespace {

using options::ReceiverProfile;
using options::Station;

constexpr const char* twelve_bands = "160,80,60,40,30,20,17,15,12,10,6,2";

/// Receivers of the three families in turn, no two with the same settings.
ReceiverProfile receiver(std::size_t index) {
  ReceiverProfile made{fmt::format("R{:02}", index), "RSPdx", {{"ppm", std::to_string(index)}}, true, true};
  if (index % 3 == 1) {
    made.model = "RTL-SDR Blog V4";
    made.settings["backend"] = "rtl-sdr";
  }
  if (index % 3 == 2) {
    made.model = "RX-888 MKII";
    made.settings["backend"] = "rx888";
    made.settings["rx888-rate"] = index % 2 == 0 ? "half" : "full";
  }
  return made;
}

Station mixed(std::size_t receivers, const char* bands) {
  Station station;
  station.common = {{"mode", "decoder"}, {"modes", "FT8,FT4,JS8,WSPR"}, {"bands", bands}, {"known-channels", "true"}};
  for (std::size_t index = 0; index < receivers; ++index)
    station.receivers.push_back(receiver(index));
  return station;
}

/// Nothing but narrow receivers, each where it helps little: the answer is that there is none.
Station hopeless(std::size_t receivers, const char* bands, bool one_kind) {
  Station station = mixed(receivers, bands);
  for (std::size_t index = 0; index < receivers; ++index) {
    ReceiverProfile& each = station.receivers[index];
    each.model = "RSP1A";
    each.settings = {{"sample-rate", "2048000"}};
    if (!one_kind) each.settings["center-frequency"] = fmt::format("{}k", 1900 + 500 * index);
  }
  return station;
}

Station pinned(Station station) {
  station.assignments = {{"20", "R00"}, {"160", "R03"}, {"6", "R01"}, {"2", "R04"}};
  return station;
}

Station with_audio(Station station) {
  station.common["mode"] = "hybrid";
  std::mt19937 random(7);
  for (int id = 0; id < 16; ++id)
    station.common[fmt::format("audio.v{:02}", id)] =
        fmt::format("id=v{:02},frequency={}", id, 1800000 + random() % 50000000);
  return station;
}

void plan(benchmark::State& state, const Station& station) {
  bool placed = false;
  for (auto _ : state) {
    try {
      benchmark::DoNotOptimize(launcher::plan_uncached(station));
      placed = true;
    } catch (const std::exception& error) {
      benchmark::DoNotOptimize(error.what());
    }
  }
  state.SetLabel(placed ? "placed" : "refused");
}

void choices(benchmark::State& state, const Station& station) {
  for (auto _ : state)
    benchmark::DoNotOptimize(launcher::band_choices_uncached(station));
}

constexpr const char* thirteen_bands = "160,80,60,40,30,20,17,15,12,10,6,2,70cm";
constexpr const char* nine_bands = "80,60,40,30,20,17,15,12,10";

BENCHMARK_CAPTURE(plan, TwelveOnSixteenMixed, mixed(16, twelve_bands));
BENCHMARK_CAPTURE(plan, TwelveOnSixteenMixedPinned, pinned(mixed(16, twelve_bands)));
BENCHMARK_CAPTURE(plan, TwelveOnThreeMixed, mixed(3, twelve_bands));
BENCHMARK_CAPTURE(plan, TwelveOnSixteenNarrowAlike, hopeless(16, twelve_bands, true));
BENCHMARK_CAPTURE(plan, TwelveOnSixteenNarrowFixed, hopeless(16, twelve_bands, false));
BENCHMARK_CAPTURE(plan, ThirteenAndSixteenAudioOnSixteen, with_audio(mixed(16, thirteen_bands)));
BENCHMARK_CAPTURE(plan, ThirteenAndSixteenAudioOnFour, with_audio(mixed(4, thirteen_bands)));
BENCHMARK_CAPTURE(plan, ThirteenAndSixteenAudioNarrow, with_audio(hopeless(16, thirteen_bands, false)));
BENCHMARK_CAPTURE(choices, NineTickedOnFour, mixed(4, nine_bands));
BENCHMARK_CAPTURE(choices, TwelveTickedOnFour, mixed(4, twelve_bands));
BENCHMARK_CAPTURE(choices, OneTickedOnSixteen, mixed(16, "20"));
BENCHMARK_CAPTURE(choices, NineTickedOnSixteenNarrow, hopeless(16, nine_bands, false));

}  // namespace
