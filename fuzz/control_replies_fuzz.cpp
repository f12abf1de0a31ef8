// What a running engine answers, and the list of settings: whatever comes must be read or refused.
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

#include "receiver/control_replies.h"
#include "receiver/live_pairs.h"

namespace {

template <typename Parse>
void read_or_refuse(const Parse& parse) {
  try {
    (void)parse();
  } catch (const std::runtime_error&) {
    // Refused in words.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view reply(reinterpret_cast<const char*>(data), size);
  read_or_refuse([reply] { return receiver::parse_meter(reply); });
  read_or_refuse([reply] { return receiver::parse_spectrum(reply); });
  read_or_refuse([reply] { return receiver::parse_status(reply); });
  read_or_refuse([reply] { return receiver::parse_live_pairs(reply); });
  return 0;
}
