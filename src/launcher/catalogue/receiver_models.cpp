#include "launcher/catalogue/receiver_models.h"

#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "base/text.h"

namespace launcher {
namespace {

constexpr std::array<std::string_view, 3> antennas_rsp2{"A", "B", "HiZ"};
constexpr std::array<std::string_view, 2> antennas_rspduo{"A", "HiZ"};
constexpr std::array<std::string_view, 3> antennas_rspdx{"A", "B", "C"};

struct Model {
  std::string_view name;
  std::span<const std::string_view> antennas;
  ModelNotches notches;
};

/// From the maker's data sheets.
constexpr std::array<Model, 7> models{{
    {"RSP1", {}, {false, false, true}},
    {"RSP1A", {}, {true, false, true}},
    {"RSP1B", {}, {true, false, true}},
    {"RSP2", antennas_rsp2, {true, false, true}},
    {"RSPduo", antennas_rspduo, {true, true, true}},
    {"RSPdx", antennas_rspdx, {true, false, true}},
    {"RSPdxR2", antennas_rspdx, {true, false, true}},
}};

const Model* find_model(std::string_view name) {
  const auto* const found =
      std::find_if(models.begin(), models.end(), [name](const Model& model) { return model.name == name; });
  return found == models.end() ? nullptr : found;
}

}  // namespace

ModelNotches model_notches(std::string_view model) {
  const Model* const found = find_model(model);
  return found ? found->notches : ModelNotches{};
}

std::span<const std::string_view> model_antennas(std::string_view model) {
  const Model* const found = find_model(model);
  return found ? found->antennas : std::span<const std::string_view>{};
}

void check_antenna(std::string_view model, std::string_view antenna) {
  const Model* const found = find_model(model);
  if (!found || antenna.empty()) return;
  if (std::find(found->antennas.begin(), found->antennas.end(), antenna) == found->antennas.end())
    throw std::runtime_error(fmt::format("Antenna is unavailable on {}", model));
}

void check_notches(std::string_view model, bool rf_notch_on, bool mw_notch_on) {
  const ModelNotches notches = model_notches(model);
  if (notches.known && ((rf_notch_on && !notches.rf_notch) || (mw_notch_on && !notches.mw_notch)))
    throw std::runtime_error(
        fmt::format("Selected hardware notch is unavailable on {}; turn it off in SDR Config", model));
}

std::string model_label(std::string_view model, std::string_view serial) {
  if (base::trim(model).empty()) return std::string(serial);
  return fmt::format("{} · {}", model, serial);
}

}  // namespace launcher
