// What one engine is started with.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "launcher/capture/capture.h"

namespace options {
struct ReceiverOptions;
}

namespace launcher {

/// A dial frequency with a digital mode, as the engine decodes it.
struct LaunchChannel {
  std::string mode;    ///< "FT8", "JS8-FAST", ...
  double frequency{};  ///< Hz
  bool operator==(const LaunchChannel&) const = default;
};

/// One receiver of a plan: its expanded single-receiver profile and what reading that gave.
struct ReceiverLaunch {
  std::string name;                            ///< the serial; the key of all per-receiver maps
  std::string model;                           ///< "RSPdx"
  std::map<std::string, std::string> profile;  ///< what the engine gets, as key = value lines
  std::string control_path;                    ///< its control socket, filled at the start
  std::vector<LaunchChannel> channels;         ///< empty when it only carries audio
  bool writes_decodes = false;                 ///< it appends to decode_path
  std::string decode_path;                     ///< ALL.TXT of this receiver
  bool virtual_audio = false;                  ///< it feeds the standard virtual decoder input
  std::string sink;                            ///< its custom audio sink, empty for none
  std::vector<std::string> groups;  ///< what it carries, in order of frequency: "20", "@voice1", a typed frequency
  Capture capture;                  ///< in Hz
  std::shared_ptr<const options::ReceiverOptions> options;  ///< the profile as read; null in a launch made by hand

  /// "{model} · {name}": the key of lines, cards and journals.
  [[nodiscard]] std::string label() const { return model + " · " + name; }
};

/// Gives a launch this profile, and all that follows from reading it: channels, capture, files. Throws the option
/// check's std::runtime_error; then nothing has changed.
void take_profile(ReceiverLaunch& launch, std::map<std::string, std::string> profile);

/// The launch that replaces a running one is reached where that one is.
void keep_control(ReceiverLaunch& launch, const ReceiverLaunch& running);

}  // namespace launcher
