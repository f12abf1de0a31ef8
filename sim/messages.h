// What stations say, in the words of each mode.
#pragma once

#include <string>

#include "sim/population.h"
#include "sim/random.h"
#include "sim/schedule.h"

namespace sim {

struct Said {
  std::string message;
  bool sender_known = true;
};

/// One transmission of `from` in `mode`; `to` is whom it works when it does not call everybody. `snr` is what it would
/// report, in dB.
Said say(Mode mode, const Station& from, const Station& to, int snr, Random& random);

}  // namespace sim
