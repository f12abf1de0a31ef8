// The exact form of what the engine prints and logs.
#pragma once

#include <string>
#include <vector>

#include "sim/schedule.h"
#include "sim/traffic.h"

namespace sim {

/// "FT8 261003_120000 14.074000 MHz: 2 spots; callsigns=K1ABC,W9XYZ": the cycle that began at `start`, with every known
/// sender once. Without a line feed.
std::string summary_line(const Channel& channel, double start, const std::vector<Decode>& decodes);

/// "261003_120000    14.074 Rx FT8    -12  0.2 1234 CQ K1ABC FN42\n", in the columns of WSJT-X.
std::string decode_log_line(const Channel& channel, double start, const Decode& decode);

/// A value of a SIG line in double quotes, with its escapes.
std::string quoted(std::string_view text);

}  // namespace sim
