#include "receiver/device_watch.h"

#include <exception>
#include <thread>
#include <utility>

#include <fmt/format.h>

#include "launcher/catalogue/receiver_models.h"
#include "receiver/sharing_holds.h"

namespace receiver {
namespace {

std::string summary(std::size_t count) {
  return fmt::format("Checked {} {}", count, count == 1 ? "receiver" : "receivers");
}

std::string_view note_prefix(DiscoveryCause cause) {
  return cause == DiscoveryCause::stopped ? "Receiver check: " : "Device discovery: ";
}

bool is_rx888(const options::ReceiverProfile& receiver) {
  const auto backend = receiver.settings.find("backend");
  return backend != receiver.settings.end() && backend->second == launcher::backend_rx888;
}

}  // namespace

DeviceWatch::DeviceWatch(DeviceWatchHooks hooks, OutsidePrograms programs, const DeviceTiming& timing)
    : hooks_(std::move(hooks)), programs_(std::move(programs)), timing_(timing) {}

DeviceWatch::~DeviceWatch() {
  alive_.end();
}

void DeviceWatch::begin_snapshots() {
  take_snapshot();
  snapshots_ = base::Timer::repeating(timing_.snapshot_period, [this] { take_snapshot(); });
}

void DeviceWatch::take_snapshot() {
  base::run_in_background(
      alive_.watch(), [programs = programs_] { return receivers_held_by_sharing(programs); },
      [this](const base::Outcome<std::set<std::string>>& held) {
        if (!held.value || *held.value == held_) return;
        held_ = *held.value;
        hooks_.changed();
      });
}

void DeviceWatch::refresh(DiscoveryCause cause) {
  if (busy() || hooks_.occupied()) return hooks_.report("Busy with another receiver operation; try again shortly");
  DiscoveryRequest request;
  request.engine = engine_;
  const options::Profile common = hooks_.station().common;
  if (const auto library = common.find("api-library"); library != common.end()) request.api_library = library->second;
  request.timeout = timing_.listing_limit;
  if (cause == DiscoveryCause::recovered) request.return_wait = timing_.return_wait;
  discovery_.start(request, [this, cause](const DiscoveryResult& result) { ended(cause, result); });
  hooks_.changed();
}

void DeviceWatch::ended(DiscoveryCause cause, const DiscoveryResult& result) {
  ended_once_ = true;
  failed_ = result.failure.has_value();
  if (failed_)
    take_failure(*result.failure);
  else
    take_listing(cause, result.listing);
  if (says_usb_is_dead(result.output)) suspect_dead_controller();
  hooks_.changed();
}

void DeviceWatch::take_failure(const DiscoveryFailure& failure) {
  status_text_ = fmt::format("Check failed {} (see Logs)", failure.reason);
  hooks_.report(failure.message);
  if (!failure.advice.empty()) hooks_.report(failure.advice);
}

void DeviceWatch::take_listing(DiscoveryCause cause, const launcher::DeviceListing& listing) {
  const launcher::MergedDevices merged = launcher::merge_devices(
      {hooks_.station(), statuses_}, listing, {hooks_.saved(), hooks_.running(), std::thread::hardware_concurrency()});
  statuses_ = merged.inventory.statuses;
  hooks_.take(merged.inventory.station);
  for (const std::string& line : merged.log)
    hooks_.report(line);
  for (const auto& note : listing.notes)
    hooks_.report(fmt::format("{}{}", note_prefix(cause), note.text));
  for (const auto& report : listing.reports)
    hooks_.report(report.long_text());
  const char* words = listing.devices.empty()
                          ? "No local SDRplay receivers found. Check its API service."
                          : "Device list refreshed. Busy receivers are shown without interrupting reception.";
  hooks_.report(words);
  status_text_ = fmt::format("{}\n{}", summary(merged.checked), words);
  for (const std::string& report : merged.reports)
    status_text_ += "\n" + report;
  remember_controller();
}

// --- The RX-888 off USB ---

void DeviceWatch::remember_controller() {
  std::set<std::string> seen;
  for (const auto& receiver : hooks_.station().receivers)
    if (is_rx888(receiver) && receiver.available) seen.insert(receiver.serial);
  if (seen.empty()) return;
  base::run_in_background(
      alive_.watch(), [place = programs_.usb_devices] { return usb_controllers(place); },
      [this, seen](const base::Outcome<UsbControllers>& controllers) {
        if (!controllers.value) return;
        for (const std::string& serial : seen)
          if (const auto found = controllers.value->find(serial); found != controllers.value->end()) {
            rx888_controller_ = found->second;
            reset_suggested_ = false;
          }
      });
}

void DeviceWatch::hear(std::string_view line) {
  if (!rx888_controller_.empty() && says_usb_is_dead(line)) suspect_dead_controller();
}

void DeviceWatch::suspect_dead_controller() {
  if (rx888_controller_.empty() || resetting_ || std::exchange(reset_suggested_, true)) return;
  hooks_.report(reset_needed_text(rx888_controller_));
  base::run_in_background(
      alive_.watch(),
      [place = programs_.usb_devices, controller = rx888_controller_] { return plan_reset(place, controller); },
      [this](const base::Outcome<ControllerReset>& reset) {
        if (reset.value) ask_for_reset(*reset.value);
      });
}

void DeviceWatch::ask_for_reset(const ControllerReset& reset) {
  const auto watch = alive_.watch();
  hooks_.ask(
      reset_question(reset),
      [this, watch, controller = reset.controller] {
        if (!watch.expired()) this->reset(controller);
      },
      [this, watch] {
        if (!watch.expired())
          hooks_.report("USB controller reset declined. Press Refresh receivers after fixing it another way.");
      });
}

void DeviceWatch::reset(const std::string& controller) {
  try {
    reset_process_ = spawn(reset_command(programs_, controller));
  } catch (const std::exception& error) {
    return hooks_.report(fmt::format("USB controller reset failed: {}", error.what()));
  }
  resetting_ = true;
  reset_watch_ = ExitWatch(reset_process_.get(), [this](bool done, const std::string&) { reset_ended(done); });
  hooks_.changed();
}

void DeviceWatch::reset_ended(bool done) {
  resetting_ = false;
  reset_process_.reset();
  if (!done) {
    hooks_.report("USB controller reset failed. Press Refresh receivers after fixing it another way.");
    return hooks_.changed();
  }
  refresh(DiscoveryCause::recovered);
}

}  // namespace receiver
