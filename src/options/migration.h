// Moves an installation of the program's former name to where this one looks.
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include "options/paths.h"

namespace options {

/// Runs before anything reads a file. Every step is silent: what cannot be moved or rewritten stays as it was. A second
/// run finds nothing to do. Does nothing when `user` (the effective user) is root, for whom nothing may be written.
void migrate_former_name(const Environment& environment, uid_t user = ::geteuid()) noexcept;

}  // namespace options
