// A station's common settings as one of its receivers has them. Pure; any thread.
#pragma once

#include "launcher/capture/capture.h"
#include "options/station.h"

namespace launcher {

/// The common settings with the receiver's own over them, where an empty own value takes the common one away; without
/// the keys that only other families' engines take, and without what a plan decides: bands, frequencies, listening and
/// analysis channels, the number of decoders. Ready to be given what the receiver is to carry. Throws
/// std::runtime_error for a setting that is no receiver's and for an unknown backend.
options::Profile receiver_overlay(const options::Profile& common, const options::ReceiverProfile& receiver);

/// A profile without the keys that only the engines of other families take.
options::Profile without_foreign_keys(options::Profile profile, Family family);

/// The value of a key, as it stands in the profile, or another one when it is missing.
std::string_view value_or(const options::Profile& profile, const char* key, const char* fallback);

/// Whether a key is a listening or an analysis channel: "audio.{id}" or "analysis.{id}".
bool is_consumer_key(std::string_view key);

}  // namespace launcher
