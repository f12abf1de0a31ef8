#include "gui/modes/fax_block.h"

#include <algorithm>

#include <fmt/format.h>

#include "launcher/catalogue/fax_stations.h"

namespace modes_gui {
namespace {

bool holds(const FaxIds& ticked, const std::string& id) {
  return std::find(ticked.begin(), ticked.end(), id) != ticked.end();
}

FaxIds ids_of(const FaxStation* station) {
  if (!station) return all_fax_ids();
  FaxIds ids;
  for (const FaxBox& box : station->boxes)
    ids.push_back(box.id);
  return ids;
}

}  // namespace

const std::vector<FaxStation>& fax_stations() {
  static const std::vector<FaxStation> stations = [] {
    std::vector<FaxStation> found;
    for (const sig::FaxTransmitter& transmitter : sig::fax_transmitters()) {
      auto at = std::find_if(found.begin(), found.end(),
                             [&](const FaxStation& station) { return station.name == transmitter.station; });
      if (at == found.end()) at = found.insert(found.end(), {std::string(transmitter.station), {}});
      at->boxes.push_back(
          {std::string(transmitter.id), fmt::format("{:.1f}", transmitter.centre_hz / 1000), transmitter.description});
    }
    return found;
  }();
  return stations;
}

void set_fax(FaxIds& ticked, const std::string& id, bool on) {
  const FaxIds before = ticked;
  ticked.clear();
  for (const std::string& each : all_fax_ids())
    if (each == id ? on : holds(before, each)) ticked.push_back(each);
}

void press_fax(FaxIds& ticked, const FaxStation* station) {
  const bool on = fax_state(ticked, station) != HeaderState::on;
  for (const std::string& id : ids_of(station))
    set_fax(ticked, id, on);
}

HeaderState fax_state(const FaxIds& ticked, const FaxStation* station) {
  const FaxIds ids = ids_of(station);
  const auto on = std::count_if(ids.begin(), ids.end(), [&](const std::string& id) { return holds(ticked, id); });
  if (on == 0) return HeaderState::off;
  return on == static_cast<std::ptrdiff_t>(ids.size()) ? HeaderState::on : HeaderState::some;
}

std::string fax_summary(const FaxIds& ticked) {
  return fmt::format("Weather fax: {} of {} frequencies ticked", ticked.size(), all_fax_ids().size());
}

}  // namespace modes_gui
