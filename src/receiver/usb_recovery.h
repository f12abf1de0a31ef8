// An RX-888 that has dropped off USB, together with a controller that answers nothing any more: which one it is, what
// else hangs on it, and the question whether to restart it. Reads small files of the system; any thread.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "receiver/outside_programs.h"

namespace receiver {

/// The kernel's words, in what an engine prints, for a device that it cannot enumerate.
bool says_usb_is_dead(std::string_view text);

/// Where each attached USB device is: by serial, and by position as "usb-2-1" and "rtl-usb-2-1" name it, the name of
/// the controller that it is on ("0000:00:14.0").
using UsbControllers = std::map<std::string, std::string>;
UsbControllers usb_controllers(const std::string& usb_devices);

struct ControllerReset {
  std::string controller;
  std::vector<std::string> devices;  ///< all that disconnects for a while, hubs left out
};
/// Everything that hangs on the controller now, in the order of the positions.
ControllerReset plan_reset(const std::string& usb_devices, const std::string& controller);

std::string reset_question(const ControllerReset& reset);
/// For the log, where nobody is asked.
std::string reset_needed_text(const std::string& controller);
/// Restarts the controller's driver, with administrator authorization.
std::vector<std::string> reset_command(const OutsidePrograms& programs, const std::string& controller);

}  // namespace receiver
