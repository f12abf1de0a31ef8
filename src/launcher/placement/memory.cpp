#include "launcher/placement/memory.h"

#include <fmt/format.h>

namespace launcher {

std::string memory_key(const options::Station& station) {
  std::string text;
  for (const auto& [key, value] : options::render_station(station))
    text += fmt::format("{}={}\n", key, value);
  for (const options::ReceiverProfile& receiver : station.receivers)
    text += fmt::format("{}:{}\n", receiver.serial, receiver.available ? 1 : 0);
  return text;
}

}  // namespace launcher
