// The launcher's look: one built-in style sheet over whatever theme the desktop has.
#pragma once

#include <string>

namespace kit {

/// Asks for the toolkit's dark variant and loads a style sheet for the whole screen, above the desktop's theme and the
/// user's own style file, scaled as ui_scale says. Once, before any widget exists. Throws
/// std::runtime_error("Theme: {message}") when the sheet does not parse.
void load_theme(const std::string& css);
/// The same with the built-in sheet, data/style.css.
void load_theme();

}  // namespace kit
