#include "launcher/placement/slot.h"

#include <fmt/format.h>

#include "base/numbers.h"
#include "launcher/capture/direct_sampling.h"
#include "launcher/receiver_overlay.h"
#include "options/command_line.h"

namespace launcher {
namespace {

/// What the channels of a set need of a capture on this receiver.
CaptureNeeds needs_of(const FitKey& key, const options::ReceiverOptions& options) {
  const double bandwidth = options.hardware.bandwidth;
  const double ft8_width = channel_width(DigitalMode::ft8, bandwidth);
  const auto reach = [&](double low, double ft8_top, double other_top) {
    Extent extent;
    if (ft8_top >= 0) extent.add(options::Passband{low, ft8_top + ft8_width});
    if (other_top >= 0) extent.add(options::Passband{low, other_top + bandwidth});
    return extent;
  };
  CaptureNeeds needs;
  if (!key.no_band)
    needs.all = options.known.spot ? reach(key.span.low, key.ft8_top, key.other_top)
                                   : reach(key.listened_low, key.listened_ft8_top, key.listened_other_top);
  needs.all.add(key.consumers);
  return needs;
}

/// The centre that the launch would choose, as its profile would say it.
double own_center(const FitKey& key) {
  Extent carried = key.consumers;
  if (!key.no_band) carried.add(options::Passband{key.span.low, key.span.high + band_margin});
  return base::parse_double(fmt::format("{:.6f}", launch_center(carried))).value_or(0);
}

}  // namespace

Slot::Slot(const options::Profile& common, options::ReceiverProfile receiver)
    : common_(common), receiver_(std::move(receiver)) {
  const auto own = receiver_.settings.find("backend");
  const bool has_own = own != receiver_.settings.end() && !own->second.empty();
  family_ = parse_family(has_own ? std::string_view(own->second) : value_or(common_, "backend", "sdrplay"));
}

FitStatus Slot::fit(const GroupTable& table, Mask mask, const FitKey& key) {
  const auto [at, fresh] = memo_.try_emplace(key, FitStatus::refused);
  if (fresh) at->second = judge(reading(table, mask, key), key);
  return at->second;
}

std::string Slot::reason(const GroupTable& table, Mask mask) const {
  try {
    (void)expand(common_, receiver_, table.groups(), mask);
    return {};
  } catch (const std::exception& error) {
    return error.what();
  }
}

Slot::Reading& Slot::reading(const GroupTable& table, Mask mask, const FitKey& key) {
  const std::size_t kind = (key.listens ? 1U : 0U) + (key.no_band ? 2U : 0U) + (key.too_many_channels ? 4U : 0U) +
                           (key.too_many_consumers ? 8U : 0U);
  auto& reading = readings_.at(kind);
  if (!reading) reading = read(table, mask, key.listens);
  return *reading;
}

Slot::Reading Slot::read(const GroupTable& table, Mask mask, bool listens) const {
  Reading reading;
  try {
    const options::Profile profile = expanded_profile(common_, receiver_, table.groups(), mask);
    reading.options = options::scan_profile(profile);
    reading.check = options::check_but_fit(reading.options);
  } catch (const std::exception&) {
    reading.refused = true;
    return reading;
  }
  reading.refused_later = reading.check.refused_later.has_value();
  if (!reading.refused_later) try {
      judge_model(reading.options, receiver_.model);
    } catch (const std::exception&) {
      reading.refused_later = true;
    }
  if (family_ == Family::rtl_sdr) reading.hf = dongle_hf_class(receiver_.model);
  const auto explicit_center = receiver_overlay(common_, receiver_);
  reading.own_center = listens && family_ != Family::rx888 && !explicit_center.contains("center-frequency");
  return reading;
}

FitStatus Slot::judge(const Reading& reading, const FitKey& key) const {
  if (reading.refused) return FitStatus::refused;
  CaptureSettings settings = reading.check.settings;
  if (reading.own_center) settings.center = own_center(key);
  const auto capture = find_capture(settings, needs_of(key, reading.options));
  if (!capture) return FitStatus::out_of_capture;
  if (reading.refused_later) return FitStatus::refused;
  try {
    if (reading.hf)
      (void)choose_direct_sampling(reading.options.rtl.direct_sampling, *reading.hf, *capture, receiver_.model);
    judge_rf_gain(reading.options, receiver_.model, capture->center);
  } catch (const CaptureFitError&) {
    return FitStatus::out_of_capture;
  } catch (const std::exception&) {
    return FitStatus::refused;
  }
  return FitStatus::fits;
}

}  // namespace launcher
