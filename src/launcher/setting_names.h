// What the receiver settings are called on the screen.
#pragma once

#include <string_view>

namespace launcher {

/// "Sample rate" for "sample-rate"; a key without a name of its own as it stands.
std::string_view setting_name(std::string_view key);

}  // namespace launcher
