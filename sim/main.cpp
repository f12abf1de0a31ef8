// The simulated receive engine.
#include <cstdlib>
#include <exception>
#include <vector>

#include <fmt/format.h>

#include "sim/command_line.h"
#include "sim/engine.h"
#include "sim/listing.h"

namespace {

sim::Scenario scenario_of_environment() {
  const char* path = std::getenv("TARNWICK_SIM_SCENARIO");
  return sim::load_scenario(path ? path : "");
}

int receive(const std::string& config) {
  sim::StopSignal stop;
  sim::Output output(stop);
  const sim::Profile profile = sim::load_profile(config);
  const sim::Scenario scenario = scenario_of_environment();
  return sim::Engine(scenario, profile, stop, output).run();
}

int perform(const sim::Command& command) {
  switch (command.task) {
    case sim::Task::help:
      fmt::print("{}", sim::help_text());
      return 0;
    case sim::Task::version:
      fmt::print("tarnwick " TARNWICK_VERSION " (simulated station)\n");
      return 0;
    case sim::Task::list_devices:
      return sim::list_devices(scenario_of_environment());
    case sim::Task::receive:
      break;
  }
  return receive(command.config);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return perform(sim::parse_command_line({argv + 1, argv + argc}));
  } catch (const sim::ReaderGone&) {
    return 0;  // the launcher has gone, and nobody is left to tell
  } catch (const std::exception& error) {
    fmt::print(stderr, "tarnwick: {}\n", error.what());
    return 1;
  }
}
