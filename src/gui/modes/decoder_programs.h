// Which columns of the table cannot be decoded because a program is not there. Reads the file system; any thread.
#pragma once

#include <string>

#include "gui/modes/mode_grid.h"

namespace modes_gui {

/// Why a column cannot be used, in the operator's words; empty where its program is found or none is needed. A program
/// is looked for where the profile says (`decoder`, `wspr-decoder`, `js8-decoder`), else on `path`, a search path as in
/// the environment.
std::array<std::string, column_count> missing_programs(const options::Profile& common, const std::string& path);

}  // namespace modes_gui
