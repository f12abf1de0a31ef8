// The chart of which receiver carries which bands, and the hand that moves a receiver to another band: as values,
// without a screen. Any thread.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "launcher/band_choices.h"
#include "options/station.h"

namespace modes_gui {

/// Rows of the chart are those of the band table, then All bands.
inline constexpr std::size_t all_bands_row = launcher::band_presets.size();
inline constexpr std::size_t chart_rows = all_bands_row + 1;

/// One ticked receiver. Its column is its place in the list of bars.
struct ChartBar {
  int number = 0;  ///< in the receiver list, from 1
  std::string serial, label;
  std::vector<std::size_t> carried;  ///< rows, ascending; empty waits under All bands
  [[nodiscard]] std::size_t first() const { return carried.empty() ? all_bands_row : carried.front(); }
  [[nodiscard]] std::size_t last() const { return carried.empty() ? all_bands_row : carried.back(); }
  bool operator==(const ChartBar&) const = default;
};

/// In the order of the receiver list.
std::vector<ChartBar> chart_bars(const options::Station& station, const launcher::BandChoices& choices);

/// The bar in a column that covers a row; nullopt beside the bars.
std::optional<std::size_t> bar_at(const std::vector<ChartBar>& bars, int column, std::optional<std::size_t> row);

/// A receiver in the operator's hand, by pointer or keyboard.
class Drag {
 public:
  struct Drop {
    std::string serial;
    std::size_t row{};
  };

  /// Takes hold of a receiver at a row.
  void take(std::string serial, std::size_t row);
  /// Beside all rows the aim is lost, the hold is not.
  void aim(std::optional<std::size_t> row);
  /// One row up (-1) or down (1), not beyond the ends.
  void step(int direction);
  void let_go() { *this = Drag(); }
  /// Ends the hold. Nothing was dropped without an aim, or where the bar was taken.
  std::optional<Drop> drop();

  [[nodiscard]] bool holds() const { return !serial_.empty(); }
  [[nodiscard]] const std::string& serial() const { return serial_; }
  [[nodiscard]] std::optional<std::size_t> aimed() const { return aim_; }

 private:
  std::string serial_;
  std::size_t start_ = 0;
  std::optional<std::size_t> aim_;
};

/// What a drop comes to: pins, or a note about why nothing changed.
struct Move {
  std::optional<std::map<std::string, std::string>> pins;
  std::string note;
};
/// `fits` says whether a station can be planned.
Move move_receiver(const options::Station& station, const launcher::BandChoices& choices, const Drag::Drop& drop,
                   const std::function<bool(const options::Station&)>& fits);

/// "20m", "All bands"
std::string row_name(std::size_t row);
/// What the chart shows, in words.
std::string chart_description(const std::vector<ChartBar>& bars, const Drag& drag);

}  // namespace modes_gui
