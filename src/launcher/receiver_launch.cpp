#include "launcher/receiver_launch.h"

namespace launcher {

void keep_control(ReceiverLaunch& launch, const ReceiverLaunch& running) {
  launch.control_path = running.control_path;
  const auto path = running.profile.find("audio-control");
  if (path == running.profile.end())
    launch.profile.erase("audio-control");
  else
    launch.profile["audio-control"] = path->second;
}

}  // namespace launcher
