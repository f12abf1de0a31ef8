#include "launcher/device_listing.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/catalogue/receiver_models.h"

namespace launcher {
namespace {

constexpr std::string_view usb_prefix = "usb-";

struct StatusWord {
  std::string_view text;
  DeviceStatus status;
};
constexpr std::array<StatusWord, 2> status_words{
    {{"(needs firmware)", DeviceStatus::needs_firmware}, {"(not responding)", DeviceStatus::not_responding}}};

struct Trouble {
  DeviceStatus status;
  std::string_view summary;
  std::string_view advice;
};
constexpr std::array<Trouble, 2> troubles{
    {{DeviceStatus::needs_firmware, " needs firmware.",
      " needs firmware. Put SDDC_FX3.img in ~/.local/share/tarnwick/firmware/ and press Refresh receivers."},
     {DeviceStatus::not_responding, " has stopped responding; unplug and replug it.",
      " has stopped responding. Unplug it, plug it back in, then press Refresh receivers."}}};

const Trouble& trouble_of(DeviceStatus status) {
  return status == DeviceStatus::needs_firmware ? troubles[0] : troubles[1];
}

/// Cuts one piece off the front of the text; false, and nothing cut, when it begins otherwise.
bool take(std::string_view& text, std::string_view piece) {
  if (!text.starts_with(piece)) return false;
  text.remove_prefix(piece.size());
  return true;
}

/// Cuts "12: " off the front.
bool take_number(std::string_view& line) {
  const auto digits = std::find_if_not(line.begin(), line.end(), base::is_digit) - line.begin();
  std::string_view rest = line.substr(static_cast<std::size_t>(digits));
  if (digits == 0 || !take(rest, ": ")) return false;
  line = rest;
  return true;
}

struct DeviceLine {
  std::string_view model, serial, rest;
  bool available{};
};

/// The first place where " serial=S available=0" stands, S being anything without a blank. Each try begins at or behind
/// the end of the last one's serial, so the line is walked once.
std::optional<DeviceLine> match_device(std::string_view line) {
  constexpr std::string_view serial_key = " serial=", available_key = " available=";
  if (!take_number(line)) return std::nullopt;
  for (std::size_t at = line.find(serial_key); at != std::string_view::npos;) {
    const std::size_t begin = at + serial_key.size();
    const std::size_t end = std::min(line.find(' ', begin), line.size());
    std::string_view rest = line.substr(end);
    if (end > begin && take(rest, available_key) && (rest.starts_with('0') || rest.starts_with('1')))
      return DeviceLine{line.substr(0, at), line.substr(begin, end - begin), rest.substr(1), rest.front() == '1'};
    at = line.find(serial_key, end);
  }
  return std::nullopt;
}

std::string backend_of(std::string_view rest, std::string_view serial) {
  constexpr std::string_view key = " backend=";
  const auto at = rest.find(key);
  if (at == std::string_view::npos)
    return std::string(serial.starts_with(usb_prefix) ? backend_rx888 : backend_sdrplay);
  const std::string_view value = rest.substr(at + key.size());
  return std::string(value.substr(0, value.find(' ')));
}

/// The model without the status words, and what they say.
std::pair<std::string, DeviceStatus> read_model(std::string_view text) {
  std::string model(text);
  DeviceStatus status = DeviceStatus::ready;
  for (const StatusWord& word : status_words) {
    const auto at = model.find(word.text);
    if (at == std::string::npos) continue;
    model.erase(at, word.text.size());
    status = word.status;
  }
  return {std::string(base::trim(model)), status};
}

bool is_rx888(const ListedDevice& device) {
  return device.backend == backend_rx888 || device.serial.starts_with(usb_prefix) || device.model.starts_with("RX-888");
}

class Reader {
 public:
  void read_line(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (take(line, "note: ") || take(line, "Note: ")) return read_note(line);
    if (const auto match = match_device(line)) add(*match);
  }
  DeviceListing take_listing() { return std::move(listing_); }

 private:
  void read_note(std::string_view rest) {
    for (const std::string_view family : {"RX-888", "SDRplay", "RTL-SDR"}) {
      std::string_view text = rest;
      if (take(text, family) && take(text, ": "))
        return listing_.notes.push_back({std::string(family), std::string(text)});
    }
  }

  void add(const DeviceLine& line) {
    ListedDevice device;
    device.serial = line.serial;
    device.backend = backend_of(line.rest, line.serial);
    device.available = line.available;
    std::tie(device.model, device.status) = read_model(line.model);
    if (device.status != DeviceStatus::ready && is_rx888(device))
      return listing_.reports.push_back({device.serial, device.status});
    if (device.status == DeviceStatus::ready && !device.available) device.status = DeviceStatus::busy;
    const auto [place, first] = places_.try_emplace(device.serial, listing_.devices.size());
    if (first)
      listing_.devices.push_back(std::move(device));
    else
      listing_.devices[place->second] = std::move(device);
  }

  DeviceListing listing_;
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

std::string DeviceReport::short_text() const {
  std::string_view port = serial;
  take(port, usb_prefix);
  return fmt::format("RX-888 on {}{}", port, trouble_of(trouble).summary);
}

std::string DeviceReport::long_text() const {
  return fmt::format("RX-888 on {}{}", serial, trouble_of(trouble).advice);
}

DeviceListing parse_device_listing(std::string_view output) {
  Reader reader;
  while (!output.empty()) {
    const std::size_t end = output.find('\n');
    reader.read_line(output.substr(0, end));
    output.remove_prefix(end == std::string_view::npos ? output.size() : end + 1);
  }
  return reader.take_listing();
}

bool is_usable_serial(std::string_view serial) {
  return !serial.empty() && serial.size() <= 64 && std::all_of(serial.begin(), serial.end(), [](char c) {
    return base::is_letter(c) || base::is_digit(c) || c == '-' || c == '_';
  });
}

}  // namespace launcher
