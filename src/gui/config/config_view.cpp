#include "gui/config/config_view.h"

#include "base/text.h"
#include "launcher/catalogue/bands.h"
#include "launcher/receiver_overlay.h"

namespace gui {
namespace {

options::ReceiverProfile* find(options::Station& station, const std::string& serial) {
  for (options::ReceiverProfile& receiver : station.receivers)
    if (receiver.serial == serial) return &receiver;
  return nullptr;
}

}  // namespace

std::map<std::string, PlannedCapture> planned_captures(const std::vector<launcher::ReceiverLaunch>& launches) {
  std::map<std::string, PlannedCapture> planned;
  for (const launcher::ReceiverLaunch& launch : launches)
    planned[launch.name] = {launch.capture.center,
                            std::string(launcher::value_or(launch.profile, "direct-sampling", ""))};
  return planned;
}

std::optional<known_cost::Estimate> known_estimate(const options::Profile& common) {
  const std::string_view mode = launcher::value_or(common, "mode", "audio");
  if (mode != "decoder" && mode != "hybrid") return std::nullopt;
  if (launcher::value_or(common, "known-channels", "false") != "true") return std::nullopt;
  const auto value = [&](const char* key) -> std::optional<std::string_view> {
    const auto found = common.find(key);
    return found == common.end() ? std::nullopt : std::optional<std::string_view>(found->second);
  };
  std::vector<std::string> bands;
  for (const std::string_view band : base::split(launcher::value_or(common, "bands", ""), ','))
    if (!base::trim(band).empty()) bands.push_back(launcher::normalise_band(base::trim(band)));
  try {
    const auto filters =
        sig::parse_known_filters(value("known-modes"), value("known-band-modes"), value("fax-channels"));
    return known_cost::estimate(filters, bands, known_cost::physical_cores());
  } catch (const std::exception&) {
    return std::nullopt;  // the plan says what is wrong with them
  }
}

options::Station with_setting(options::Station station, const std::string& serial, const std::string& key,
                              const std::string& value) {
  if (options::ReceiverProfile* receiver = find(station, serial)) {
    if (!value.empty() || !launcher::value_or(station.common, key.c_str(), "").empty())
      receiver->settings[key] = value;
    else
      receiver->settings.erase(key);
  }
  return station;
}

options::Station with_common(options::Station station, const std::string& key, const std::string& value) {
  if (value.empty())
    station.common.erase(key);
  else
    station.common[key] = value;
  return station;
}

options::Station with_box(options::Station station, const std::string& serial, bool options::ReceiverProfile::*box,
                          bool on) {
  if (options::ReceiverProfile* receiver = find(station, serial)) receiver->*box = on;
  return station;
}

}  // namespace gui
