// The option scan and check: a command line, one word a line. Reading a file named on it is left out.
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "base/text.h"
#include "options/command_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (text.find("--config") != std::string_view::npos) return 0;
  try {
    const options::ReceiverOptions options = options::parse(base::split(text, '\n'));
    // What passed has a capture with everything in it, unless it asks for something else.
    const bool reception = options.wideband() && !options.requests.help && !options.requests.version &&
                           !options.requests.kill && !options.requests.list_devices &&
                           !options.requests.list_frequencies;
    if (reception && !(options.reception.center_frequency >= 1000 && options.reception.center_frequency <= 2.1e9))
      __builtin_trap();
    if (reception && !(options.capture.filter_bandwidth > 0)) __builtin_trap();
    for (const auto& channel : options.reception.channels)
      if (reception && !options::lies_in_capture({channel.frequency, channel.frequency + options.hardware.bandwidth},
                                                 options.capture.center, options.capture.filter_bandwidth + 10))
        __builtin_trap();
  } catch (const std::runtime_error&) {  // refused, in words
  }
  return 0;
}
