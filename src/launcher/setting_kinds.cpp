#include "launcher/setting_kinds.h"

#include <algorithm>
#include <array>

#include "launcher/receiver_overlay.h"
#include "options/station.h"

namespace launcher {
namespace {

struct Row {
  std::string_view key;
  SettingKind kind;
};

constexpr std::array rows{
    Row{"audio-control", SettingKind::unseen},
    Row{"online-callsign-check", SettingKind::live},
    Row{"decode-depth", SettingKind::live},
    Row{"pskreporter", SettingKind::live},
    Row{"wsprnet", SettingKind::live},
    Row{"known-channels-report", SettingKind::live},
    Row{"gain-reduction", SettingKind::hardware},
    Row{"lna-state", SettingKind::hardware},
    Row{"agc", SettingKind::hardware},
    Row{"antenna", SettingKind::hardware},
    Row{"ppm", SettingKind::hardware},
    Row{"rf-notch", SettingKind::hardware},
    Row{"mw-notch", SettingKind::hardware},
    Row{"rx888-attenuation", SettingKind::hardware},
    Row{"rx888-gain", SettingKind::hardware},
    Row{"rtl-gain", SettingKind::hardware},
    Row{"center-frequency", SettingKind::selection},
    Row{"bands", SettingKind::selection},
    Row{"frequencies", SettingKind::selection},
    Row{"modes", SettingKind::selection},
    Row{"band-modes", SettingKind::selection},
    Row{"known-channels", SettingKind::selection},
    Row{"known-modes", SettingKind::selection},
    Row{"known-band-modes", SettingKind::selection},
    // A retune does not carry them.
    Row{"fax-channels", SettingKind::restart_receiver},
    Row{"spot", SettingKind::restart_receiver},
    Row{"share", SettingKind::restart_receiver},
};

}  // namespace

SettingKind setting_kind(std::string_view key, Family family) {
  // The RX-888's clock error is part of how its channels are cut out.
  if (key == "ppm" && family == Family::rx888) return SettingKind::restart_receiver;
  const auto* const row = std::find_if(rows.begin(), rows.end(), [key](const Row& each) { return each.key == key; });
  if (row != rows.end()) return row->kind;
  const bool receivers_own = options::is_receiver_setting(key) || is_consumer_key(key);
  return receivers_own ? SettingKind::restart_receiver : SettingKind::restart_all;
}

bool is_sent_at_once(std::string_view key, Family family) {
  return key == "center-frequency" || setting_kind(key, family) == SettingKind::hardware;
}

}  // namespace launcher
