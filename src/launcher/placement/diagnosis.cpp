// Finds the nearest reason why there is no plan, by trying again with the suspect changed. The steps stand in the order
// in which an operator would want to hear of them: what is broken, what is set, what cannot be had, what is pinned, and
// only then what is too much.
#include <algorithm>
#include <iterator>
#include <optional>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/placement/capacity.h"
#include "launcher/placement/names.h"
#include "launcher/placement/planner.h"
#include "launcher/receiver_overlay.h"
#include "launcher/setting_names.h"

namespace launcher {
namespace {

/// A setting that narrows a slot's capture.
struct Narrow {
  std::size_t slot;
  std::string key;
};

using Indices = std::vector<std::size_t>;  ///< of groups in a table

class Diagnosis {
 public:
  Diagnosis(const Planner& planner, const GroupTable& table, const Pins& pins, int index, const Carried& carried)
      : planner_(planner), table_(table), pins_(pins), carried_(carried) {
    if (index >= 0) asked_ = static_cast<std::size_t>(index);
    head_ = asked_ ? opening_name(group(*asked_)) + " does not fit" : "The ticked bands do not fit";
  }

  PlanError find() {
    if (auto error = unusable_receiver()) return *error;
    if (auto error = narrowing_setting()) return *error;
    if (auto error = out_of_reach()) return *error;
    if (auto error = assignment()) return *error;
    if (auto error = consumers()) return *error;
    return capacity();
  }

 private:
  [[nodiscard]] const Group& group(std::size_t index) const { return table_.groups()[index]; }
  [[nodiscard]] const Slots& slots() const { return planner_.slots(); }
  [[nodiscard]] std::string label(const Slot& slot) const { return slot.receiver().label(); }
  [[nodiscard]] bool fits_alone(Slot& slot, std::size_t index) const {
    return slot.fit(table_, Mask(1) << index) == FitStatus::fits;
  }
  [[nodiscard]] static bool solves(const Slots& slots, const GroupTable& table, const Pins& pins) {
    return !solve(slots, table, pins).empty();
  }
  [[nodiscard]] PlanError error(PlanCode code, const std::string& text) const {
    PlanError result(code, text);
    if (asked_) result.band = group(*asked_).name();
    return result;
  }

  std::optional<PlanError> unusable_receiver();
  std::optional<PlanError> narrowing_setting();
  std::optional<PlanError> out_of_reach();
  std::optional<PlanError> assignment();
  std::optional<PlanError> consumers();
  PlanError capacity();

  [[nodiscard]] std::vector<Narrow> narrowing_settings() const;
  [[nodiscard]] Slots with_cleared(const std::vector<Narrow>& narrows) const;
  [[nodiscard]] PlanError narrowed(const Narrow& narrow) const;
  struct Reason {
    std::string text, key;
  };
  [[nodiscard]] Reason reach_reason(Slot& slot, std::size_t index) const;
  [[nodiscard]] PlanError pinned(std::size_t index, Slot& slot) const;
  [[nodiscard]] std::vector<Group> fewest_consumers() const;
  [[nodiscard]] std::optional<Indices> set_to_leave_out(const Indices& consumers, std::size_t size, int& trials) const;
  [[nodiscard]] bool solves_without(const Indices& left_out) const;

  const Planner& planner_;
  const GroupTable& table_;
  const Pins& pins_;
  const Carried& carried_;
  std::optional<std::size_t> asked_;  ///< nothing: the selection as a whole
  std::string head_;
};

/// Which setting a refusal is about, where its words tell.
std::string setting_of_reason(const std::string& reason) {
  if (reason.starts_with("RF gain state ")) return "lna-state";
  if (reason.starts_with("Decoder channel bandwidth ")) return "bandwidth";
  return {};
}

std::optional<PlanError> Diagnosis::unusable_receiver() {
  for (const auto& slot : slots()) {
    bool broken = true;
    for (std::size_t index = 0; index < table_.size() && broken; ++index)
      broken = slot->fit(table_, Mask(1) << index) == FitStatus::refused;
    if (!broken) continue;
    const std::string reason = slot->reason(table_, 1);
    const std::string key = setting_of_reason(reason);
    std::string value;
    if (!key.empty()) value = expanded_profile(planner_.common(), slot->receiver(), table_.groups(), 1)[key];
    const std::string advice = key == "lna-state" ? fmt::format("Change {} (now {})", setting_name(key), value)
                                                  : std::string("Check its settings");
    PlanError result = error(PlanCode::unusable_receiver,
                             fmt::format("{} cannot be used: {}. {} in SDR Config.", label(*slot), reason, advice));
    result.serial = slot->serial();
    result.key = key;
    result.value = value;
    return result;
  }
  return std::nullopt;
}

std::vector<Narrow> Diagnosis::narrowing_settings() const {
  std::vector<Narrow> narrows;
  for (std::size_t index = 0; index < slots().size(); ++index)
    for (const std::string& key : planner_.capability(*slots()[index]).limit_keys)
      narrows.push_back({index, key});
  return narrows;
}

Slots Diagnosis::with_cleared(const std::vector<Narrow>& narrows) const {
  Slots changed = slots();
  for (std::size_t index = 0; index < changed.size(); ++index) {
    std::vector<std::string> keys;
    for (const Narrow& narrow : narrows)
      if (narrow.slot == index) keys.push_back(narrow.key);
    if (!keys.empty()) changed[index] = planner_.cleared(*changed[index], keys);
  }
  return changed;
}

PlanError Diagnosis::narrowed(const Narrow& narrow) const {
  const CaptureCapability& record = planner_.capability(*slots()[narrow.slot]);
  const bool rate = narrow.key == "sample-rate";
  const std::string advice = rate ? fmt::format("Set its {} to Automatic", setting_name(narrow.key))
                                  : fmt::format("Clear {}", setting_name(narrow.key));
  PlanError result = error(PlanCode::narrowed_capture,
                           fmt::format("{}: {}. {} in SDR Config.", head_, capture_text(record, narrow.key), advice));
  result.serial = slots()[narrow.slot]->serial();
  result.key = narrow.key;
  result.value = rate ? record.rate_text : record.center_text;
  return result;
}

std::optional<PlanError> Diagnosis::narrowing_setting() {
  const std::vector<Narrow> narrows = narrowing_settings();
  if (narrows.empty() || !solves(with_cleared(narrows), table_, pins_)) return std::nullopt;
  for (const Narrow& narrow : narrows)
    if (solves(with_cleared({narrow}), table_, pins_)) return narrowed(narrow);
  std::vector<std::string> texts;
  for (const Narrow& narrow : narrows)
    texts.push_back(capture_text(planner_.capability(*slots()[narrow.slot]), narrow.key));
  return error(PlanCode::narrowed_capture,
               fmt::format("{}: {}. Set these to Automatic in SDR Config.", head_, base::join(texts, ", ")));
}

Diagnosis::Reason Diagnosis::reach_reason(Slot& slot, std::size_t index) const {
  const Mask alone = Mask(1) << index;
  const CaptureCapability& record = planner_.capability(slot);
  const FitStatus status = slot.fit(table_, alone);
  const std::string reason = slot.reason(table_, alone);
  if (status == FitStatus::refused) return {fmt::format("{}: {}", label(slot), reason), {}};
  if (!record.center_text.empty()) return {capture_text(record, "center-frequency"), "center-frequency"};
  if (slot.family() == Family::rx888)
    return {fmt::format("{} covers {}", label(slot), rx888_range(planner_.common(), slot.receiver())), {}};
  if (slot.family() == Family::rtl_sdr && (reason.starts_with("HF") || reason.find("direct sampling") != reason.npos))
    return {reason, {}};
  if (!record.limit_keys.empty()) return {capture_text(record, "sample-rate"), "sample-rate"};
  return {fmt::format("{} cannot capture it", label(slot)), {}};
}

std::optional<PlanError> Diagnosis::out_of_reach() {
  for (std::size_t index = asked_.value_or(0); index < (asked_ ? *asked_ + 1 : table_.size()); ++index) {
    const bool reached =
        std::any_of(slots().begin(), slots().end(), [&](const auto& slot) { return fits_alone(*slot, index); });
    if (reached) continue;
    std::vector<std::string> texts;
    std::string first_key;
    for (const auto& slot : slots()) {
      const Reason reason = reach_reason(*slot, index);
      if (texts.empty()) first_key = reason.key;
      texts.push_back(reason.text);
    }
    const std::string advice =
        first_key == "center-frequency" ? "Clear Capture center in SDR Config, or tick another receiver."
        : first_key == "sample-rate"    ? "Set Sample rate to Automatic in SDR Config, or tick another receiver."
        : asked_                        ? "Tick another receiver for it."
                                        : "Tick another receiver, or untick it.";
    PlanError result =
        error(PlanCode::out_of_reach,
              fmt::format("{} is out of reach: {}. {}", opening_name(group(index)), base::join(texts, "; "), advice));
    result.band = group(index).name();
    result.serial = slots().front()->serial();
    result.key = first_key;
    return result;
  }
  return std::nullopt;
}

PlanError Diagnosis::pinned(std::size_t index, Slot& slot) const {
  const std::string cure = fmt::format("Set {} to Automatic.", spoken_name(group(index)));
  std::string text;
  if (!asked_)
    text = fmt::format("{} is assigned to {}. {}", opening_name(group(index)), label(slot), cure);
  else if (*asked_ == index && !fits_alone(slot, index))
    text = fmt::format("{}: it is assigned to {}, which has no room for it. {}", head_, label(slot), cure);
  else
    text = fmt::format("{}: {} is assigned to {}. {}", head_, spoken_name(group(index)), label(slot), cure);
  PlanError result(PlanCode::assignment, text);
  result.band = group(index).name();
  result.serial = slot.serial();
  return result;
}

std::optional<PlanError> Diagnosis::assignment() {
  struct InForce {
    std::size_t group;
    Slot* slot;
  };
  std::vector<InForce> in_force;
  for (std::size_t index = 0; index < table_.size(); ++index) {
    const auto pin = pins_.find(group(index).name());
    if (pin == pins_.end()) continue;
    for (const auto& slot : slots())
      if (slot->serial() == pin->second) in_force.push_back({index, slot.get()});
  }
  if (in_force.empty() || !solves(slots(), table_, {})) return std::nullopt;
  std::vector<std::string> list;
  for (const InForce& pin : in_force) {
    Pins others = pins_;
    others.erase(group(pin.group).name());
    if (solves(slots(), table_, others)) return pinned(pin.group, *pin.slot);
    list.push_back(fmt::format("{} to {}", spoken_name(group(pin.group)), label(*pin.slot)));
  }
  return error(PlanCode::assignment,
               fmt::format("{}: the assignments leave no room ({}). Set one or more of them to Automatic.", head_,
                           base::join(list, ", ")));
}

bool Diagnosis::solves_without(const Indices& left_out) const {
  std::vector<Group> rest;
  for (std::size_t index = 0; index < table_.size(); ++index)
    if (std::find(left_out.begin(), left_out.end(), index) == left_out.end()) rest.push_back(group(index));
  return solves(slots(), GroupTable(std::move(rest)), pins_);
}

/// The first set of that many, from the front of the list, without which the rest can be placed.
std::optional<Indices> Diagnosis::set_to_leave_out(const Indices& consumers, std::size_t size, int& trials) const {
  std::vector<bool> chosen(consumers.size(), false);
  std::fill_n(chosen.begin(), size, true);
  do {
    if (trials-- <= 0) return std::nullopt;
    Indices set;
    for (std::size_t at = 0; at < chosen.size(); ++at)
      if (chosen[at]) set.push_back(consumers[at]);
    if (solves_without(set)) return set;
  } while (std::prev_permutation(chosen.begin(), chosen.end()));
  return std::nullopt;
}

std::vector<Group> Diagnosis::fewest_consumers() const {
  Indices consumers;
  for (std::size_t index = table_.size(); index-- > 0;)
    if (group(index).is_consumer()) consumers.push_back(index);
  // Every one that can stay does, the lowest first: a few may be enough all the same.
  Indices left_out = consumers;
  for (auto one = consumers.rbegin(); one != consumers.rend(); ++one) {
    Indices fewer = left_out;
    std::erase(fewer, *one);
    if (solves_without(fewer)) left_out = std::move(fewer);
  }
  int trials = 300;  // an operator waits for the answer
  for (std::size_t size = 1; size <= left_out.size(); ++size)
    if (const auto set = set_to_leave_out(consumers, size, trials)) {
      left_out = *set;
      break;
    }
  std::vector<Group> groups;
  for (const std::size_t index : left_out)
    groups.push_back(group(index));
  return groups;
}

std::optional<PlanError> Diagnosis::consumers() {
  std::vector<std::size_t> all;
  for (std::size_t index = 0; index < table_.size(); ++index)
    if (group(index).is_consumer()) all.push_back(index);
  if (all.empty() || !solves_without(all)) return std::nullopt;
  const std::vector<Group> named = fewest_consumers();
  const bool one = named.size() == 1;
  PlanError result =
      error(PlanCode::consumers,
            fmt::format("{}: {} {}. Retune or remove {} in Audio Receivers, choose External Decoder, or tick another "
                        "receiver.",
                        head_, spoken_names(named), one ? "needs its own capture" : "need their own captures",
                        one ? "it" : "them"));
  return result;
}

PlanError Diagnosis::capacity() {
  if (asked_)
    return error(
        PlanCode::capacity,
        fmt::format("{} needs another receiver.\n{}\nUntick a band or tick another receiver.",
                    opening_name(group(*asked_)), capacity_lines(planner_, table_, carried_.masks, &group(*asked_))));
  const Remainder remainder = most_that_fit(planner_.slots(), table_, pins_);
  return error(PlanCode::capacity,
               fmt::format("The ticked bands need more receivers than are ticked.\n{}\nUntick {}, or tick another "
                           "receiver.",
                           capacity_lines(planner_, remainder.table, remainder.placement, nullptr),
                           spoken_names(remainder.left_out)));
}

}  // namespace

PlanError Planner::diagnose(const GroupTable& table, const Pins& pins, int index, const Carried& carried) const {
  try {
    return Diagnosis(*this, table, pins, index, carried).find();
  } catch (const std::exception& error) {
    return {PlanCode::other, error.what()};
  }
}

}  // namespace launcher
