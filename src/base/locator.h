// What counts as a Maidenhead locator, wherever one is typed, heard or reported.
#pragma once

#include <string_view>

namespace base {

/// True for 4, 6 or 8 upper-case characters of the form "FN31", "FN31PR" or "FN31PR07": letters A to R, two
/// digits, letters A to X, two digits. Callers fold to upper case first.
bool is_locator(std::string_view word);

}  // namespace base
