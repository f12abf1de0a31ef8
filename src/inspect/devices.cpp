// `devices`: what a device listing of the receive engine says.
#include "inspect/answer.h"
#include "inspect/input.h"
#include "inspect/subcommand.h"
#include "launcher/device_listing.h"

namespace inspect {
namespace {

namespace json = boost::json;

void run(const Arguments& arguments) {
  Input input(arguments.operand_count() > 0 ? std::optional(arguments.operand(0, "FILE")) : std::nullopt);
  const launcher::DeviceListing listing = launcher::parse_device_listing(input.read_all());
  json::array devices, notes, reports;
  for (const auto& device : listing.devices)
    devices.push_back({{"serial", json_text(device.serial)},
                       {"model", json_text(device.model)},
                       {"backend", json_text(device.backend)},
                       {"available", device.available}});
  for (const auto& note : listing.notes)
    notes.push_back({{"family", note.family}, {"text", json_text(note.text)}});
  for (const auto& report : listing.reports)
    reports.emplace_back(json_text(report.short_text()));
  print_answer({{"devices", std::move(devices)}, {"notes", std::move(notes)}, {"reports", std::move(reports)}});
}

}  // namespace

extern const Subcommand devices_subcommand{
    "devices",
    "[FILE]",
    "The receivers, notes and reports of a device listing, as the engine prints it for --list-devices.",
    {},
    1,
    run};

}  // namespace inspect
