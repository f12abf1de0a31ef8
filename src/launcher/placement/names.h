// What groups are called in sentences. Any thread.
#pragma once

#include <string>
#include <vector>

#include "launcher/placement/group.h"

namespace launcher {

/// "20m", "audio receiver voice1", "analysis channel skim" or a frequency as typed.
std::string spoken_name(const Group& group);
/// The same at the start of a sentence.
std::string opening_name(const Group& group);
/// "40m, 30m and 20m".
std::string spoken_names(const std::vector<Group>& groups);

}  // namespace launcher
