// The requests to a running engine as text. Frequencies in Hz, written so that they read back as the same double. What
// cannot be written throws std::runtime_error with the operator's words. Any thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/receiver_launch.h"
#include "receiver/apply_plan.h"
#include "receiver/live_pairs.h"

namespace receiver {

inline constexpr std::string_view meter_request = "RADIO METER";
inline constexpr std::string_view radio_status_request = "RADIO STATUS";
inline constexpr std::string_view status_request = "STATUS";

/// "RADIO SET gain-reduction=40,lna-state=2".
std::string radio_set_request(const Settings& settings);
/// What can be told a running engine: without other keys, and values that would break the list.
Settings told_settings(const Settings& settings);
/// "RADIO SETTING decode-depth=3", of what can be told; nothing left throws.
std::string setting_request(const Settings& settings);

enum class RetuneStep : std::uint8_t { check, apply };
/// `known` is what is decoded on known frequencies, empty for nothing.
std::string retune_request(RetuneStep step, double center, const std::vector<launcher::LaunchChannel>& channels,
                           const std::string& known);

/// A listening channel's specification, or its id.
std::string add_request(const std::string& specification);
std::string set_request(const std::string& specification);
std::string remove_request(const std::string& id);
/// The spectrum of a channel between two limits.
std::string spectrum_request(const std::string& id, double lower, double upper);

/// Sends hardware settings and returns what the engine says it applied, judged. Throws. Any thread.
Settings send_radio_set(const Transport& transport, const std::string& path, const Settings& settings);

}  // namespace receiver
