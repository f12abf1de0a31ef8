// What a card shows of its receiver's telemetry: texts and positions. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "launcher/receiver_launch.h"
#include "receiver/meter_snapshot.h"

namespace receiver {

/// The bar of a level: both from 0 (empty) to 1 (full scale).
struct LevelBar {
  double fill{};                 ///< the level
  std::optional<double> marker;  ///< the highest peak of the last five seconds
  std::string tooltip;
};

enum class BadgeLook : std::uint8_t { muted, overload, recovered };
struct RfBadge {
  std::string label;  ///< "RF" or "RF !"
  BadgeLook look = BadgeLook::muted;
  std::string tooltip;
};
/// "muted", "rf-overload" or "rf-recovered".
const char* badge_class(BadgeLook look);

struct MeterView {
  LevelBar level;
  RfBadge badge;
  std::string rf_text;  ///< the level as a readout; "—" when there is none
  std::string if_text;  ///< the IF gain that the hardware has; "—" when there is none
  /// Where the IF slider goes, in dB of reduction; nothing where it stays.
  std::optional<int> if_slider;
  std::string gain_note;  ///< under the tuner gain; empty for none
};

/// What the card knows beside the telemetry.
struct MeterSurroundings {
  bool running = false;
  bool agc = false;                                  ///< of the SDRplay's IF gain or the dongle's tuner
  const launcher::ReceiverLaunch* launch = nullptr;  ///< of the receiver while it runs
  std::string backend = "sdrplay";
  bool direct_sampling = false;
};

/// `snapshot` may be null: the receiver has not been asked yet. `now` is of the snapshot's clock.
MeterView meter_view(const MeterSnapshot* snapshot, const MeterSurroundings& around, std::int64_t now);

/// Whether a receiver decodes the band in which a frequency lies, or listens there.
bool monitors(const launcher::ReceiverLaunch& launch, double frequency);

}  // namespace receiver
