// Whether a new selection can be had from the receivers as they run, without restarting them. Frequencies in Hz. Any
// thread.
#pragma once

#include <stdexcept>
#include <vector>

#include "launcher/receiver_launch.h"
#include "options/station.h"

namespace launcher {

/// The running receivers cannot take the selection as they run; the text says what would help.
class RetuneRefusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The selection on exactly the receivers that run, in the order of `running`: each with its new channels and centre,
/// at the rate at which it runs. Throws RetuneRefusal.
std::vector<ReceiverLaunch> retune_plan(const options::Station& station, const std::vector<ReceiverLaunch>& running);

/// What "KNOWN=" tells of the known frequencies of a launch: which kinds on which of its bands. Empty: none are
/// decoded.
std::string known_selection_text(const ReceiverLaunch& launch);

}  // namespace launcher
