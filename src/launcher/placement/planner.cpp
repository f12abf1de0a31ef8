#include "launcher/placement/planner.h"

#include <algorithm>
#include <array>
#include <set>

#include <fmt/format.h>

#include "launcher/catalogue/receiver_models.h"
#include "launcher/placement/selection.h"
#include "launcher/receiver_overlay.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;

void judge_live_reception(const Profile& common) {
  const bool replays = common.contains("iq-file") || common.contains("start-utc") || common.contains("iq-rate");
  if (replays || value_or(common, "backend", "sdrplay") != "sdrplay")
    throw std::runtime_error("The launcher supports live SDRplay profiles only");
}

bool is_plain_serial(const std::string& serial) {
  constexpr std::size_t longest = 64;
  const auto plain = [](char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9') ||
           letter == '-' || letter == '_';
  };
  return !serial.empty() && serial.size() <= longest && std::all_of(serial.begin(), serial.end(), plain);
}

std::string setting_of(const Profile& common, const ReceiverProfile& receiver, const char* key, const char* fallback) {
  const auto own = receiver.settings.find(key);
  const std::string value(own != receiver.settings.end() ? own->second : value_or(common, key, fallback));
  return value.empty() ? fallback : value;
}

PlanError absent(const ReceiverProfile& receiver) {
  PlanError error(PlanCode::absent_receiver,
                  fmt::format("{} is ticked but is not attached, or is busy. Press Refresh receivers, or untick it.",
                              receiver.label()));
  error.serial = receiver.serial;
  return error;
}

void judge_notches(const Profile& common, const ReceiverProfile& receiver) {
  if (setting_of(common, receiver, "backend", "sdrplay") != "sdrplay" || !is_known_model(receiver.model)) return;
  const ModelNotches notches = model_notches(receiver.model);
  if (!notches.known) return;
  const bool rf_fault = setting_of(common, receiver, "rf-notch", "off") == "on" && !notches.rf_notch;
  const bool mw_fault = setting_of(common, receiver, "mw-notch", "off") == "on" && !notches.mw_notch;
  if (!rf_fault && !mw_fault) return;
  PlanError error(
      PlanCode::unusable_receiver,
      fmt::format("Selected hardware notch is unavailable on {}; turn it off in SDR Config", receiver.model));
  error.serial = receiver.serial;
  error.key = rf_fault ? "rf-notch" : "mw-notch";
  error.value = "on";
  throw error;
}

}  // namespace

Planner::Planner(const options::Station& station) : station_(station) {
  judge_live_reception(station.common);
  std::set<std::string> serials;
  std::vector<const ReceiverProfile*> ticked;
  for (const ReceiverProfile& receiver : station.receivers) {
    if (!is_plain_serial(receiver.serial) || !serials.insert(receiver.serial).second)
      throw std::runtime_error("Invalid or duplicate receiver serial");
    if (!receiver.enabled) continue;
    if (!receiver.available) throw absent(receiver);
    judge_notches(station.common, receiver);
    ticked.push_back(&receiver);
  }
  if (ticked.empty()) throw PlanError(PlanCode::no_receiver, "Tick at least one receiver.");
  if (ticked.size() > most_ticked_receivers) throw std::runtime_error("At most 16 receivers may be ticked");
  std::sort(ticked.begin(), ticked.end(), [](const auto* a, const auto* b) { return a->serial < b->serial; });
  for (const ReceiverProfile* receiver : ticked)
    slots_.push_back(std::make_shared<Slot>(station.common, *receiver));
  for (const auto& pin : station.assignments)
    if (std::any_of(ticked.begin(), ticked.end(), [&](const auto* receiver) { return receiver->serial == pin.second; }))
      pins_.insert(pin);
}

const CaptureCapability& Planner::capability(const Slot& slot) const {
  const auto at = capabilities_.find(slot.serial());
  if (at != capabilities_.end()) return at->second;
  return capabilities_.emplace(slot.serial(), capability_of(common(), slot.receiver())).first->second;
}

std::shared_ptr<Slot> Planner::cleared(const Slot& slot, const std::vector<std::string>& keys) const {
  std::string name = slot.serial();
  for (const std::string& key : keys)
    name += "|" + key;
  auto& copy = cleared_slots_[name];
  if (!copy) {
    ReceiverProfile receiver = slot.receiver();
    for (const std::string& key : keys)
      receiver.settings[key].clear();
    copy = std::make_shared<Slot>(common(), std::move(receiver));
  }
  return copy;
}

std::vector<ReceiverLaunch> Planner::launches(const GroupTable& table, const std::vector<Mask>& placement) const {
  std::vector<ReceiverLaunch> result;
  for (std::size_t index = 0; index < slots_.size(); ++index) {
    const ReceiverProfile& receiver = slots_[index]->receiver();
    if (placement[index] != 0) {
      result.push_back(expand(common(), receiver, table.groups(), placement[index]));
      continue;
    }
    if (setting_of(common(), receiver, "center-frequency", "").empty()) continue;
    try {
      result.push_back(expand(common(), receiver, table.groups(), 0));
    } catch (const std::exception&) {
      // It carries nothing, so nothing is lost with it.
    }
  }
  return result;
}

std::vector<ReceiverLaunch> Planner::audio_launch() const {
  if (slots_.size() != 1) throw PlanError(PlanCode::audio_mode, "Virtual audio uses one receiver. Tick exactly one.");
  return {expand(common(), slots_.front()->receiver(), {}, 0)};
}

}  // namespace launcher
