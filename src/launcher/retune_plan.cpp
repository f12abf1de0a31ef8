#include "launcher/retune_plan.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/catalogue/known_filters.h"
#include "launcher/plan_error.h"
#include "launcher/plan_words.h"
#include "launcher/planner.h"
#include "launcher/receiver_overlay.h"
#include "options/receiver_options.h"

namespace launcher {
namespace {

using options::ReceiverProfile;
using options::Station;
using Launches = std::vector<ReceiverLaunch>;

const ReceiverLaunch* find_launch(const Launches& launches, const std::string& name) {
  const auto found =
      std::find_if(launches.begin(), launches.end(), [&](const auto& each) { return each.name == name; });
  return found == launches.end() ? nullptr : &*found;
}

std::string_view mode_of(const ReceiverLaunch& launch) {
  return value_or(launch.profile, "mode", "audio");
}

void judge_families(const Launches& running) {
  for (const ReceiverLaunch& launch : running)
    if (value_or(launch.profile, "backend", "sdrplay") == "rtl-sdr")
      throw RetuneRefusal(
          "Retune works on local SDRplay and RX-888 receivers. Apply and Save restarts the receivers to apply this "
          "selection.");
}

[[noreturn]] void refuse_mode() {
  throw RetuneRefusal(
      "Retune works in the External Decoder modes. Apply and Save restarts the receivers to change reception mode.");
}

/// The ticked receivers that have no engine.
std::vector<const ReceiverProfile*> waiting(const Station& station, const Launches& running) {
  std::vector<const ReceiverProfile*> receivers;
  for (const ReceiverProfile& receiver : station.receivers)
    if (receiver.enabled && find_launch(running, receiver.serial) == nullptr) receivers.push_back(&receiver);
  return receivers;
}

void judge_pins(const Station& station, const std::vector<const ReceiverProfile*>& not_running) {
  const auto selected = [&](const std::string& group) {
    if (group.starts_with('@')) return true;
    for (const auto text : base::split(value_or(station.common, "bands", ""), ','))
      if (normalise_band(text) == group) return true;
    return false;
  };
  for (const auto& [group, serial] : station.assignments)
    for (const ReceiverProfile* receiver : not_running)
      if (receiver->serial == serial && selected(group)) {
        const std::string name = group_name(group, station);
        throw RetuneRefusal(
            fmt::format("{} is assigned to {}, which is ticked but not running. Apply and Save starts it, or set {} to "
                        "Automatic.",
                        name, receiver->label(), name));
      }
}

Station on_running_receivers(Station station, const Launches& running) {
  for (ReceiverProfile& receiver : station.receivers) {
    receiver.enabled = find_launch(running, receiver.serial) != nullptr;
    receiver.available = receiver.available || receiver.enabled;
  }
  return station;
}

Launches placed(const Station& station, const Launches& running) {
  const auto not_running = waiting(station, running);
  judge_pins(station, not_running);
  try {
    return plan(on_running_receivers(station, running));
  } catch (const std::exception& error) {
    bool others_help = false;
    try {
      others_help = !not_running.empty() && !plan(station).empty();
    } catch (const std::exception&) {
    }
    if (!others_help)
      throw RetuneRefusal(fmt::format("These bands do not fit the receivers that are running. {}", error.what()));
    std::vector<std::string> labels;
    for (const ReceiverProfile* receiver : not_running)
      labels.push_back(receiver->label());
    const bool one = labels.size() == 1;
    throw RetuneRefusal(fmt::format("{} {} ticked but not running: press Stop, then Start to use {}.",
                                    base::enumerate(labels, "and"), one ? "is" : "are", one ? "it" : "them"));
  }
}

/// The new selection in a capture as wide as the one that runs, centred anew.
Capture moved_capture(const ReceiverLaunch& running, const ReceiverLaunch& wanted) {
  const Capture &now = running.capture, &planned = wanted.capture;
  if (now.sample_rate == planned.sample_rate) return planned;
  const double spare = now.usable_span() - planned.usable_span();
  // A wider capture than is needed stays; a narrower one would have to be made anew.
  if (spare < 0)
    throw RetuneRefusal(fmt::format(
        "The ticked bands do not fit the running capture of {}. Apply and Save restarts the receivers to resize it.",
        running.label()));
  const double half = now.usable_span() / 2;
  const double nyquist = 0.5 * adc_clock(value_or(running.profile, "rx888-rate", "full") == "half");
  return {std::clamp(planned.center, half, std::max(half, nyquist - half)), now.sample_rate, now.filter_bandwidth};
}

[[noreturn]] void refuse_move(const ReceiverLaunch& running, const char* kind, const std::string& id) {
  throw RetuneRefusal(
      fmt::format("The ticked bands would move the running capture of {} off {} {}. Apply and Save restarts the "
                  "receivers to resize it.",
                  running.label(), kind, id));
}

/// Channels that are open on the receiver must stay within its capture.
void judge_open_channels(const ReceiverLaunch& running, const Capture& capture) {
  if (!running.options) return;
  const auto inside = [&](const options::Passband& band) {
    return options::lies_in_capture(band, capture.center, capture.filter_bandwidth);
  };
  for (const auto& channel : running.options->reception.audio_channels)
    if (channel.enabled && !inside(options::audio_passband(channel)))
      refuse_move(running, "audio receiver", channel.id);
  for (const auto& channel : running.options->reception.analysis_channels)
    if (channel.enabled && !inside(options::analysis_passband(channel)))
      refuse_move(running, "analysis channel", channel.id);
}

ReceiverLaunch retuned(const ReceiverLaunch& running, const ReceiverLaunch* wanted) {
  if (wanted == nullptr || mode_of(*wanted) != mode_of(running)) refuse_mode();
  ReceiverLaunch launch = *wanted;
  launch.capture = moved_capture(running, *wanted);
  judge_open_channels(running, launch.capture);
  keep_control(launch, running);
  return launch;
}

}  // namespace

Launches retune_plan(const Station& station, const Launches& running) {
  if (running.empty()) throw RetuneRefusal("No running receivers to retune");
  judge_families(running);
  const std::string_view mode = value_or(station.common, "mode", "audio");
  if (mode != "decoder" && mode != "hybrid") refuse_mode();
  const Launches wanted = placed(station, running);
  Launches result;
  for (const ReceiverLaunch& launch : running)
    result.push_back(retuned(launch, find_launch(wanted, launch.name)));
  return result;
}

std::string known_selection_text(const ReceiverLaunch& launch) {
  if (value_or(launch.profile, "known-channels", "false") != "true") return {};
  if (const auto own = launch.profile.find("known-band-modes"); own != launch.profile.end()) return own->second;
  std::vector<std::string> kinds, entries;
  const sig::ModeSet excluded = sig::parse_known_modes(value_or(launch.profile, "known-modes", "all"));
  for (const sig::FilterWord& word : sig::filter_words)
    if (!word.kinds.without(excluded).empty()) kinds.emplace_back(word.word);
  for (const std::string& band : launch.groups)
    if (find_band(band) != nullptr) entries.push_back(fmt::format("{}:{}", band, base::join(kinds, "+")));
  return base::join(entries, ",");
}

}  // namespace launcher
