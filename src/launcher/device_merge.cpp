#include "launcher/device_merge.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "launcher/catalogue/receiver_models.h"
#include "launcher/receiver_overlay.h"

namespace launcher {
namespace {

using options::Profile;
using options::ReceiverProfile;
using options::Station;

// A station has a handful. A listing of thousands is no station, and would make a profile that is too long to read.
constexpr std::size_t most_receivers = 256;

// An RX-888 at its full rate keeps four processors busy before anything is decoded.
constexpr unsigned processors_for_full_rate = 8;

// A new receiver's capture is chosen by the plan, not by what suits another one.
constexpr std::string_view capture_keys[] = {"center-frequency", "sample-rate", "bandwidth"};

bool has_fixed_input(std::string_view model) {
  return model == "RSP1" || model == "RSP1A" || model == "RSP1B";
}

// Takes a setting away, also where the common settings have it.
void set_aside(Profile& settings, const Profile& common, std::string_view key) {
  if (const auto found = common.find(std::string(key)); found != common.end() && !found->second.empty())
    settings.insert_or_assign(std::string(key), "");
  else
    settings.erase(std::string(key));
}

// As long as a name in the radio catalogue may be.
constexpr std::size_t longest_model = 88;

// The name as a profile can hold it, which knows one kind of quotation mark and no endless line: the listing's bytes
// may be anything.
std::string plain_model(std::string_view listed) {
  std::string model = base::valid_utf8(listed.substr(0, longest_model));
  std::erase_if(model, [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127 || c == '"'; });
  return model;
}

std::string settings_text(const Profile& settings) {
  std::string text;
  for (const auto& [key, value] : settings)
    text += fmt::format("{}{}={}", text.empty() ? "" : ", ", key, value);
  return text;
}

bool is_valid_rate(std::string_view text, Family family) {
  const auto rate = base::parse_scaled(text);
  if (!rate) return false;
  if (family == Family::sdrplay) return *rate >= 2e6 && *rate <= 10e6;
  return (*rate >= 225001 && *rate <= 300000) || (*rate >= 900001 && *rate <= 3200000);
}

// The kept settings of a receiver that is not in the session.
std::optional<ReceiverProfile> kept_receiver(const options::ReceiverStore& saved, const std::string& serial) {
  const auto* section = saved.find(serial);
  if (!section) return std::nullopt;
  Profile profile{{"gui-format", std::string(options::station_format)}};
  for (const auto& [key, value] : *section)
    profile.emplace(fmt::format("receiver.{}.{}", serial, key), value);
  const Station station = options::parse_station(profile);
  return station.receivers.empty() ? std::nullopt : std::optional(station.receivers.front());
}

class Merge {
 public:
  Merge(const Inventory& before, const MergeSurroundings& around) : before_(before), around_(around) {
    merged_.inventory.station = before.station;
    for (auto& receiver : receivers())
      settle(receiver, DeviceStatus::missing, false);
  }

  MergedDevices run(const DeviceListing& listing) {
    for (const ListedDevice& device : listing.devices)
      add(device);
    for (const DeviceReport& report : listing.reports)
      tell(report);
    for (auto& receiver : receivers())
      reset_rate(receiver);
    if (left_out_ > 0)
      merged_.log.push_back(
          fmt::format("Listed but left out: {}, for its serial, its backend or their number.", left_out_));
    return std::move(merged_);
  }

 private:
  std::vector<ReceiverProfile>& receivers() { return merged_.inventory.station.receivers; }

  void settle(ReceiverProfile& receiver, DeviceStatus status, bool available) {
    const bool running = around_.running.count(receiver.serial) > 0;
    receiver.available = available || running;
    merged_.inventory.statuses[receiver.serial] = running ? DeviceStatus::running : status;
  }

  void add(const ListedDevice& device) {
    if (!is_usable_serial(device.serial) || !parse_family(device.backend)) return leave_out();
    ++merged_.checked;
    const auto place =
        std::lower_bound(receivers().begin(), receivers().end(), device.serial,
                         [](const auto& receiver, const auto& serial) { return receiver.serial < serial; });
    if (place != receivers().end() && place->serial == device.serial) return find_again(*place, device);
    if (receivers().size() >= most_receivers) return leave_out();
    ReceiverProfile receiver = new_in_session(device);
    settle(receiver, device.status, usable(device));
    receivers().insert(place, std::move(receiver));
  }

  void leave_out() { ++left_out_; }

  static bool usable(const ListedDevice& device) { return device.available && device.status == DeviceStatus::ready; }

  void find_again(ReceiverProfile& receiver, const ListedDevice& device) {
    if (receiver.model.empty() || receiver.model == "Unknown RSP") receiver.model = plain_model(device.model);
    settle(receiver, device.status, usable(device));
    const auto status = before_.statuses.find(receiver.serial);
    if (status != before_.statuses.end() && status->second == DeviceStatus::missing)
      merged_.log.push_back(receiver.label() + ": listed again with its saved settings.");
  }

  ReceiverProfile new_in_session(const ListedDevice& device) {
    if (auto kept = kept_receiver(around_.saved, device.serial)) {
      kept->enabled = false;
      if (kept->model.empty()) kept->model = plain_model(device.model);
      merged_.log.push_back(fmt::format("{}: listed without a session profile; restored {}", kept->label(),
                                        settings_text(kept->settings)));
      return *std::move(kept);
    }
    ReceiverProfile receiver;
    receiver.serial = device.serial;
    receiver.model = plain_model(device.model);
    receiver.settings = new_receiver_settings(before_.station.common, device, around_.processors);
    merged_.log.push_back(receiver.label() + ": listed for the first time; created with the defaults");
    return receiver;
  }

  // An RX-888 without its firmware cannot tell its serial; where one of the session's is not there, it is this one.
  void tell(const DeviceReport& report) {
    merged_.reports.push_back(report.short_text());
    for (const auto& receiver : receivers()) {
      auto& status = merged_.inventory.statuses[receiver.serial];
      const bool same = receiver.serial == report.serial || report.serial.starts_with("usb-");
      if (status != DeviceStatus::missing || !same || value_or(receiver.settings, "backend", "") != backend_rx888)
        continue;
      status = report.trouble;
      return;
    }
  }

  void reset_rate(ReceiverProfile& receiver) {
    const auto rate = receiver.settings.find("sample-rate");
    const auto family = parse_family(value_or(receiver.settings, "backend", "sdrplay"));
    if (rate == receiver.settings.end() || rate->second.empty() || !family || *family == Family::rx888) return;
    if (is_valid_rate(rate->second, *family)) return;
    merged_.log.push_back(fmt::format("{}: saved sample rate '{}' is not valid and was reset to Automatic.",
                                      receiver.label(), rate->second));
    set_aside(receiver.settings, merged_.inventory.station.common, "sample-rate");
  }

  const Inventory& before_;
  const MergeSurroundings& around_;
  MergedDevices merged_;
  std::size_t left_out_ = 0;
};

}  // namespace

Profile new_receiver_settings(const Profile& common, const ListedDevice& device, unsigned processors) {
  Profile settings;
  for (const auto& [key, value] : common)
    if (options::is_receiver_setting(key)) settings.emplace(key, value);
  const Family family = parse_family(device.backend).value_or(Family::sdrplay);
  settings = without_foreign_keys(std::move(settings), family);
  for (const std::string_view key : capture_keys)
    set_aside(settings, common, key);
  if (has_fixed_input(device.model)) set_aside(settings, common, "antenna");
  settings.erase("backend");
  if (family != Family::sdrplay) settings["backend"] = device.backend;
  if (family == Family::rx888) {
    settings.erase("sample-rate");
    settings["rx888-rate"] = processors >= processors_for_full_rate ? "full" : "half";
  }
  if (family == Family::rtl_sdr) {
    settings["agc"] = "on";
    settings["ppm"] = "0";
  }
  return settings;
}

MergedDevices merge_devices(const Inventory& before, const DeviceListing& listing, const MergeSurroundings& around) {
  return Merge(before, around).run(listing);
}

}  // namespace launcher
