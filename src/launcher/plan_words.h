// The sentences and the one cure that the screen offers for a selection that cannot be placed. Pure; any thread.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "launcher/band_choices.h"
#include "launcher/device_status.h"

namespace launcher {

/// A button that cures what a PlanError or PlanNote tells.
struct PlanFix {
  enum class Kind : std::uint8_t { pin, receiver_setting, open_sdr_config, open_audio_receivers };
  Kind kind{};
  std::string label;   ///< "Set 20m to Automatic", "Clear Capture center", "Open SDR Config", …
  std::string group;   ///< pin: the group that returns to Automatic
  std::string serial;  ///< receiver_setting: whose
  std::string key;     ///< receiver_setting: what is set to Automatic
  bool operator==(const PlanFix&) const = default;
};

/// The cure of what stands against the selection; nullopt when no single button cures it.
std::optional<PlanFix> plan_fix(const PlanError& error, const options::Station& station);
/// The cure for the first band that cannot be added, or else for a note; nullopt when there is none.
std::optional<PlanFix> choices_fix(const BandChoices& choices, const options::Station& station);
/// The station with the fix applied: what pressing the button changes.
options::Station apply_fix(options::Station station, const PlanFix& fix);

/// What stands against the selection. A receiver that cannot be used because the sharing service has it is told as
/// that, and not as one that is absent.
std::string error_text(const PlanError& error, const options::Station& station, const DeviceStatuses& statuses);

/// The lines of the notice under the bands: what stands against the selection, or "160m and 20m cannot be added: …" for
/// each reason, then the ticked receivers that the sharing service holds and the notes; "Ready. Selected bands fit {n}
/// receiver(s)." when there is nothing to say.
std::vector<std::string> notice_lines(const BandChoices& choices, const options::Station& station,
                                      const DeviceStatuses& statuses);
/// The tooltip of a band's row.
std::string band_tooltip(const BandChoice& band, const BandChoices& choices);

/// "20" gives "20m", "@voice1" "audio receiver voice1" or "analysis channel voice1", a typed frequency itself.
std::string group_name(const std::string& group, const options::Station& station);

}  // namespace launcher
