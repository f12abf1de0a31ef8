// A station as the planner sees it: its ticked receivers in their order, and what they can be asked. For one question,
// on one thread.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "launcher/capability.h"
#include "launcher/placement/solve.h"
#include "launcher/plan_error.h"
#include "options/station.h"

namespace launcher {

/// A placement that stands already, for a question about one more group: the groups on each slot.
struct Carried {
  std::vector<Mask> masks;
  [[nodiscard]] bool empty() const { return masks.empty(); }
};

class Planner {
 public:
  /// `station` must outlive the planner. Throws PlanError or std::runtime_error with the operator's words for a station
  /// that cannot be planned whatever is selected.
  explicit Planner(const options::Station& station);

  [[nodiscard]] const options::Station& station() const { return station_; }
  [[nodiscard]] const options::Profile& common() const { return station_.common; }
  [[nodiscard]] const Slots& slots() const { return slots_; }
  /// The pins that bind: to a receiver that has a slot.
  [[nodiscard]] const Pins& pins() const { return pins_; }
  [[nodiscard]] const CaptureCapability& capability(const Slot& slot) const;

  /// A slot as it would be with some of its own and the common settings left automatic; the same one each time.
  [[nodiscard]] std::shared_ptr<Slot> cleared(const Slot& slot, const std::vector<std::string>& keys) const;

  /// One launch per slot of a placement, and per idle slot with a centre of its own.
  [[nodiscard]] std::vector<ReceiverLaunch> launches(const GroupTable& table, const std::vector<Mask>& placement) const;
  /// The one receiver of mode audio.
  [[nodiscard]] std::vector<ReceiverLaunch> audio_launch() const;

  /// Why solve() found no way. `index` asks about that group, which is to join the placement `carried`; -1 about the
  /// selection as a whole. Never throws.
  [[nodiscard]] PlanError diagnose(const GroupTable& table, const Pins& pins, int index, const Carried& carried) const;

 private:
  const options::Station& station_;
  Slots slots_;
  Pins pins_;
  mutable std::map<std::string, CaptureCapability> capabilities_;       ///< by serial
  mutable std::map<std::string, std::shared_ptr<Slot>> cleared_slots_;  ///< by serial and keys
};

}  // namespace launcher
