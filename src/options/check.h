// The check stage: what the options record must be as a whole, and what follows from it.
#pragma once

#include "options/receiver_options.h"

namespace options {

/// Fills in what is automatic and judges the record, in a fixed order of steps; the first rule broken is thrown as a
/// std::runtime_error, or a CaptureFitError when the channels do not fit the capture.
void check(ReceiverOptions& options);

}  // namespace options
