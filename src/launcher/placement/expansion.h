// Turns what one receiver is to carry into its full profile, and reads it, so that any problem shows up before its
// engine is started. Any thread.
#pragma once

#include <cstdint>
#include <vector>

#include "launcher/catalogue/radios.h"
#include "launcher/placement/group.h"
#include "launcher/receiver_launch.h"
#include "options/receiver_options.h"
#include "options/station.h"

namespace launcher {

/// Bit i stands for group i.
using Mask = std::uint64_t;

/// The receiver's profile with these groups, not yet judged. Throws std::runtime_error for a setting that is no
/// receiver's and for an unknown backend.
options::Profile expanded_profile(const options::Profile& common, const options::ReceiverProfile& receiver,
                                  const std::vector<Group>& groups, Mask mask);

/// The same as a launch, judged as its engine will judge it, and against what its model can do. An empty mask is a
/// receiver that carries nothing. Throws CaptureFitError when the capture cannot hold the groups, and
/// std::runtime_error with the operator's words for everything else.
ReceiverLaunch expand(const options::Profile& common, const options::ReceiverProfile& receiver,
                      const std::vector<Group>& groups, Mask mask);

/// An SDRplay receiver's antenna and notches against its model. Throws.
void judge_model(const options::ReceiverOptions& options, const std::string& model);
/// Its RF gain state where it captures. Throws.
void judge_rf_gain(const options::ReceiverOptions& options, const std::string& model, double center);

/// How far above its span a band reaches when a launch chooses its own centre.
inline constexpr double band_margin = 5000;
/// From the smallest low of what is carried to the largest high, margins included; none when nothing is.
double launch_center(const Extent& carried);

/// A model that is not known is let pass.
bool is_known_model(const std::string& model);

/// The HF class of a dongle by its model text, from the operator's and the installed radios.conf, read once.
radios::HfClass dongle_hf_class(const std::string& model);

}  // namespace launcher
