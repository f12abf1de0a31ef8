// Which receivers the sharing service has in its hands, as far as the system lets an ordinary account see.
#pragma once

#include <set>
#include <string>

#include "receiver/outside_programs.h"

namespace receiver {

/// The names by which a listing may call them: the serials of the USB devices that a process of the service has open,
/// their positions ("usb-2-1", "rtl-usb-2-1"), and the serials in its command line. A process is of the service when
/// its program is named "corvane" or "corvane-…". Processes that cannot be looked into count as holding nothing. Reads
/// a few small files for each process: off the main thread.
std::set<std::string> receivers_held_by_sharing(const OutsidePrograms& programs);

}  // namespace receiver
