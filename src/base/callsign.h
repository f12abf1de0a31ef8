// What counts as a callsign, wherever one is typed, heard or reported.
#pragma once

#include <string_view>

namespace base {

/// True for an upper-case word of 3 to 32 letters, digits and strokes that reads like a station's call: no stroke at an
/// end, none doubled, and at least one part between strokes of the form prefix (1 to 6 letters or digits, one of them a
/// letter), digit, 1 to 6 letters. Callers fold to upper case first.
bool is_callsign(std::string_view word);

}  // namespace base
