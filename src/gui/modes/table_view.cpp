#include "gui/modes/table_view.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/catalogue/known_cost.h"

namespace modes_gui {
namespace {

using launcher::BandChoices;
using options::Station;

std::string band_shown(std::size_t band) {
  return launcher::band_display_name(launcher::band_presets[band].name);
}

std::string name_of(const std::vector<std::pair<std::string, std::string>>& entries, const std::string& serial) {
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const auto& each) { return each.first == serial; });
  return found == entries.end() ? std::string() : found->second;
}

ReceiverEntries receiver_entries(const Station& station, std::size_t band) {
  ReceiverEntries shown;
  shown.entries.emplace_back("", "Automatic");
  const auto pin = station.assignments.find(std::string(launcher::band_presets[band].name));
  if (pin != station.assignments.end()) shown.chosen = pin->second;
  bool listed = shown.chosen.empty();
  for (std::size_t i = 0; i < station.receivers.size(); ++i) {
    const options::ReceiverProfile& receiver = station.receivers[i];
    listed = listed || receiver.serial == shown.chosen;
    shown.entries.emplace_back(receiver.serial, base::valid_utf8(fmt::format("{} · {}", i + 1, receiver.label())));
  }
  const std::string name = band_shown(band);
  if (!listed) {
    shown.entries.emplace_back(shown.chosen, base::valid_utf8(shown.chosen + " · missing"));
    shown.tooltip = base::valid_utf8(fmt::format("{} is assigned to {}, which is not listed.", name, shown.chosen));
  } else if (shown.chosen.empty()) {
    shown.tooltip =
        fmt::format("{}: automatic placement uses the fewest ticked receivers. Pick one to put the band on it.", name);
  } else {
    // A narrow table cuts the name.
    shown.tooltip = name_of(shown.entries, shown.chosen);
  }
  return shown;
}

std::string cell_tip(const TableView& view, std::size_t band, std::size_t column,
                     const std::vector<std::string>& ticked) {
  if (!view.missing[column].empty()) return view.missing[column];
  if (!view.band_open[band] || is_digital(column)) return view.band_tips[band];
  std::vector<std::string> lines;
  for (const std::string& line :
       {box_tooltip(band, column), known_cost::cost_tooltip(mode_columns[column].word, ticked)})
    if (!line.empty()) lines.push_back(line);
  return base::join(lines, "\n");
}

}  // namespace

TableView table_view(const Station& station, const BandChoices& choices, bool fresh,
                     const std::array<std::string, column_count>& missing) {
  TableView view;
  view.grid = read_grid(station.common);
  view.missing = missing;
  view.fresh = fresh;
  std::vector<std::string> ticked;
  for (std::size_t band = 0; band < band_count; ++band)
    if (view.grid.bands[band].ticked) ticked.emplace_back(launcher::band_presets[band].name);
  for (std::size_t band = 0; band < band_count; ++band) {
    view.band_open[band] = view.grid.bands[band].ticked || choices.bands[band].allowed;
    if (fresh) view.band_tips[band] = base::valid_utf8(launcher::band_tooltip(choices.bands[band], choices));
    for (std::size_t column = 0; column < column_count; ++column) {
      // A band that only lacks a mode is opened by that mode's box.
      const bool open = view.band_open[band] || choices.bands[band].lacks_mode;
      view.open[band].set(column, open && boxes_of(band)[column] && missing[column].empty());
      view.cell_tips[band][column] = cell_tip(view, band, column, ticked);
    }
    view.receivers[band] = receiver_entries(station, band);
  }
  view.bars = chart_bars(station, choices);
  return view;
}

Notice notice_of(const Station& station, const BandChoices& choices, bool fresh, const ReceiverStates& receivers) {
  Notice notice;
  if (!fresh) {
    notice.text = "Checking which bands fit the ticked receivers…";
    return notice;
  }
  notice.text = base::valid_utf8(base::join(launcher::notice_lines(choices, station, receivers.statuses), "\n"));
  notice.error = choices.error.has_value();
  notice.fix = launcher::choices_fix(choices, station);
  if (!notice.fix) return notice;
  std::string serial = notice.fix->serial;
  if (const auto pin = station.assignments.find(notice.fix->group); pin != station.assignments.end())
    serial = pin->second;
  if (!serial.empty() && receivers.running.contains(serial)) notice.fix.reset();
  return notice;
}

}  // namespace modes_gui
