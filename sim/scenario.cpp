#include "sim/scenario.h"

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>

#include <fmt/format.h>

#include "base/gobject_ptr.h"
#include "base/numbers.h"
#include "base/text.h"

namespace sim {
namespace {

struct Equipment {
  std::string_view model, serial, backend;
};

/// The first three are the usual station; a scenario may ask for up to all of them.
constexpr std::array<Equipment, 16> equipment{{
    {"RSPdx", "1706026B40", "sdrplay"},
    {"RX-888 MKII", "009028E61B4A1F2C", "rx888"},
    {"RTL-SDR Blog V4", "00000001", "rtl-sdr"},
    {"RSP1A", "180803C8D2", "sdrplay"},
    {"RSPdxR2", "2309078E54", "sdrplay"},
    {"RSPduo", "1811009A16", "sdrplay"},
    {"RSP1B", "2212035F71", "sdrplay"},
    {"RSP2", "1612020E88", "sdrplay"},
    {"RSP1A", "180904A7B1", "sdrplay"},
    {"RSPdx", "1904017C29", "sdrplay"},
    {"NooElec NESDR SMArt v5", "52736914", "rtl-sdr"},
    {"RTL-SDR Blog V3", "00000003", "rtl-sdr"},
    {"NooElec NESDR Nano", "00000077", "rtl-sdr"},
    {"RSP1", "1503011D05", "sdrplay"},
    {"RSPdxR2", "2401112C90", "sdrplay"},
    {"RSP1B", "2305027D33", "sdrplay"},
}};

[[noreturn]] void refuse(std::string_view value) {
  throw std::runtime_error(fmt::format("cannot read \"{}\"", value));
}

double number(std::string_view value) {
  const auto result = base::parse_double(value);
  if (!result || *result < 0) refuse(value);
  return *result;
}

std::uint64_t whole(std::string_view value) {
  const auto result = base::parse_unsigned(value);
  if (!result) refuse(value);
  return *result;
}

bool on_or_off(std::string_view value) {
  if (value == "true") return true;
  if (value == "false") return false;
  refuse(value);
}

/// A list with commas.
std::vector<std::string> words(std::string_view value) {
  std::vector<std::string> list;
  for (const auto each : base::split(value, ','))
    list.emplace_back(base::trim(each));
  return list;
}

/// A word of a small table, by its place.
template <typename T, std::size_t N>
T word(std::string_view value, const std::array<std::pair<std::string_view, T>, N>& words) {
  const auto found = std::find_if(words.begin(), words.end(), [&](const auto& row) { return row.first == value; });
  if (found == words.end()) refuse(value);
  return found->second;
}

double activity(std::string_view value) {
  static constexpr std::array<std::pair<std::string_view, double>, 4> words{
      {{"silent", 0}, {"quiet", 0.05}, {"ordinary", 0.5}, {"busy", 1}}};
  const bool named = std::any_of(words.begin(), words.end(), [&](const auto& row) { return row.first == value; });
  return named ? word(value, words) : number(value);
}

Presence presence(std::string_view value) {
  return word<Presence, 4>(value, {{{"ready", Presence::ready},
                                    {"busy", Presence::busy},
                                    {"needs-firmware", Presence::needs_firmware},
                                    {"not-responding", Presence::not_responding}}});
}

bool summaries(std::string_view value) {
  return word<bool, 2>(value, {{{"summaries", true}, {"text", false}}});
}

ListingFault listing_fault(std::string_view value) {
  return word<ListingFault, 6>(value, {{{"none", ListingFault::none},
                                        {"hang", ListingFault::hang},
                                        {"die", ListingFault::die},
                                        {"rubbish", ListingFault::rubbish},
                                        {"exit", ListingFault::exit},
                                        {"usb-dead", ListingFault::usb_dead}}});
}

template <typename Target>
struct Key {
  std::string_view name;
  void (*set)(Target&, std::string_view value);
};

using ReceiverKey = Key<Receiver>;
/// Behaviour and faults: in [faults] for every receiver, in [receiver SERIAL] for one.
constexpr std::array<ReceiverKey, 25> receiver_keys{{
    {"model", [](Receiver& r, std::string_view v) { r.model = v; }},
    {"backend", [](Receiver& r, std::string_view v) { r.backend = v; }},
    {"presence", [](Receiver& r, std::string_view v) { r.presence = presence(v); }},
    {"activity", [](Receiver& r, std::string_view v) { r.activity = activity(v); }},
    {"exit-after", [](Receiver& r, std::string_view v) { r.faults.exit_after = number(v); }},
    {"exit-status", [](Receiver& r, std::string_view v) { r.faults.exit_status = static_cast<int>(whole(v)); }},
    {"exit-signal", [](Receiver& r, std::string_view v) { r.faults.exit_signal = static_cast<int>(whole(v)); }},
    {"ignore-term", [](Receiver& r, std::string_view v) { r.faults.ignore_term = on_or_off(v); }},
    {"flood-after", [](Receiver& r, std::string_view v) { r.faults.flood.after = number(v); }},
    {"flood-lines", [](Receiver& r, std::string_view v) { r.faults.flood.lines = whole(v); }},
    {"flood-rate", [](Receiver& r, std::string_view v) { r.faults.flood.rate = number(v); }},
    {"flood-of", [](Receiver& r, std::string_view v) { r.faults.flood.summaries = summaries(v); }},
    {"long-line-after", [](Receiver& r, std::string_view v) { r.faults.long_line_after = number(v); }},
    {"long-line-bytes", [](Receiver& r, std::string_view v) { r.faults.long_line_bytes = whole(v); }},
    {"invalid-utf8-after", [](Receiver& r, std::string_view v) { r.faults.invalid_utf8_after = number(v); }},
    {"no-line-feed", [](Receiver& r, std::string_view v) { r.faults.no_line_feed = on_or_off(v); }},
    {"hold-pipe", [](Receiver& r, std::string_view v) { r.faults.hold_pipe = number(v); }},
    {"control-refuse", [](Receiver& r, std::string_view v) { r.control.refuse = words(v); }},
    {"control-late", [](Receiver& r, std::string_view v) { r.control.late = number(v); }},
    {"control-hang", [](Receiver& r, std::string_view v) { r.control.hang = on_or_off(v); }},
    {"control-close", [](Receiver& r, std::string_view v) { r.control.close_at_once = on_or_off(v); }},
    {"control-rubbish", [](Receiver& r, std::string_view v) { r.control.rubbish = on_or_off(v); }},
    {"control-long", [](Receiver& r, std::string_view v) { r.control.long_replies = on_or_off(v); }},
    {"control-disappear-after", [](Receiver& r, std::string_view v) { r.control.disappear_after = number(v); }},
    {"control-journal", [](Receiver& r, std::string_view v) { r.control.journal = v; }},
}};

void keep_first_receivers(Scenario& s, std::string_view value) {
  s.receivers.clear();
  for (std::size_t i = 0; i < std::min<std::size_t>(value == "none" ? 0 : whole(value), equipment.size()); ++i) {
    Receiver receiver = s.stranger;
    receiver.model = equipment[i].model;
    receiver.serial = equipment[i].serial;
    receiver.backend = equipment[i].backend;
    s.receivers.push_back(std::move(receiver));
  }
}

constexpr std::array<Key<Scenario>, 12> station_keys{{
    {"receivers", keep_first_receivers},
    {"seed", [](Scenario& s, std::string_view v) { s.seed = whole(v); }},
    {"time-scale", [](Scenario& s, std::string_view v) { s.time_scale = number(v); }},
    {"rewind", [](Scenario& s, std::string_view v) { s.rewind = number(v); }},
    {"start-burst", [](Scenario& s, std::string_view v) { s.start_burst = on_or_off(v); }},
    {"replay", [](Scenario& s, std::string_view v) { s.replay = v; }},
    {"recordings", [](Scenario& s, std::string_view v) { s.recordings = v; }},
    {"discontinuities-per-hour", [](Scenario& s, std::string_view v) { s.discontinuities_per_hour = number(v); }},
    {"overloads-per-hour", [](Scenario& s, std::string_view v) { s.overloads_per_hour = number(v); }},
    {"listing-fault", [](Scenario& s, std::string_view v) { s.listing_fault = listing_fault(v); }},
    {"listing-status", [](Scenario& s, std::string_view v) { s.listing_status = static_cast<int>(whole(v)); }},
    {"listing-delay", [](Scenario& s, std::string_view v) { s.listing_delay = number(v); }},
}};

template <typename Target, std::size_t N>
void read_group(GKeyFile* file, const char* group, Target& target, const std::array<Key<Target>, N>& keys) {
  const base::GStrvPtr names(g_key_file_get_keys(file, group, nullptr, nullptr));
  for (char** name = names.get(); name && *name; ++name) {
    const auto key = std::find_if(keys.begin(), keys.end(), [&](const auto& row) { return row.name == *name; });
    if (key == keys.end()) throw std::runtime_error(fmt::format("[{}] has no key \"{}\"", group, *name));
    const base::GStringPtr value(g_key_file_get_string(file, group, *name, nullptr));
    try {
      key->set(target, base::trim(value ? value.get() : ""));
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(fmt::format("[{}] {}: {}", group, *name, error.what()));
    }
  }
}

Receiver& receiver_named(Scenario& scenario, const std::string& serial) {
  for (Receiver& receiver : scenario.receivers) {
    if (receiver.serial == serial) return receiver;
  }
  scenario.receivers.push_back(scenario.stranger);
  scenario.receivers.back().serial = serial;
  return scenario.receivers.back();
}

void read_groups(GKeyFile* file, Scenario& scenario) {
  static constexpr std::string_view own_section = "receiver ";
  const base::GStrvPtr groups(g_key_file_get_groups(file, nullptr));
  // What holds for all receivers comes first, wherever it stands in the file.
  read_group(file, "faults", scenario.stranger, receiver_keys);
  keep_first_receivers(scenario, "3");
  read_group(file, "station", scenario, station_keys);
  for (char** group = groups.get(); *group; ++group) {
    const std::string_view name(*group);
    if (name == "faults" || name == "station") continue;
    if (!name.starts_with(own_section)) throw std::runtime_error(fmt::format("there is no group [{}]", name));
    read_group(file, *group, receiver_named(scenario, std::string(name.substr(own_section.size()))), receiver_keys);
  }
}

}  // namespace

Receiver Scenario::receiver_for(const std::string& serial, const std::string& backend) const {
  const auto fits = [&](const Receiver& receiver) {
    return serial.empty() ? receiver.backend == backend : receiver.serial == serial;
  };
  const auto found = std::find_if(receivers.begin(), receivers.end(), fits);
  if (found != receivers.end()) return *found;
  Receiver receiver = stranger;
  receiver.serial = serial;
  receiver.backend = backend;
  return receiver;
}

Scenario load_scenario(const std::string& path) {
  Scenario scenario;
  keep_first_receivers(scenario, "3");
  if (path.empty()) return scenario;
  const base::GKeyFilePtr file(g_key_file_new());
  base::ErrorSlot error;
  if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, error.out()))
    throw std::runtime_error(fmt::format("{}: {}", path, error.message()));
  try {
    read_groups(file.get(), scenario);
  } catch (const std::runtime_error& problem) {
    throw std::runtime_error(fmt::format("{}: {}", path, problem.what()));
  }
  return scenario;
}

}  // namespace sim
