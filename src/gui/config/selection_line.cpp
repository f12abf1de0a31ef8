#include "gui/config/selection_line.h"

#include <fmt/format.h>

#include "base/text.h"
#include "gui/config/card_choices.h"
#include "launcher/plan_words.h"
#include "launcher/receiver_overlay.h"

namespace gui {
namespace {

using launcher::mega_text;
using launcher::ReceiverChoice;

/// "40m 30m 20m, audio receiver voice1": the bands by blanks, channels behind commas.
std::string carried(const ReceiverChoice& choice, const options::Station& station) {
  std::string bands, channels;
  for (const std::string& group : choice.groups) {
    const bool channel = group.starts_with('@');
    std::string& list = channel ? channels : bands;
    if (!list.empty()) list += channel ? ", " : " ";
    list += launcher::group_name(group, station);
  }
  return bands + (bands.empty() || channels.empty() ? "" : ", ") + channels;
}

/// What is captured, without the bands.
std::string capture(const ReceiverChoice& choice, const options::Profile& settings) {
  const launcher::CaptureCapability& can = choice.capability;
  if (!can.center_text.empty()) return fmt::format("Capture center fixed at {}", can.center_text);
  const std::string rate = mega_text(choice.rate, 3), span = mega_text(choice.span, 2);
  if (family_of(settings) == launcher::Family::rx888) {
    const bool half = launcher::value_or(settings, "rx888-rate", "full") == "half";
    const std::string adc = fmt::format("ADC {} MS/s", mega_text(launcher::adc_clock(half), 3));
    return choice.groups.empty() ? adc : fmt::format("{}, decoding {} MS/s", adc, rate);
  }
  if (can.limit_keys.empty()) return fmt::format("{} MS/s · {} MHz", rate, span);
  return fmt::format("{} MS/s captures only {} MHz{} (Automatic: {} MHz)", rate, span,
                     holds_one_band(choice.span) ? ", one band at a time" : "", mega_text(can.full_span, 2));
}

}  // namespace

const char* const spot_tooltip =
    "Decode and spot the modes ticked on this receiver's bands. Unticked, the receiver only receives them, for "
    "listeners and audio receivers.";
const char* const share_tooltip =
    "Let Corvane's listeners use this receiver (Sharing tab: Share Tarnwick's receivers). Unticked, Corvane leaves it "
    "alone.";

SelectionLine selection_line(const options::Station& station, const options::ReceiverProfile& receiver,
                             const ReceiverChoice* choice) {
  if (!receiver.enabled || !choice) return {};
  if (!receiver.spot && !receiver.share)
    return {"Neither spotting nor shared: tick Spot or Share, or untick the receiver.", true};
  if (choice->state.starts_with("Cannot be used")) return {base::valid_utf8(choice->state), true};
  std::string text = choice->state;
  if (text.empty()) {
    const std::string groups = carried(*choice, station);
    text = groups + (groups.empty() ? "" : " · ") +
           capture(*choice, effective_settings(station.common, receiver.settings));
  }
  if (!receiver.share) text += " · not shared";
  if (!receiver.spot) text += " · listening only, no spotting";
  return {base::valid_utf8(text), false};
}

std::string with_status(const std::string& label, launcher::DeviceStatus status) {
  const std::string_view word = launcher::device_status_word(status);
  return word.empty() ? label : fmt::format("{} · {}", label, word);
}

std::string remove_tooltip(bool running) {
  return running ? "Stop this receiver before removing it."
                 : "Take this receiver out of the session. Its settings are kept and return if it is listed again.";
}

std::string removal_question(const options::ReceiverProfile& receiver, bool attached) {
  return fmt::format(
      "Remove receiver {} from this session?\n\nBands pinned to it return to Automatic. Its settings are kept: {}",
      base::valid_utf8(receiver.label()),
      attached ? "it is attached, so the next refresh lists it again, unticked, with the same settings."
               : "when it is attached again it is listed with the same settings.");
}

}  // namespace gui
