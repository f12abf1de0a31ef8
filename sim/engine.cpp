#include "sim/engine.h"

#include <algorithm>
#include <stdexcept>
#include <unistd.h>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/locator.h"
#include "base/text.h"
#include "base/time_text.h"
#include "options/paths.h"
#include "sim/faults.h"
#include "sim/known_places.h"
#include "sim/lines.h"

namespace sim {
namespace {

constexpr double not_ready_yet = 0.2;  ///< seconds until a feed is asked again

Receiver open_receiver(const Scenario& scenario, const options::ReceiverOptions& options) {
  Receiver receiver = scenario.receiver_for(options.hardware.serial, options.reception.backend);
  const std::string name = receiver.model.empty() ? receiver.serial : receiver.model + " " + receiver.serial;
  if (scenario.receivers.empty()) throw std::runtime_error("No receiver is attached");
  switch (receiver.presence) {
    case Presence::busy:
      throw std::runtime_error(fmt::format("{} is in use by another program", name));
    case Presence::needs_firmware:
      throw std::runtime_error(fmt::format("{} needs firmware", name));
    case Presence::not_responding:
      throw std::runtime_error(fmt::format("{} is not responding", name));
    case Presence::ready:
      break;
  }
  return receiver;
}

/// A name without a directory means a file in the state directory.
std::string state_path(const std::string& name) {
  return name.empty() || name.find('/') != std::string::npos ? name : options::state_file(name);
}

/// Degrees east of a locator's square; 0 without a locator.
double longitude_of(std::string_view grid) {
  const std::string folded = base::upper(grid);
  return base::is_locator(folded) ? (folded[0] - 'A') * 20.0 + (folded[2] - '0') * 2.0 - 179.0 : 0.0;
}

/// Each start of the process has its own small troubles.
std::uint64_t trouble_seed(const Scenario& scenario, const Receiver& receiver) {
  return seed_of(scenario.seed, hash_text(receiver.serial), static_cast<std::uint64_t>(getpid()),
                 static_cast<std::uint64_t>(base::system_clock()()));
}

}  // namespace

Engine::Engine(const Scenario& scenario, const options::ReceiverOptions& options, StopSignal& stop, Output& output)
    : scenario_(scenario),
      options_(options),
      channels_(options.reception.channels),
      receiver_(open_receiver(scenario, options)),
      stop_(stop),
      output_(output),
      clock_(base::system_clock()(), scenario.rewind, scenario.time_scale),
      traffic_(scenario.seed, receiver_.activity, longitude_of(options.reporting.grid)),
      decode_log_(state_path(options.decoding.all_txt)),
      health_(scenario, trouble_seed(scenario, receiver_), output),
      control_(options, receiver_.control) {}

int Engine::run() {
  if (receiver_.faults.ignore_term) stop_.ignore_term();
  const std::string_view end = receiver_.faults.no_line_feed ? "" : "\n";
  try {
    const double start = base::system_clock()();
    plan_faults(timeline_, receiver_.faults, channels_, start, output_);
    introduce();
    plan_reception(start);
    timeline_.run(stop_);
  } catch (const StopAsked&) {
    leave_pipe_holder(receiver_.faults.hold_pipe);
    output_.last_words(fmt::format("Receiver stopping.{}", end));
  } catch (const FaultyEnd&) {
    leave_pipe_holder(receiver_.faults.hold_pipe);
    output_.last_words(fmt::format("tarnwick: simulated fault, ending here{}", end));
    recordings_.reset();
    end_badly(receiver_.faults);
  }
  return 0;
}

void Engine::introduce() {
  output_.line("Tarnwick receive engine " TARNWICK_VERSION ", simulated station");
  output_.line(fmt::format("Receiver {} {} opened ({})", receiver_.model, receiver_.serial, receiver_.backend));
  output_.line(fmt::format("Decoder channels: {}; capture: {:.3f} MHz at {:g} MS/s", channels_.size(),
                           options_.capture.center / 1e6, options_.capture.sample_rate / 1e6));
}

void Engine::plan_reception(double start) {
  open_recordings();
  open_replay(clock_.at(start));
  for (const Channel& channel : channels_)
    plan_channel(channel, start);
  plan_signals(start);
  plan_retunes(start);
  health_.plan(timeline_, start);
  if (options_.reporting.pskreporter) health_.plan_reports(timeline_, start);
}

void Engine::plan_channel(const Channel& channel, double start) {
  const ModeTiming timing = mode_timing(channel.mode);
  const double begin = clock_.at(start);
  // A cycle that had begun before the receiver did cannot be decoded; a burst tells the one before it at once.
  std::int64_t number =
      scenario_.start_burst ? last_complete_cycle(begin, timing.cycle) : first_cycle_from(begin, timing.cycle);
  const auto due = [this, timing](std::int64_t cycle) {
    return clock_.when(static_cast<double>(cycle + 1) * timing.cycle + timing.decoding);
  };
  const double first = scenario_.start_burst ? start : due(number);
  timeline_.add(first,
                [this, channel, timing, due, number, feed = feed_for(channel), tuning = tuning_](double now) mutable {
                  if (tuning != tuning_) return never;
                  const double cycle_start = static_cast<double>(number) * timing.cycle;
                  const auto decodes = feed(channel, cycle_start);
                  if (!decodes) return now + not_ready_yet;
                  tell(channel, cycle_start, *decodes);
                  return due(++number);
                });
}

/// The cycles that were being received are lost; the new channels begin with their next ones.
void Engine::plan_retunes(double start) {
  constexpr double look_again = 0.1;
  timeline_.add(start, [this](double now) {
    if (auto channels = control_.take_retune()) {
      channels_ = std::move(*channels);
      ++tuning_;
      output_.line(fmt::format("Retuned to {} decoder channels", channels_.size()));
      for (const Channel& channel : channels_)
        plan_channel(channel, now);
    }
    return now + look_again;
  });
}

Engine::Feed Engine::feed_for(const Channel& channel) {
  const auto first_ft8 = std::find_if(channels_.begin(), channels_.end(),
                                      [](const Channel& candidate) { return candidate.mode == Mode::ft8; });
  if (recordings_ && first_ft8 != channels_.end() && *first_ft8 == channel)
    return [this](const Channel&, double) { return recordings_->next(); };
  if (replay_) return [this](const Channel& asked, double start) { return replay_->cycle(asked, start); };
  return [this](const Channel& asked, double start) { return traffic_.cycle(asked, start); };
}

void Engine::open_recordings() {
  if (scenario_.recordings.empty()) return;
  try {
    recordings_ = std::make_unique<Recordings>(scenario_.recordings);
    output_.line(fmt::format("Decoding the recordings in {} with jt9", scenario_.recordings));
  } catch (const std::runtime_error& error) {
    output_.line(fmt::format("Recordings are not used: {}. Invented traffic instead.", error.what()));
  }
}

void Engine::open_replay(double start) {
  if (scenario_.replay.empty()) return;
  try {
    replay_ = std::make_unique<Replay>(base::read_file(scenario_.replay), channels_, start);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(fmt::format("{}: {}", scenario_.replay, error.what()));
  }
  output_.line(fmt::format("Replaying {}{}", scenario_.replay,
                           replay_->empty() ? ", which holds nothing for these channels" : ""));
}

void Engine::plan_signals(double start) {
  auto places = known_places(options_);
  if (places.empty()) return;
  signals_ = std::make_unique<KnownSignals>(scenario_.seed, std::move(places), traffic_.population());
  const double begin = clock_.at(start);
  timeline_.add(start, [this, number = first_cycle_from(begin, KnownSignals::step)](double) mutable {
    for (const std::string& line : signals_->lines(static_cast<double>(number) * KnownSignals::step))
      output_.line(line);
    return clock_.when(static_cast<double>(++number) * KnownSignals::step);
  });
}

void Engine::tell(const Channel& channel, double start, const std::vector<Decode>& decodes) {
  std::string block;
  for (const Decode& decode : decodes)
    block += decode_log_line(channel, start, decode);
  const std::string trouble = decode_log_.append(block);
  if (!trouble.empty()) output_.line(fmt::format("Writing {} failed: {}", options_.decoding.all_txt, trouble));
  output_.line(summary_line(channel, start, decodes));
  health_.count_spots(decodes.size());
}

}  // namespace sim
