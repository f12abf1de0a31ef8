#include "launcher/catalogue/known_cost.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <thread>

#include <fmt/format.h>

#include "base/text.h"

namespace known_cost {
namespace {

// RTTY is searched for across the whole band, so its cost grows with the width.
constexpr double rtty_fixed = 0.045;
constexpr double rtty_per_mhz = 0.117;

struct BandWidth {
  std::string_view band;
  double mhz{};
};
constexpr BandWidth band_widths[] = {{"160", 0.2}, {"80", 0.5},  {"40", 0.3}, {"30", 0.05}, {"20", 0.35},
                                     {"17", 0.1},  {"15", 0.45}, {"12", 0.1}, {"10", 0.3},  {"6", 0.4}};

double rtty_cost(std::string_view band) {
  for (const BandWidth& row : band_widths)
    if (row.band == band) return rtty_fixed + rtty_per_mhz * row.mhz;
  return rtty_fixed;
}

sig::ModeSet kinds_of(std::string_view word) {
  for (const sig::FilterWord& row : sig::filter_words)
    if (row.word == word) return row.kinds;
  return {};
}

/// Whether any signal of the kind is decoded on the band.
bool is_on(const sig::KnownFilters& filters, sig::ModeSet kinds, std::string_view band) {
  if (!filters.bands) return !kinds.without(filters.excluded).empty();
  return std::any_of(filters.bands->begin(), filters.bands->end(), [&](const sig::BandFilter& entry) {
    return entry.band->name == band && !kinds.without(entry.excluded).empty();
  });
}

}  // namespace

double cost(std::string_view kind, std::string_view band) {
  const auto row =
      std::find_if(mode_costs.begin(), mode_costs.end(), [&](const ModeCost& mode) { return mode.kind == kind; });
  if (row == mode_costs.end()) return 0;
  if (band.empty()) return row->cores;
  if (kind == "rtty") return rtty_cost(band);
  // The meteor-scatter calling frequencies are on these two alone.
  if (kind == "msk144" && band != "2" && band != "6") return 0;
  return row->cores;
}

int count_physical_cores(const std::string& directory, int logical) {
  std::set<std::string> siblings;
  for (int cpu = 0; cpu < logical; ++cpu) {
    std::ifstream file(fmt::format("{}/cpu{}/topology/thread_siblings_list", directory, cpu));
    if (std::string line; std::getline(file, line) && !line.empty()) siblings.insert(line);
  }
  return std::max(1, siblings.empty() ? logical : static_cast<int>(siblings.size()));
}

int physical_cores() {
  static const int cores =
      count_physical_cores("/sys/devices/system/cpu", static_cast<int>(std::thread::hardware_concurrency()));
  return cores;
}

std::string format_cores(double cores) {
  return cores >= 10 ? fmt::format("{:.0f}", cores) : fmt::format("{:.1f}", cores);
}

std::optional<Estimate> estimate(const sig::KnownFilters& filters, const std::vector<std::string>& bands, int cores) {
  std::vector<std::string> parts;
  double sum = 0;
  for (const ModeCost& mode : mode_costs) {
    const sig::ModeSet kinds = kinds_of(mode.kind);
    double of_kind = 0;
    for (const std::string& band : bands)
      if (is_on(filters, kinds, band)) of_kind += cost(mode.kind, band);
    if (of_kind == 0) continue;
    parts.push_back(fmt::format("{} ~{}", mode.shown, format_cores(of_kind)));
    sum += of_kind;
  }
  if (parts.empty()) return std::nullopt;
  Estimate answer;
  // A sum of hundredths may miss exactly half by a rounding error.
  answer.warning = sum > cores / 2.0 + 1e-9;
  answer.line =
      fmt::format("CPU on the {} ticked bands, before any signals: {} cores. Ticked: about {} of this PC's {} cores.",
                  bands.size(), base::join(parts, ", "), format_cores(sum), cores);
  if (answer.warning) answer.line += " That leaves little for FT8 and the other decoders: untick RTTY or Olivia.";
  return answer;
}

std::string cost_tooltip(std::string_view kind, const std::vector<std::string>& bands) {
  double sum = 0;
  for (const std::string& band : bands)
    sum += cost(kind, band);
  if (sum == 0) return {};
  const auto row =
      std::find_if(mode_costs.begin(), mode_costs.end(), [&](const ModeCost& mode) { return mode.kind == kind; });
  return fmt::format(
      "About {} CPU cores for {} on all {} ticked bands, measured with nothing to decode; busy bands take more.",
      format_cores(sum), row->shown, bands.size());
}

}  // namespace known_cost
