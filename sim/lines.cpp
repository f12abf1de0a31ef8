#include "sim/lines.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/text.h"
#include "base/time_text.h"

namespace sim {

std::string summary_line(const Channel& channel, double start, const std::vector<Decode>& decodes) {
  std::vector<std::string> senders;
  for (const Decode& decode : decodes) {
    const bool listed = std::find(senders.begin(), senders.end(), decode.sender) != senders.end();
    if (!decode.sender.empty() && !listed) senders.push_back(decode.sender);
  }
  return fmt::format("{} {} {:.6f} MHz: {} spots; callsigns={}", launcher::digital_mode_text(channel.mode),
                     base::stamp_time(start), channel.frequency / 1e6, decodes.size(), base::join(senders, ","));
}

std::string decode_log_line(const Channel& channel, double start, const Decode& decode) {
  return fmt::format("{}{:10.3f} Rx {:<6} {:3d} {:4.1f} {:4d} {}\n", base::stamp_time(start), channel.frequency / 1e6,
                     launcher::digital_mode_text(channel.mode), decode.snr, decode.dt, decode.audio, decode.message);
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\')
      result += {'\\', c};
    else if (c == '\n')
      result += "\\n";
    else if (byte < 0x20 || byte == 0x7f)
      result += fmt::format("\\x{:02x}", byte);
    else
      result += c;
  }
  return result + '"';
}

}  // namespace sim
