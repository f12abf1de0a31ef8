// The selection of a station as groups to be placed, and what can be wrong with it before anything is placed. Throws
// PlanError, or std::runtime_error with the operator's words. Any thread.
#pragma once

#include <string>
#include <vector>

#include "launcher/placement/group.h"

namespace launcher {

inline constexpr std::size_t most_groups = 32;
inline constexpr std::size_t most_ticked_receivers = 16;

/// `bands`, as typed; empty when there are none.
std::vector<std::string> selected_bands(const options::Profile& common);

/// No band decodes anything: modes are needed and none is ticked.
void judge_modes(const options::Profile& common);
/// Whether only known frequencies are decoded, so that a band without one would decode nothing.
bool only_known_frequencies(const options::Profile& common);
/// Whether a band has such a frequency among the ticked kinds.
bool has_known_frequency(const options::Profile& common, const std::string& band);
/// "{band} has no known-frequency channel for the ticked modes. …", without its last words.
std::string missing_known_advice(const std::string& band);
/// "60m has no JS8 frequency. Tick FT8 or FT4", without its last words; empty when the band lacks no ticked mode.
std::string missing_mode_advice(const options::Profile& common, const std::string& band);

/// Everything selected, in ascending order of frequency; never empty.
std::vector<Group> selected_groups(const options::Profile& common);
/// No group, or too many of them.
void judge_number(const options::Profile& common, std::size_t groups);
/// Ascending by `low`, in the given order among equals.
void sort_groups(std::vector<Group>& groups);

}  // namespace launcher
