// The simulated station reads logs and decoder output that anybody may have written.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "sim/recordings.h"
#include "sim/replay.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const sim::Channel channels[] = {{14074000, sim::Mode::ft8}, {14095600, sim::Mode::wspr}, {14078000, sim::Mode::js8}};
  const sim::Replay replay(bytes, {channels, channels + 3}, 1.79e9);
  for (const auto& channel : channels)
    static_cast<void>(replay.cycle(channel, 1.79e9));
  static_cast<void>(sim::parse_jt9(bytes));
  return 0;
}
