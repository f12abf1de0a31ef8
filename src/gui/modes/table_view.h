// What the table shows at one moment, computed from the station and the planner's answer. Any thread.
#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "gui/modes/coverage_chart.h"
#include "gui/modes/mode_grid.h"
#include "launcher/plan_words.h"

namespace modes_gui {

/// One band's drop-down of receivers: pairs of serial and text, Automatic first.
struct ReceiverEntries {
  std::vector<std::pair<std::string, std::string>> entries;
  std::string chosen;  ///< the pinned serial; empty is Automatic
  std::string tooltip;
  bool operator==(const ReceiverEntries&) const = default;
};

struct TableView {
  ModeGrid grid;
  OpenBoxes open{};
  std::array<bool, band_count> band_open{};  ///< the band may be ticked and unticked
  std::array<std::string, band_count> band_tips;
  std::array<std::array<std::string, column_count>, band_count> cell_tips;
  std::array<std::string, column_count> missing;  ///< why a column cannot be used
  std::array<ReceiverEntries, band_count> receivers;
  std::vector<ChartBar> bars;
  bool fresh = true;  ///< the planner's answer is that for this station
};

/// `missing` as of missing_programs(). With an answer that is not fresh nothing is said of who carries what.
TableView table_view(const options::Station& station, const launcher::BandChoices& choices, bool fresh,
                     const std::array<std::string, column_count>& missing);

/// How the receivers stand now, beside what the settings say.
struct ReceiverStates {
  std::set<std::string> running;      ///< serials
  launcher::DeviceStatuses statuses;  ///< as of the last discovery, with what the sharing service holds now
  bool operator==(const ReceiverStates&) const = default;
};

/// The notice under the table.
struct Notice {
  std::string text;
  bool error = false;
  std::optional<launcher::PlanFix> fix;
};
/// No fix is offered for a receiver that runs.
Notice notice_of(const options::Station& station, const launcher::BandChoices& choices, bool fresh,
                 const ReceiverStates& receivers);

}  // namespace modes_gui
