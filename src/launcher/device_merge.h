// The session's receivers after a device listing: what vanished keeps its settings, what appears gets sensible ones.
// Pure; any thread.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "launcher/device_listing.h"
#include "options/receiver_store.h"
#include "options/station.h"

namespace launcher {

/// The session's receivers as the last listing left them.
struct Inventory {
  options::Station station;  ///< `available` is filled
  DeviceStatuses statuses;
};

/// What the merge looks at beside the listing.
struct MergeSurroundings {
  const options::ReceiverStore& saved;  ///< receivers ever saved: where a removed one comes back from
  /// Serials that an engine of this launcher runs now, or is about to run again. They count as available whatever the
  /// listing says: it shows them in use, or not at all.
  std::set<std::string> running;
  unsigned processors = 1;  ///< logical ones of this host
};

struct MergedDevices {
  Inventory inventory;
  std::vector<std::string> log;      ///< what happened to which receiver, a line each
  std::vector<std::string> reports;  ///< on RX-888s that are no receivers, short
  std::size_t checked = 0;           ///< how many receivers were listed
};

/// Removes no receiver, and changes no setting but a sample rate that its receiver cannot run at.
MergedDevices merge_devices(const Inventory& before, const DeviceListing& listing, const MergeSurroundings& around);

/// The settings that a receiver starts with that was never seen before: the common ones that its family takes, without
/// those that fix its capture. Empty values stand against common settings that are not for it.
options::Profile new_receiver_settings(const options::Profile& common, const ListedDevice& device, unsigned processors);

}  // namespace launcher
