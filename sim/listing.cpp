#include "sim/listing.h"

#include <array>
#include <csignal>
#include <cstdio>
#include <unistd.h>

#include <fmt/format.h>

#include "sim/random.h"
#include "sim/stop_signal.h"

namespace sim {
namespace {

struct Family {
  std::string_view backend;
  std::string_view name;
};
constexpr std::array<Family, 3> families{{{"sdrplay", "SDRplay"}, {"rx888", "RX-888"}, {"rtl-sdr", "RTL-SDR"}}};

std::string_view family_name(std::string_view backend) {
  for (const Family& family : families) {
    if (family.backend == backend) return family.name;
  }
  return families.front().name;
}

std::string_view status_word(Presence presence) {
  switch (presence) {
    case Presence::needs_firmware:
      return " (needs firmware)";
    case Presence::not_responding:
      return " (not responding)";
    default:
      return "";
  }
}

/// A device that cannot tell its serial is known by the USB port that it is on.
std::string listed_serial(const Receiver& receiver, std::size_t index) {
  const bool mute = receiver.presence == Presence::needs_firmware || receiver.presence == Presence::not_responding;
  return mute ? fmt::format("usb-2-{}", index + 1) : receiver.serial;
}

std::string note(const Receiver& receiver, const std::string& serial) {
  const auto text = [&]() -> std::string {
    switch (receiver.presence) {
      case Presence::busy:
        return fmt::format(
            "The {} {} is in use by another program. Close other SDR programs and press Refresh receivers.",
            family_name(receiver.backend), serial);
      case Presence::needs_firmware:
        return fmt::format("The {} on {} has no firmware.", receiver.model, serial);
      case Presence::not_responding:
        return fmt::format("The {} on {} does not answer.", receiver.model, serial);
      case Presence::ready:
        break;
    }
    return {};
  }();
  return text.empty() ? text : fmt::format("note: {}: {}\n", family_name(receiver.backend), text);
}

[[noreturn]] void hang() {
  for (;;)
    pause();
}

std::string rubbish() {
  std::string bytes;
  Random random(hash_text("rubbish"));
  for (int i = 0; i < 2000; ++i)
    bytes += static_cast<char>(random.below(256));
  return bytes + "\n: serial= available=7\n0 RSPdx serial available\n";
}

}  // namespace

std::string device_listing(const std::vector<Receiver>& receivers) {
  std::string lines;
  std::string notes;
  for (std::size_t i = 0; i < receivers.size(); ++i) {
    const Receiver& receiver = receivers[i];
    const std::string serial = listed_serial(receiver, i);
    const std::string backend = receiver.backend == "sdrplay" ? "" : " backend=" + receiver.backend;
    lines += fmt::format("{}: {}{} serial={} available={}{}\n", i, receiver.model, status_word(receiver.presence),
                         serial, receiver.presence == Presence::ready ? 1 : 0, backend);
    notes += note(receiver, serial);
  }
  return lines + notes;
}

int list_devices(const Scenario& scenario) {
  usleep(static_cast<useconds_t>(scenario.listing_delay * 1e6));
  if (scenario.listing_fault == ListingFault::hang) hang();
  const bool garbled = scenario.listing_fault == ListingFault::rubbish;
  std::string text = garbled ? rubbish() : device_listing(scenario.receivers);
  if (scenario.listing_fault == ListingFault::usb_dead)
    text += "usb 2-1: device descriptor read/8, error -110\n";  // as the kernel has it, which the listing repeats
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
  if (scenario.listing_fault == ListingFault::die) std::raise(SIGKILL);
  return scenario.listing_fault == ListingFault::exit ? scenario.listing_status : 0;
}

}  // namespace sim
