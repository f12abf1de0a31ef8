// One ticked receiver as the planner tries sets of groups on it.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <unordered_map>

#include "launcher/placement/group_table.h"
#include "options/check.h"
#include "options/station.h"

namespace launcher {

enum class FitStatus : std::uint8_t {
  fits,
  out_of_capture,  ///< a CaptureFitError
  refused          ///< any other failure: the receiver's settings
};

/// Reading a whole profile for every set is slow, so each kind of set is read once for what its settings make of a
/// capture, and the sets' extremes are then tried by arithmetic. The answers are those of expand(). One thread at a
/// time.
class Slot {
 public:
  /// `common` must outlive the slot.
  Slot(const options::Profile& common, options::ReceiverProfile receiver);

  [[nodiscard]] const options::ReceiverProfile& receiver() const { return receiver_; }
  [[nodiscard]] const std::string& serial() const { return receiver_.serial; }
  /// nullopt for a backend that there is none of.
  [[nodiscard]] std::optional<Family> family() const { return family_; }

  /// Whether the receiver can take these groups. `key` is the table's for the mask.
  FitStatus fit(const GroupTable& table, Mask mask, const FitKey& key);
  FitStatus fit(const GroupTable& table, Mask mask) { return fit(table, mask, table.key(mask)); }
  /// Why not, in the words of the failure; empty when it can.
  [[nodiscard]] std::string reason(const GroupTable& table, Mask mask) const;

 private:
  /// What the sets of one kind have in common.
  struct Reading {
    options::ReceiverOptions options;
    options::UnfittedCheck check;
    bool refused = false;               ///< before the fit
    bool refused_later = false;         ///< after it
    bool own_center = false;            ///< the launch chooses the centre
    std::optional<radios::HfClass> hf;  ///< of a dongle
  };

  Reading& reading(const GroupTable& table, Mask mask, const FitKey& key);
  [[nodiscard]] Reading read(const GroupTable& table, Mask mask, bool listens) const;
  [[nodiscard]] FitStatus judge(const Reading& reading, const FitKey& key) const;

  const options::Profile& common_;
  options::ReceiverProfile receiver_;
  std::optional<Family> family_;
  std::array<std::optional<Reading>, 16> readings_;
  std::unordered_map<FitKey, FitStatus, FitKeyHash> memo_;
};

}  // namespace launcher
