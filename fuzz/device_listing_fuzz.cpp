// What a listing says, in whatever bytes, can be merged into a station that can be written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "launcher/device_merge.h"
#include "options/profile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto listing = launcher::parse_device_listing({reinterpret_cast<const char*>(data), size});
  for (const auto& report : listing.reports)
    if (report.short_text().empty() || report.long_text().empty()) std::abort();
  const options::ReceiverStore saved;
  const auto merged = launcher::merge_devices({}, listing, {saved, {}, 4});
  const auto& station = merged.inventory.station;
  const auto again = options::parse_station(
      options::parse_config_text(options::render_profile(options::render_station(station)), "rendered", true));
  if (again.receivers.size() != station.receivers.size()) std::abort();
  return 0;
}
