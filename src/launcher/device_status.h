// How a receiver of the session stood in the last device listing. Plain values; any thread.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace launcher {

enum class DeviceStatus : std::uint8_t {
  ready,
  running,          ///< by this launcher: busy for everybody else, available for its own plan
  missing,          ///< not listed, or nothing has been listed yet
  busy,             ///< listed, and in use by another program
  not_responding,   ///< listed with a fault
  needs_firmware,   ///< an RX-888 that has none
  used_by_sharing,  ///< in the hands of the sharing service
};

/// By serial. A receiver that is not in it has not been looked for yet.
using DeviceStatuses = std::map<std::string, DeviceStatus>;

/// What stands behind " · " on the receiver's line: "missing", "busy", "not responding", "needs firmware", "used by
/// Corvane"; empty for a receiver that is ready or running.
constexpr std::string_view device_status_word(DeviceStatus status) {
  constexpr std::string_view words[] = {
      "", "", "missing", "busy", "not responding", "needs firmware", "used by Corvane"};
  return words[static_cast<std::size_t>(status)];
}

/// The statuses with those receivers marked that the sharing service's process holds now. What this launcher runs stays
/// its own.
inline DeviceStatuses with_sharing(DeviceStatuses statuses, const std::set<std::string>& held) {
  for (auto& [serial, status] : statuses)
    if (status != DeviceStatus::running && held.count(serial) > 0) status = DeviceStatus::used_by_sharing;
  return statuses;
}

}  // namespace launcher
