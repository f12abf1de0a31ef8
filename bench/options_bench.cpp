// The planner's inner step: judging one receiver's whole profile, and what comes before and beside it.
#include <map>
#include <string>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "launcher/capture/capture.h"
#include "options/command_line.h"
#include "options/profile.h"

namespace {

/// Three audio and three analysis channels, many bands, and every setting that a launch profile carries.
options::Profile full_profile(const std::string& bands) {
  options::Profile profile{{"mode", "hybrid"},
                           {"backend", "rx888"},
                           {"bands", bands},
                           {"modes", "FT8,FT4,JS8,JS8-FAST,JS8-TURBO,JS8-SLOW,WSPR"},
                           {"known-channels", "true"},
                           {"known-modes", "cw,psk31,rtty,olivia,jtty,wefax,msk144"},
                           {"all-txt", "/home/operator/.local/state/tarnwick/ALL.TXT"},
                           {"history-db", "/home/operator/.local/state/tarnwick/history.sqlite3"},
                           {"history-days", "7"},
                           {"audio-control", "/home/operator/.local/state/tarnwick/audio-control/audio-1-1.sock"},
                           {"audio-gain", "10"},
                           {"callsign", "K1ABC"},
                           {"grid", "FN31PR"},
                           {"pskreporter", "true"},
                           {"wsprnet", "true"},
                           {"ppm", "0.5"},
                           {"rx888-rate", "full"},
                           {"rx888-coverage", "all"},
                           {"rx888-gain", "10"},
                           {"rx888-attenuation", "3.5"},
                           {"stats", "true"},
                           {"daemon", "false"}};
  for (int i = 1; i <= 3; ++i) {
    profile[fmt::format("audio.voice{}", i)] = fmt::format(
        "id=voice{},frequency={}M,modulation=USB,bandwidth=2800,audio-rate=48000,audio-gain=10,enabled=true", i,
        14 + i);
    profile[fmt::format("analysis.band{}", i)] = fmt::format(
        "id=band{},frequency={}.07M,modulation=USB,bandwidth=3000,modes=psk31+rtty,rtty=auto,wefax=auto,report=on,"
        "enabled=true",
        i, 14 + i);
  }
  return profile;
}

/// All that the widest capture holds; the twelfth band lies beyond every receiver.
const std::string eleven_bands = "160,80,60,40,30,20,17,15,12,10,6";

void judge_eleven_bands(benchmark::State& state) {
  const options::Profile profile = full_profile(eleven_bands);
  for (auto _ : state)
    benchmark::DoNotOptimize(options::check_profile(profile));
}
BENCHMARK(judge_eleven_bands);

/// Refused for its reach, as a good part of what the planner tries: the exception is in the time.
void judge_twelve_bands(benchmark::State& state) {
  const options::Profile profile = full_profile(eleven_bands + ",2");
  for (auto _ : state) {
    try {
      benchmark::DoNotOptimize(options::check_profile(profile));
    } catch (const options::CaptureFitError&) {
    }
  }
}
BENCHMARK(judge_twelve_bands);

void judge_one_band(benchmark::State& state) {
  const options::Profile profile{{"mode", "decoder"}, {"modes", "FT8"}, {"bands", "20"}};
  for (auto _ : state)
    benchmark::DoNotOptimize(options::check_profile(profile));
}
BENCHMARK(judge_one_band);

void read_and_judge_text(benchmark::State& state) {
  const std::string text = options::render_profile(full_profile(eleven_bands));
  for (auto _ : state)
    benchmark::DoNotOptimize(options::check_profile(options::parse_config_text(text, "profile", false)));
}
BENCHMARK(read_and_judge_text);

void fit_by_extremes(benchmark::State& state) {
  const launcher::CaptureSettings settings{launcher::Family::rx888};
  const launcher::CaptureNeeds needs{{1.84e6, 28.08e6}, {1.84e6, 28.2e6}};
  for (auto _ : state) {
    launcher::CaptureNeeds wanted = needs;
    benchmark::DoNotOptimize(wanted);
    benchmark::DoNotOptimize(launcher::fit_capture(settings, wanted));
  }
}
BENCHMARK(fit_by_extremes);

/// One megabyte of hostile text; the time is for the whole of it.
void refuse_hostile(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    try {
      benchmark::DoNotOptimize(options::parse_config_text(text, "profile", true));
    } catch (const std::runtime_error&) {
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

std::string repeated_line(const std::string& line) {
  std::string text;
  while (text.size() + line.size() + 2 < options::profile_size_limit)
    text += line + "\n";
  return text;
}

BENCHMARK_CAPTURE(refuse_hostile, equals_signs, std::string(1 << 20, '='));
BENCHMARK_CAPTURE(refuse_hostile, long_comments, repeated_line("#" + std::string(4095, '=')));
BENCHMARK_CAPTURE(refuse_hostile, empty_lines, std::string((1 << 20) - 1, '\n'));

void read_many_keys(benchmark::State& state) {
  std::string text;
  for (int i = 0; text.size() < options::profile_size_limit - 100; ++i)
    text += fmt::format("receiver.{}.x = '{}'\n", i, std::string(static_cast<std::size_t>(i % 7), '.'));
  for (auto _ : state)
    benchmark::DoNotOptimize(options::parse_config_text(text, "profile", true));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(read_many_keys);

}  // namespace
