#include "receiver/meter_view.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "launcher/catalogue/bands.h"
#include "options/receiver_options.h"

namespace receiver {
namespace {

constexpr const char* nothing = "—";
/// An overload that has cleared is remembered on the badge for this long.
constexpr std::int64_t recovery_time = 60000000;
/// Full scale is 0 dBFS; below this the bar is empty.
constexpr double bar_floor = -100;

/// "−42.3 dB", with the sign of a formula.
std::string decibels(double value, const char* unit = "dB") {
  const std::string digits = fmt::format("{:.1f}", std::abs(value));
  return fmt::format("{}{} {}", value < 0 && digits != "0.0" ? "−" : "", digits, unit);
}

double position(double level) {
  return std::clamp((level - bar_floor) / -bar_floor, 0.0, 1.0);
}

std::string state_text(const MeterSnapshot* snapshot, const MeterSurroundings& around, std::int64_t now) {
  if (!around.running) return "Receiver is stopped";
  if (snapshot == nullptr) return "waiting";
  if (!snapshot->error.empty()) return "unavailable, " + snapshot->error;
  if (!is_current(*snapshot, now)) return snapshot->taken == 0 ? "waiting" : "stale";
  return snapshot->reading.level_state;
}

LevelBar level_bar(const MeterSnapshot* snapshot, const MeterSurroundings& around, std::int64_t now) {
  LevelBar bar;
  bar.tooltip =
      "IQ level relative to sample-format full scale; 50–100 ms average fill and five-second peak marker. Red overload "
      "indication comes from the receiver (SDRplay API notification, or RX-888 or RTL-SDR full-scale samples), "
      "independently of IQ level. This is not calibrated analog headroom. State: " +
      state_text(snapshot, around, now);
  const bool ready =
      around.running && snapshot != nullptr && is_current(*snapshot, now) && snapshot->reading.level_state == "ready";
  if (!ready) return bar;
  const MeterReading& reading = snapshot->reading;
  bar.fill = position(reading.rms);
  bar.marker = position(reading.hold);
  bar.tooltip += fmt::format(", average {}, peak {}, five-second peak {}", decibels(reading.rms),
                             decibels(reading.peak), decibels(reading.hold));
  return bar;
}

std::string strongest_text(const StrongestSignal& strongest, const MeterSurroundings& around) {
  const std::string signal =
      fmt::format("{:.3f} MHz ({})", strongest.frequency / 1e6, decibels(strongest.level, "dBFS"));
  if (around.backend == "rx888") return "strongest in the capture window " + signal;
  const bool monitored = around.launch != nullptr && monitors(*around.launch, strongest.frequency);
  return fmt::format("strongest signal {}{}", signal,
                     monitored ? " (within a monitored band)" : " — outside monitored bands; reassign to avoid");
}

std::string overload_text(const MeterReading& reading, const MeterSurroundings& around) {
  if (around.backend == "rx888")
    return fmt::format(
        "The RX-888's ADC is clipping; any signal from 0 to 64 MHz can cause it. Raise the attenuator or lower the VGA "
        "gain. Episodes: {}",
        reading.overload_events);
  const bool dongle = around.backend == "rtl-sdr";
  const char* advice = !dongle                  ? "Reduce RF Gain."
                       : around.direct_sampling ? "Put an attenuator in front of the dongle."
                                                : "Reduce Tuner gain.";
  return fmt::format("SDR input overloaded. {} Episodes: {}", advice, reading.overload_events);
}

RfBadge rf_badge(const MeterSnapshot* snapshot, const MeterSurroundings& around, std::int64_t now) {
  if (!around.running) return {"RF", BadgeLook::muted, "Receiver is stopped"};
  if (snapshot != nullptr && (!snapshot->error.empty() || (snapshot->taken != 0 && !is_current(*snapshot, now))))
    return {"RF", BadgeLook::muted, "RF overload notifications are unavailable for this receiver"};
  const MeterReading reading = snapshot == nullptr ? MeterReading{} : snapshot->reading;
  const std::string& state = reading.overload_state;
  if (state == "detected") {
    std::string text = overload_text(reading, around);
    if (reading.strongest) text += " — " + strongest_text(*reading.strongest, around);
    return {"RF !", BadgeLook::overload, text};
  }
  if (state == "clear" && reading.overload_events > 0 && snapshot->last_overload != 0 &&
      now - snapshot->last_overload < recovery_time)
    return {"RF !", BadgeLook::recovered,
            fmt::format("Receiver reports recovery. Overload episodes this session: {}", reading.overload_events)};
  if (state == "clear")
    return {"RF", BadgeLook::muted,
            fmt::format("No recent RF overload. Overload episodes this session: {}", reading.overload_events)};
  if (state == "unavailable")
    return {"RF", BadgeLook::muted, "RF overload notifications are unavailable for this receiver"};
  return {"RF", BadgeLook::muted, "Waiting for an SDR input overload or recovery notification"};
}

std::string gain_note(const MeterReading* reading, const MeterSurroundings& around) {
  if (around.backend != "rtl-sdr") return {};
  if (around.direct_sampling)
    return "Direct sampling (HF): the dongle's tuner is off, so there is no gain to set; the antenna goes straight to "
           "its "
           "converter. If RF ! shows, put an attenuator in front of the dongle.";
  if (around.agc && reading != nullptr && reading->tuner_state == "ready")
    return fmt::format("Tuner AGC sets the gain: {:.1f} dB now. Untick it to set Tuner gain yourself.",
                       reading->tuner_gain);
  return {};
}

}  // namespace

const char* badge_class(BadgeLook look) {
  return look == BadgeLook::overload ? "rf-overload" : look == BadgeLook::recovered ? "rf-recovered" : "muted";
}

MeterView meter_view(const MeterSnapshot* snapshot, const MeterSurroundings& around, std::int64_t now) {
  MeterView view;
  view.level = level_bar(snapshot, around, now);
  view.badge = rf_badge(snapshot, around, now);
  const bool current = around.running && snapshot != nullptr && is_current(*snapshot, now);
  const MeterReading* reading = current ? &snapshot->reading : nullptr;
  const bool level = reading != nullptr && reading->level_state == "ready";
  const bool unknown = reading != nullptr && reading->level_state == "unavailable";
  view.rf_text = level ? decibels(reading->rms, "dBFS") : unknown ? "unavailable" : nothing;
  const bool gain = reading != nullptr && reading->if_state == "ready";
  view.if_text = gain ? fmt::format("−{} dB", reading->if_reduction) : nothing;
  if (gain && around.agc) view.if_slider = reading->if_reduction;
  view.gain_note = gain_note(reading, around);
  return view;
}

bool monitors(const launcher::ReceiverLaunch& launch, double frequency) {
  for (const std::string& group : launch.groups)
    for (const launcher::ActivityBand& band : launcher::activity_bands)
      if (band.name == launcher::band_display_name(group) && frequency >= band.low && frequency <= band.high)
        return true;
  constexpr double channel = 5000;
  for (const launcher::LaunchChannel& each : launch.channels)
    if (frequency >= each.frequency && frequency <= each.frequency + channel) return true;
  if (!launch.options) return false;
  const auto& listening = launch.options->reception.audio_channels;
  return std::any_of(listening.begin(), listening.end(), [&](const auto& audio) {
    const options::Passband band = options::audio_passband(audio);
    return audio.enabled && frequency >= band.lower && frequency <= band.upper;
  });
}

}  // namespace receiver
