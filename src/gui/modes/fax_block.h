// The weather fax stations below the table of bands: which boxes there are and what they do. Any thread.
#pragma once

#include <string>
#include <vector>

#include "gui/modes/mode_grid.h"

namespace modes_gui {

struct FaxBox {
  std::string id;
  std::string khz;      ///< "8503.9"
  std::string tooltip;  ///< the published hours
};
struct FaxStation {
  std::string name;  ///< "NMG New Orleans"
  std::vector<FaxBox> boxes;
};

/// Stations in the order of their first frequency in the known channels.
const std::vector<FaxStation>& fax_stations();

void set_fax(FaxIds& ticked, const std::string& id, bool on);
/// Every frequency of one station, or none; null means every station.
void press_fax(FaxIds& ticked, const FaxStation* station);
HeaderState fax_state(const FaxIds& ticked, const FaxStation* station);

/// "Weather fax: 3 of 54 frequencies ticked"
std::string fax_summary(const FaxIds& ticked);

}  // namespace modes_gui
