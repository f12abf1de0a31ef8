// The names of the files that belong to one session of receivers.
#pragma once

#include <string>
#include <sys/types.h>

namespace receiver {

/// Composes paths; creates nothing. All names carry the launcher's process id, so two launchers never share one.
class SessionFiles {
 public:
  SessionFiles(std::string config_directory, std::string state_directory, pid_t pid);

  /// "{config}/session-{pid}-{index}.conf": the profile of the receiver at `index` in plan order, as first started.
  [[nodiscard]] std::string first_profile(size_t index) const;
  /// "{config}/session-{pid}-r{count}.conf": the profile of a later start. The count rises with each call and never
  /// repeats, so a new file never collides with one that a dying process may still read.
  [[nodiscard]] std::string next_profile();
  /// "{state}/audio-control/audio-{pid}-{index}.sock"; the engine creates it.
  [[nodiscard]] std::string control_socket(size_t index) const;

 private:
  std::string config_directory_;
  std::string state_directory_;
  pid_t pid_;
  unsigned count_ = 0;
};

}  // namespace receiver
