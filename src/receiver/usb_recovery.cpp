#include "receiver/usb_recovery.h"

#include <algorithm>
#include <exception>
#include <filesystem>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/text.h"

namespace receiver {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view hub_class = "09";

// Attribute files of the kernel hold a line or nothing.
std::string attribute(const fs::path& device, const char* name) {
  try {
    return std::string(base::trim(base::valid_utf8(base::read_file(device / name, 4096))));
  } catch (const std::exception&) {
    return {};
  }
}

struct UsbDevice {
  std::string position;  ///< "2-1.4"
  fs::path path;
  std::string controller;
};

// Where the links of the bus lead to: …/{controller}/usb2/2-1/2-1.4
std::string controller_of(const fs::path& device) {
  std::string before;
  for (const fs::path& part : device) {
    const std::string name = part.string();
    if (name.starts_with("usb") && name.size() > 3 && base::is_digit(name[3])) return before;
    before = name;
  }
  return {};
}

// All devices, root hubs and other hubs too; the interfaces of devices ("2-1:1.0") are none.
std::vector<UsbDevice> all_devices(const std::string& usb_devices) {
  std::vector<UsbDevice> devices;
  std::error_code error;
  for (fs::directory_iterator entry(usb_devices, error), end; !error && entry != end; entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.find(':') != std::string::npos) continue;
    std::error_code gone;
    const fs::path path = fs::canonical(entry->path(), gone);
    if (gone) continue;
    if (std::string controller = controller_of(path); !controller.empty())
      devices.push_back({name, path, std::move(controller)});
  }
  std::sort(devices.begin(), devices.end(), [](const auto& a, const auto& b) { return a.position < b.position; });
  return devices;
}

std::string display_name(const UsbDevice& device) {
  const std::string product = attribute(device.path, "product");
  if (!product.empty()) return product;
  return fmt::format("USB device {}:{}", attribute(device.path, "idVendor"), attribute(device.path, "idProduct"));
}

}  // namespace

bool says_usb_is_dead(std::string_view text) {
  return text.find("error -110") != std::string_view::npos ||
         text.find("Device not responding to setup address") != std::string_view::npos;
}

UsbControllers usb_controllers(const std::string& usb_devices) {
  UsbControllers controllers;
  for (const UsbDevice& device : all_devices(usb_devices)) {
    controllers["usb-" + device.position] = device.controller;
    controllers["rtl-usb-" + device.position] = device.controller;
    if (const std::string serial = attribute(device.path, "serial"); !serial.empty())
      controllers.emplace(serial, device.controller);
  }
  return controllers;
}

ControllerReset plan_reset(const std::string& usb_devices, const std::string& controller) {
  ControllerReset reset{controller, {}};
  for (const UsbDevice& device : all_devices(usb_devices))
    if (device.controller == controller && attribute(device.path, "bDeviceClass") != hub_class)
      reset.devices.push_back(display_name(device));
  return reset;
}

std::string reset_question(const ControllerReset& reset) {
  std::string list;
  for (const std::string& device : reset.devices)
    list += fmt::format("\n  • {}", device);
  return fmt::format(
      "The RX-888 has dropped off USB and its USB controller ({}) is not answering. Restarting the controller's driver "
      "brings the RX-888 back; press Start afterwards.\n\nEverything on that controller disconnects for about 5 "
      "seconds:{}\n\nDo not continue while one of these is being written to, for example a board being flashed. "
      "Administrator authorization is required.\n\nReset the USB controller now?",
      reset.controller, list);
}

std::string reset_needed_text(const std::string& controller) {
  return fmt::format("RX-888 is off USB and the kernel cannot enumerate it: USB controller {} needs a reset.",
                     controller);
}

std::vector<std::string> reset_command(const OutsidePrograms& programs, const std::string& controller) {
  return {programs.pkexec, programs.privileged_helper, "usb-reset", controller};
}

}  // namespace receiver
