// The programs of others that the launcher runs, and the places of the system that it looks into, so that tests and the
// simulated station can put stand-ins there.
#pragma once

#include <string>

namespace receiver {

struct OutsidePrograms {
  std::string pkexec = "/usr/bin/pkexec";                           ///< asks for administrator authorization
  std::string privileged_helper = "/usr/libexec/tarnwick-service";  ///< run through pkexec
  std::string usb_devices = "/sys/bus/usb/devices";
  std::string processes = "/proc";
};

}  // namespace receiver
