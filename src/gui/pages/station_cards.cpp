#include "gui/pages/station_cards.h"

#include <fmt/format.h>

#include "launcher/catalogue/bands.h"

namespace gui {
namespace {

std::string band_name(double frequency) {
  const auto* band = launcher::activity_band_at(frequency);
  return band ? std::string(band->name) : "Other";
}

}  // namespace

std::vector<TextCard> plan_cards(const std::vector<launcher::ReceiverLaunch>& launches) {
  std::vector<TextCard> cards;
  for (const auto& launch : launches) {
    TextCard card{launch.label(), {}};
    std::string band;
    for (const auto& channel : launch.channels) {
      const std::string now = band_name(channel.frequency);
      const std::string text = fmt::format("{} {:.6f} MHz", channel.mode, channel.frequency / 1e6);
      if (now == band)
        card.lines.back() += " · " + text;
      else
        card.lines.push_back(fmt::format("{}   {}", now, text));
      band = now;
    }
    if (card.lines.empty()) card.lines.emplace_back("No digital modes");
    cards.push_back(std::move(card));
  }
  return cards;
}

}  // namespace gui
