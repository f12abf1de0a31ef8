#include "sim/front_end.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "base/numbers.h"

namespace sim {
namespace {

/// What the antenna delivers, as the level that full gain would make of it. It breathes over half a minute.
constexpr double antenna_level = 2, antenna_swing = 6, swing_seconds = 31;
constexpr double full_scale = -1;   ///< the converter clips from here
constexpr double quiet_again = -6;  ///< and has recovered from there
constexpr double crest = 11;        ///< from the average to the peak
constexpr double lna_step = 4;      ///< dB for each RF gain state
constexpr double agc_target = -12;
constexpr double least_reduction = 20, most_reduction = 59;

double number(const std::string& text, double otherwise) {
  return base::parse_scaled(text).value_or(otherwise);
}

}  // namespace

FrontEnd::FrontEnd(const options::ReceiverOptions& options)
    : family_(options.reception.family),
      if_reduction_(options.sdrplay.gain_reduction),
      lna_state_(options.sdrplay.lna_state),
      attenuation_(options.rx888.attenuation),
      vga_gain_(options.rx888.gain),
      tuner_gain_(options.rtl.gain),
      agc_(options.sdrplay.agc),
      direct_sampling_(options.rtl.direct_sampling.starts_with("q") || options.rtl.direct_sampling == "i") {}

void FrontEnd::set(const std::map<std::string, std::string>& settings) {
  for (const auto& [key, value] : settings) {
    if (key == "agc") agc_ = value == "on";
    if (key == "gain-reduction") if_reduction_ = number(value, if_reduction_);
    if (key == "lna-state") lna_state_ = number(value, lna_state_);
    if (key == "rx888-attenuation") attenuation_ = number(value, attenuation_);
    if (key == "rx888-gain") vga_gain_ = number(value, vga_gain_);
    if (key == "rtl-gain") tuner_gain_ = number(value, tuner_gain_);
  }
}

void FrontEnd::tune(double, double strongest) {
  strongest_ = strongest;
}

double FrontEnd::gain() const {
  switch (family_) {
    case launcher::Family::rx888:
      return vga_gain_ - attenuation_ - 12;
    case launcher::Family::rtl_sdr:
      return direct_sampling_ ? -20 : tuner_gain_ - 45;
    case launcher::Family::sdrplay:
      break;
  }
  return least_reduction - if_reduction_ - lna_step * lna_state_;
}

double FrontEnd::input_level(double now) const {
  constexpr double turn = 6.283185307179586;
  return antenna_level + antenna_swing * std::sin(turn * now / swing_seconds) + gain();
}

/// The API moves the IF gain by a few dB each time; a dongle's tuner does the same for itself.
void FrontEnd::follow_agc(double level) {
  if (!agc_) return;
  const double step = std::clamp(std::round((level - agc_target) / 2), -3.0, 3.0);
  if (family_ == launcher::Family::sdrplay)
    if_reduction_ = std::clamp(if_reduction_ + step, least_reduction, most_reduction);
  if (family_ == launcher::Family::rtl_sdr) tuner_gain_ = std::clamp(tuner_gain_ - step, 0.0, 49.6);
}

void FrontEnd::notice_overload(double level) {
  if (!overloaded_ && level >= full_scale) {
    overloaded_ = true;
    ++episodes_;
  } else if (overloaded_ && level < quiet_again) {
    overloaded_ = false;
  }
}

std::string FrontEnd::meter(double now) {
  const double peak = std::min(input_level(now), 0.0);
  follow_agc(peak);
  notice_overload(peak);
  if (peak >= hold_ || now >= hold_until_) {
    constexpr double hold_seconds = 5;
    hold_ = peak;
    hold_until_ = now + hold_seconds;
  }
  samples_ += 65536;
  std::string reply = fmt::format("OK LEVELS state=ready,peak={:.2f},rms={:.2f},hold={:.2f},age=0.05,samples={}\n",
                                  peak, peak - crest, hold_, samples_);
  reply += fmt::format("OK OVERLOAD state={},events={}\n", overloaded_ ? "detected" : "clear", episodes_);
  const bool has_if = family_ == launcher::Family::sdrplay;
  reply += fmt::format("OK IFGAIN state={},reduction={:.0f}\n", has_if ? "ready" : "unavailable",
                       has_if ? if_reduction_ : 0);
  if (strongest_ > 0) reply += fmt::format("OK STRONGEST {:.0f} {:.1f}\n", strongest_, peak - 2);
  if (family_ == launcher::Family::rtl_sdr)
    reply += direct_sampling_ ? std::string("OK TUNER unavailable\n")
                              : fmt::format("OK TUNER state=ready,gain={:.1f}\n", tuner_gain_);
  return reply;
}

}  // namespace sim
