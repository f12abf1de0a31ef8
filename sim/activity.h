// How busy a band is: decodes to be expected in one cycle.
#pragma once

#include "sim/schedule.h"

namespace sim {

/// The mean decodes of one cycle of a channel on a busy station, at a local solar time of 0..24 hours. The daily means
/// follow public logs of stations on these bands; low bands live by night, high bands by day.
double busy_decodes(const Channel& channel, double local_hour);

}  // namespace sim
