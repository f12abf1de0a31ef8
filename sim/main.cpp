// The simulated receive engine.
#include <cstdlib>
#include <exception>
#include <stdexcept>

#include <fmt/format.h>

#include "options/command_line.h"
#include "sim/engine.h"
#include "sim/listing.h"

namespace {

sim::Scenario scenario_of_environment() {
  const char* path = std::getenv("TARNWICK_SIM_SCENARIO");
  return sim::load_scenario(path ? path : "");
}

int receive(const options::ReceiverOptions& options) {
  sim::StopSignal stop;
  sim::Output output(stop);
  const sim::Scenario scenario = scenario_of_environment();
  return sim::Engine(scenario, options, stop, output).run();
}

int perform(const options::ReceiverOptions& options) {
  const options::Requests& requests = options.requests;
  if (requests.help) {
    fmt::print(
        "{}\nThe receivers are simulated. TARNWICK_SIM_SCENARIO names a key file that says what the station is like.\n",
        options::help_text("tarnwick"));
    return 0;
  }
  if (requests.version) {
    fmt::print("tarnwick " TARNWICK_VERSION " (simulated station)\n");
    return 0;
  }
  if (requests.list_devices) return sim::list_devices(scenario_of_environment());
  if (requests.kill || requests.list_frequencies || options.daemon.enabled)
    throw std::runtime_error("the simulated engine only receives in the foreground and lists devices");
  return receive(options);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return perform(options::parse(argc, argv));
  } catch (const sim::ReaderGone&) {
    return 0;  // the launcher has gone, and nobody is left to tell
  } catch (const std::exception& error) {
    fmt::print(stderr, "tarnwick: {}\n", error.what());
    return 1;
  }
}
