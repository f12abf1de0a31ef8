#include "results/activity_cards.h"

#include <algorithm>

#include <fmt/format.h>

namespace results {
namespace {

std::string audio_line(const launcher::ReceiverLaunch& launch) {
  if (launch.virtual_audio) return "Virtual decoder input: sdrplay_rx_input";
  return launch.sink.empty() ? std::string() : fmt::format("Audio output sink: {}", launch.sink);
}

bool holds(const std::vector<ChannelKey>& keys, const ChannelKey& key) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

void add_row(ActivityCard& card, const ChannelKey& key) {
  card.rows.push_back({key.text(), fmt::format("{} {} MHz", key.mode, key.frequency)});
}

ActivityCard receiver_card(const ReceiverChannels& receiver, const std::vector<ChannelKey>& shown) {
  ActivityCard card;
  card.label = receiver.label;
  card.audio_line = receiver.audio_line;
  for (const auto& key : receiver.channels)
    if (holds(shown, key)) add_row(card, key);
  return card;
}

// The card that a channel outside the plan goes to; the last one belongs to nobody.
ActivityCard& card_for(std::vector<ActivityCard>& cards, const ChannelKey& key, const Attribution& attribution) {
  const auto found = attribution.find(key.text());
  if (found == attribution.end()) return cards.back();
  return *std::find_if(cards.begin(), cards.end() - 1,
                       [&](const ActivityCard& card) { return card.label == found->second; });
}

}  // namespace

std::vector<ReceiverChannels> receiver_channels(const std::vector<launcher::ReceiverLaunch>& plan) {
  std::vector<ReceiverChannels> receivers;
  for (const auto& launch : plan) {
    ReceiverChannels receiver{launch.label(), audio_line(launch), {}};
    for (const auto& channel : launch.channels)
      receiver.channels.emplace_back(channel.mode, channel.frequency);
    receivers.push_back(std::move(receiver));
  }
  return receivers;
}

std::vector<ActivityCard> make_activity_cards(Family family, const std::vector<ReceiverChannels>& receivers,
                                              const std::vector<ChannelKey>& known, const Attribution& attribution) {
  std::vector<ChannelKey> shown;
  std::copy_if(known.begin(), known.end(), std::back_inserter(shown),
               [family](const ChannelKey& key) { return family_of(key.mode) == family; });

  std::vector<ActivityCard> cards;
  for (const auto& receiver : receivers)
    cards.push_back(receiver_card(receiver, shown));
  cards.emplace_back().label = unattributed_receiver;
  for (const auto& key : shown) {
    const bool planned = std::any_of(receivers.begin(), receivers.end(),
                                     [&](const ReceiverChannels& receiver) { return holds(receiver.channels, key); });
    if (!planned) add_row(card_for(cards, key, attribution), key);
  }
  if (cards.back().rows.empty()) cards.pop_back();

  for (std::size_t i = 0; i < cards.size(); ++i) {
    cards[i].ordinal = static_cast<int>(i) + 1;
    if (i < receivers.size() && receivers[i].channels.empty() && cards[i].rows.empty())
      cards[i].only_line = "Audio output · no digital decode counters";
  }
  return cards;
}

}  // namespace results
