// A profile named on the command line.
#pragma once

#include <cstddef>

#include "inspect/subcommand.h"
#include "options/profile.h"

namespace inspect {

/// The profile in an operand. Throws UsageError when it cannot be read as a file, Refusal of kind "file" when a
/// line of it is bad.
options::Profile read_profile_operand(const Arguments& arguments, bool allow_multi, std::size_t index = 0);

}  // namespace inspect
