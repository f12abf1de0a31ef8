// The check stage: what the options record must be as a whole, and what follows from it.
#pragma once

#include <optional>
#include <string>

#include "options/receiver_options.h"

namespace options {

/// Fills in what is automatic and judges the record, in a fixed order of steps; the first rule broken is thrown as a
/// std::runtime_error, or a CaptureFitError when the channels do not fit the capture.
void check(ReceiverOptions& options);

/// A record of a decoder mode that has been judged but for one question: whether its channels fit the capture.
struct UnfittedCheck {
  launcher::CaptureSettings settings;
  launcher::CaptureNeeds needs;
  /// What check() would throw for the record if its channels did fit.
  std::optional<std::string> refused_later;
};

/// Judges everything else, for a caller who asks about the fit of many sets of channels. Throws what check() throws
/// before it comes to the fit.
UnfittedCheck check_but_fit(ReceiverOptions& options);

}  // namespace options
