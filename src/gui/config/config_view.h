// What the SDR Config tab shows, and what it asks the launcher to do. No toolkit here.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "launcher/band_choices.h"
#include "launcher/catalogue/known_cost.h"
#include "launcher/device_status.h"
#include "launcher/receiver_launch.h"
#include "options/station.h"
#include "receiver/meter_snapshot.h"

namespace gui {

/// A receiver's place in the plan.
struct PlannedCapture {
  double centre{};              ///< Hz
  std::string direct_sampling;  ///< of a dongle; empty for others
};
/// By serial.
std::map<std::string, PlannedCapture> planned_captures(const std::vector<launcher::ReceiverLaunch>& launches);

/// What decoding the known frequencies of the ticked bands costs; nullopt when it costs nothing, or is off.
std::optional<known_cost::Estimate> known_estimate(const options::Profile& common);

/// The station at one moment.
struct StationView {
  options::Station station;  ///< `available` as the last discovery has it
  const launcher::BandChoices& choices;
  std::map<std::string, PlannedCapture> planned;
  std::set<std::string> running;           ///< serials whose engines run
  launcher::DeviceStatuses statuses = {};  ///< of the last listing
  std::optional<known_cost::Estimate> estimate = {};
};

/// Where the cards find what the running engines say. All are called on the main thread.
struct MeterSource {
  /// Null for a receiver that has not been asked yet.
  std::function<const receiver::MeterSnapshot*(const std::string& serial)> snapshot = [](const std::string&) {
    return nullptr;
  };
  /// Of a running receiver; else null.
  std::function<const launcher::ReceiverLaunch*(const std::string& serial)> launch = [](const std::string&) {
    return nullptr;
  };
  /// Microseconds of the snapshots' clock.
  std::function<std::int64_t()> now = [] { return std::int64_t{0}; };
};

/// All are called on the main thread, for what the operator does and for nothing else. An empty value is Automatic.
struct ConfigActions {
  using Edit = std::function<void(const std::string& serial, const std::string& key, const std::string& value)>;
  using Tick = std::function<void(const std::string& serial, bool on)>;

  Edit edit;       ///< of a stopped receiver
  Edit edit_live;  ///< of a running one
  std::function<void(const std::string& key, const std::string& value)> edit_common;
  Tick set_enabled, set_spot, set_share;
  std::function<void(const std::string& serial)> remove;  ///< the question has been answered
};

// The edits on the settings themselves. A serial that is not of the station changes nothing.

/// An empty value takes the setting away, or stands against a common one.
options::Station with_setting(options::Station station, const std::string& serial, const std::string& key,
                              const std::string& value);
options::Station with_common(options::Station station, const std::string& key, const std::string& value);
/// `box` is one of ReceiverProfile's.
options::Station with_box(options::Station station, const std::string& serial, bool options::ReceiverProfile::*box,
                          bool on);

}  // namespace gui
