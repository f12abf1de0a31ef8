// What the receive engine says about the attached receivers: a line each, with remarks for the operator between them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "launcher/device_status.h"

namespace launcher {

/// One attached receiver.
struct ListedDevice {
  std::string serial;  ///< as listed: any bytes without a blank; see is_usable_serial()
  std::string model;   ///< without status words
  std::string backend = "sdrplay";
  bool available = false;                     ///< false: another program has it, or this launcher
  DeviceStatus status = DeviceStatus::ready;  ///< ready, busy or not_responding
  bool operator==(const ListedDevice&) const = default;
};

/// An explanation for the operator.
struct DiscoveryNote {
  std::string family;  ///< "RX-888", "SDRplay" or "RTL-SDR"
  std::string text;
  bool operator==(const DiscoveryNote&) const = default;
};

/// An RX-888 that cannot be a receiver as it is.
struct DeviceReport {
  std::string serial;    ///< as listed: "usb-2-1" when it is known by its USB position only
  DeviceStatus trouble;  ///< needs_firmware or not_responding
  bool operator==(const DeviceReport&) const = default;

  /// "RX-888 on 2-1 needs firmware."
  [[nodiscard]] std::string short_text() const;
  /// The same with what to do about it, for the log.
  [[nodiscard]] std::string long_text() const;
};

struct DeviceListing {
  std::vector<ListedDevice> devices;  ///< each serial once: the last line of a repeated one, in the place of the first
  std::vector<DiscoveryNote> notes;
  std::vector<DeviceReport> reports;
};

/// Reads what `--list-devices` printed, in time linear in its length. Takes any bytes; what is neither a device nor a
/// note is passed over. Any thread.
DeviceListing parse_device_listing(std::string_view output);

/// Whether a listed receiver can be kept and planned: 1 to 64 letters, digits, dashes or underscores.
bool is_usable_serial(std::string_view serial);

}  // namespace launcher
