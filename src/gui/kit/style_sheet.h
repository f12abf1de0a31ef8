// data/style.css, put into the program by the build.
#pragma once

namespace kit {

extern const char* const style_sheet;

}  // namespace kit
