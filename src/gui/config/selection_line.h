// What the row of a receiver above the cards says: what it carries, or what keeps it from being of use. No toolkit
// here. Any thread.
#pragma once

#include <string>

#include "launcher/band_choices.h"
#include "launcher/device_status.h"
#include "options/station.h"

namespace gui {

struct SelectionLine {
  std::string text;      ///< empty for a receiver that is not ticked
  bool warning = false;  ///< something needs the operator
  bool operator==(const SelectionLine&) const = default;
};

/// `choice` is the planner's answer for the receiver; null for one that is not ticked, or without an answer.
SelectionLine selection_line(const options::Station& station, const options::ReceiverProfile& receiver,
                             const launcher::ReceiverChoice* choice);

/// The receiver's label with what the last listing says of it: "RSP2 · ONE · missing".
std::string with_status(const std::string& label, launcher::DeviceStatus status);

/// The tooltip of Remove, which a running receiver does not take.
std::string remove_tooltip(bool running);
/// The question before a receiver is taken out of the session.
std::string removal_question(const options::ReceiverProfile& receiver, bool attached);

extern const char* const spot_tooltip;
extern const char* const share_tooltip;

}  // namespace gui
