#include "sim/command_line.h"

#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"

namespace sim {
namespace {

/// The argument behind an option.
class Arguments {
 public:
  explicit Arguments(const std::vector<std::string_view>& all) : all_(all) {}
  [[nodiscard]] bool more() const { return next_ < all_.size(); }
  std::string_view take() { return all_[next_++]; }
  std::string_view value_of(std::string_view option) {
    if (!more()) throw std::runtime_error(fmt::format("Missing value for {}", option));
    return take();
  }

 private:
  const std::vector<std::string_view>& all_;
  std::size_t next_ = 0;
};

void check_return_wait(std::string_view text) {
  const auto seconds = base::parse_double(text);
  if (!seconds) throw std::runtime_error(fmt::format("Invalid number: {}", text));
  if (*seconds < 0 || *seconds > 30) throw std::runtime_error("--rx888-return-wait must be 0..30 seconds");
}

}  // namespace

Command parse_command_line(const std::vector<std::string_view>& list) {
  Command command;
  bool lists_devices = false;
  for (Arguments arguments(list); arguments.more();) {
    const std::string_view option = arguments.take();
    if (option == "--help" || option == "-h") return {Task::help, {}};
    if (option == "--version") return {Task::version, {}};
    if (option == "--list-devices")
      lists_devices = true;
    else if (option == "--config")
      command.config = arguments.value_of(option);
    else if (option == "--api-library")
      arguments.value_of(option);
    else if (option == "--rx888-return-wait")
      check_return_wait(arguments.value_of(option));
    else if (option != "--no-daemon")
      throw std::runtime_error(fmt::format("Unknown option: {}", option));
  }
  if (!lists_devices && command.config.empty()) throw std::runtime_error("--config FILE or --list-devices is required");
  command.task = lists_devices ? Task::list_devices : Task::receive;
  return command;
}

std::string_view help_text() {
  return "Usage: tarnwick --config FILE [--no-daemon]\n"
         "       tarnwick --list-devices [--api-library PATH] [--rx888-return-wait SECONDS]\n"
         "\n"
         "A simulated receive engine: it hears an invented station and behaves like a real one.\n"
         "\n"
         "  --config FILE   receive with this profile until ended\n"
         "  --no-daemon     stay in the foreground, which it always does\n"
         "  --list-devices  say which receivers are attached\n"
         "  --help, -h      this text\n"
         "  --version       the version\n"
         "\n"
         "TARNWICK_SIM_SCENARIO names a key file that says what the station is like and what goes wrong.\n";
}

}  // namespace sim
