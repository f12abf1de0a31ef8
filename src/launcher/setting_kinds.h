// How a changed setting reaches a running engine. Constant data, any thread.
#pragma once

#include <cstdint>
#include <string_view>

#include "launcher/capture/capture.h"

namespace launcher {

enum class SettingKind : std::uint8_t {
  unseen,            ///< the launcher's own, such as the path of the control socket
  live,              ///< told to a running engine with "RADIO SETTING"
  hardware,          ///< told to it with "RADIO SET", from the receiver's card
  selection,         ///< what is received: a retune, where the capture can take it
  restart_receiver,  ///< the receiver needs a new process
  restart_all        ///< everything else is the whole station's
};

/// The kind of a key in a launch's profile.
SettingKind setting_kind(std::string_view key, Family family);

/// Whether a receiver's card sends the key to the running receiver at once.
bool is_sent_at_once(std::string_view key, Family family);

}  // namespace launcher
