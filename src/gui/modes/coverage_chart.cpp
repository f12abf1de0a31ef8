#include "gui/modes/coverage_chart.h"

#include <algorithm>
#include <set>

#include <fmt/format.h>

#include "base/text.h"

namespace modes_gui {
namespace {

using launcher::BandChoices;
using options::Station;
using Pins = std::map<std::string, std::string>;

std::string band_of(std::size_t row) {
  return std::string(launcher::band_presets[row].name);
}

bool is_band_pin(const std::string& group) {
  return !group.starts_with('@');
}

void release(Pins& pins, const std::function<bool(const std::string& serial)>& whose) {
  std::erase_if(pins, [&](const auto& pin) { return is_band_pin(pin.first) && whose(pin.second); });
}

/// Tries one set of pins after the other, the least disturbing first.
class Moving {
 public:
  Moving(const Station& station, const BandChoices& choices, const Drag::Drop& drop,
         const std::function<bool(const Station&)>& fits)
      : station_(station), fits_(fits), serial_(drop.serial), band_(band_of(drop.row)) {
    for (std::size_t row = 0; row < all_bands_row; ++row)
      if (row != drop.row && holder(choices.bands[row]) == serial_) kept_.push_back(row);
    // The nearest bands have the best chance to share a capture with the new one.
    std::stable_sort(kept_.begin(), kept_.end(), [&](std::size_t a, std::size_t b) {
      return std::max(a, drop.row) - std::min(a, drop.row) < std::max(b, drop.row) - std::min(b, drop.row);
    });
    former_ = holder(choices.bands[drop.row]);
    for (const launcher::BandChoice& band : choices.bands)
      if (band.ticked) ticked_.insert(band.band);
  }

  std::optional<Pins> find() {
    for (const Pins& others : releases())
      if (auto pins = with_all(others)) return pins;
    for (const Pins& others : releases())
      if (auto pins = with_some(others)) return pins;
    return std::nullopt;
  }

 private:
  /// The receiver that has a ticked band; without a plan the one that it is pinned to.
  static std::string holder(const launcher::BandChoice& band) {
    if (!band.ticked) return {};
    return band.carrier.empty() ? band.assigned : band.carrier;
  }

  /// The pins of the other receivers: as they are, without those of the one that had the band, without any. Pins of
  /// bands that are not ticked stand in nobody's way.
  [[nodiscard]] std::vector<Pins> releases() const {
    Pins own_gone = station_.assignments;
    release_ticked(own_gone, [&](const std::string& serial) { return serial == serial_; });
    Pins former_gone = own_gone;
    release_ticked(former_gone, [&](const std::string& serial) { return serial == former_; });
    Pins all_gone = own_gone;
    release_ticked(all_gone, [](const std::string&) { return true; });
    return {own_gone, former_gone, all_gone};
  }
  void release_ticked(Pins& pins, const std::function<bool(const std::string& serial)>& whose) const {
    std::erase_if(pins, [&](const auto& pin) { return ticked_.contains(pin.first) && whose(pin.second); });
  }

  std::optional<Pins> with_all(Pins pins) const {
    pins[band_] = serial_;
    for (const std::size_t row : kept_)
      pins[band_of(row)] = serial_;
    return possible(pins) ? std::optional(pins) : std::nullopt;
  }

  std::optional<Pins> with_some(Pins pins) const {
    pins[band_] = serial_;
    if (!possible(pins)) return std::nullopt;
    for (const std::size_t row : kept_) {
      Pins more = pins;
      more[band_of(row)] = serial_;
      if (possible(more)) pins = std::move(more);
    }
    return pins;
  }

  [[nodiscard]] bool possible(const Pins& pins) const {
    Station tried = station_;
    tried.assignments = pins;
    return fits_(tried);
  }

  const Station& station_;
  const std::function<bool(const Station&)>& fits_;
  const std::string serial_;
  const std::string band_;
  std::string former_;
  std::set<std::string> ticked_;
  std::vector<std::size_t> kept_;  ///< the other bands that the receiver has
};

}  // namespace

std::vector<ChartBar> chart_bars(const Station& station, const BandChoices& choices) {
  std::vector<ChartBar> bars;
  for (std::size_t i = 0; i < station.receivers.size(); ++i) {
    const options::ReceiverProfile& receiver = station.receivers[i];
    if (!receiver.enabled) continue;
    ChartBar bar{static_cast<int>(i) + 1, receiver.serial, receiver.label(), {}};
    for (std::size_t row = 0; row < all_bands_row; ++row)
      if (choices.bands[row].ticked && choices.bands[row].carrier == bar.serial) bar.carried.push_back(row);
    bars.push_back(std::move(bar));
  }
  return bars;
}

std::optional<std::size_t> bar_at(const std::vector<ChartBar>& bars, int column, std::optional<std::size_t> row) {
  if (!row || column < 0 || column >= static_cast<int>(bars.size())) return std::nullopt;
  const ChartBar& bar = bars[static_cast<std::size_t>(column)];
  if (*row < bar.first() || *row > bar.last()) return std::nullopt;
  return static_cast<std::size_t>(column);
}

void Drag::take(std::string serial, std::size_t row) {
  serial_ = std::move(serial);
  start_ = row;
  aim_ = row;
}

void Drag::aim(std::optional<std::size_t> row) {
  if (holds()) aim_ = row;
}

void Drag::step(int direction) {
  if (!holds()) return;
  const int row = static_cast<int>(aim_.value_or(start_)) + direction;
  aim_ = static_cast<std::size_t>(std::clamp(row, 0, static_cast<int>(all_bands_row)));
}

std::optional<Drag::Drop> Drag::drop() {
  std::optional<Drop> dropped;
  if (holds() && aim_ && *aim_ != start_) dropped = Drop{serial_, *aim_};
  let_go();
  return dropped;
}

Move move_receiver(const Station& station, const BandChoices& choices, const Drag::Drop& drop,
                   const std::function<bool(const Station&)>& fits) {
  Move move;
  if (drop.row == all_bands_row) {
    move.pins = station.assignments;
    release(*move.pins, [&](const std::string& serial) { return serial == drop.serial; });
    return move;
  }
  if (!choices.bands[drop.row].ticked) {
    move.note = fmt::format("{} is not ticked", row_name(drop.row));
    return move;
  }
  move.pins = Moving(station, choices, drop, fits).find();
  const auto receiver = std::find_if(station.receivers.begin(), station.receivers.end(),
                                     [&](const auto& each) { return each.serial == drop.serial; });
  if (!move.pins && receiver != station.receivers.end())
    move.note = fmt::format("{} does not fit on {}", row_name(drop.row), receiver->label());
  return move;
}

std::string row_name(std::size_t row) {
  return row < all_bands_row ? launcher::band_display_name(launcher::band_presets[row].name) : "All bands";
}

std::string chart_description(const std::vector<ChartBar>& bars, const Drag& drag) {
  std::vector<std::string> parts;
  for (const ChartBar& bar : bars) {
    std::vector<std::string> bands;
    for (const std::size_t row : bar.carried)
      bands.push_back(row_name(row));
    parts.push_back(fmt::format("{} · {}: {}.", bar.number, bar.label,
                                bands.empty() ? "waits under All bands" : base::enumerate(bands, "and")));
    if (drag.serial() == bar.serial && drag.holds())
      parts.push_back(drag.aimed() ? fmt::format("Held, aimed at {}.", row_name(*drag.aimed())) : "Held.");
  }
  return parts.empty() ? "No receiver is ticked." : base::join(parts, " ");
}

}  // namespace modes_gui
