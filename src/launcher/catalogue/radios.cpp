#include "launcher/catalogue/radios.h"

#include <algorithm>
#include <array>

namespace radios {
namespace {

constexpr std::string_view wildcard = "{product}";

/// By HfClass.
constexpr std::array<std::string_view, 4> tooltips{
    "About 2 MHz at a time. On HF, Automatic tries direct sampling; the log says if this dongle hears nothing there.",
    "About 2 MHz at a time. HF needs an upconverter in front of it.",
    "About 2 MHz at a time. HF by direct sampling (Automatic or Q branch).",
    "About 2 MHz at a time. HF works with Direct sampling off (built-in upconverter).",
};

bool matches(std::string_view pattern, std::string_view text) {
  if (pattern.empty()) return true;
  const auto place = pattern.find(wildcard);
  if (place == std::string_view::npos) return pattern == text;
  const std::string_view before = pattern.substr(0, place);
  const std::string_view behind = pattern.substr(place + wildcard.size());
  return text.size() >= before.size() + behind.size() && text.starts_with(before) && text.ends_with(behind);
}

}  // namespace

const RtlModel* find_model(const Catalogue& catalogue, std::string_view manufacturer, std::string_view product) {
  const auto& models = catalogue.models;
  const auto found = std::find_if(models.begin(), models.end(), [&](const RtlModel& model) {
    return matches(model.product, product) && (model.manufacturer.empty() || model.manufacturer == manufacturer);
  });
  return found == models.end() ? nullptr : &*found;
}

HfClass hf_class(const Catalogue& catalogue, std::string_view model_name) {
  const auto& models = catalogue.models;
  const auto found = std::find_if(models.begin(), models.end(),
                                  [model_name](const RtlModel& model) { return model.name == model_name; });
  return found == models.end() ? HfClass::unknown : found->hf;
}

std::string_view hf_tooltip(HfClass hf) {
  return tooltips.at(static_cast<std::size_t>(hf));
}

}  // namespace radios
