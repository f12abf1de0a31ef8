// What the table of bands shows of the planner: which bands may be ticked, who carries what, and why not.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "launcher/capability.h"
#include "launcher/catalogue/bands.h"
#include "launcher/plan_error.h"
#include "options/station.h"

namespace launcher {

/// One row of the table.
struct BandChoice {
  std::string band;         ///< "20", "70cm"
  bool ticked = false;      ///< it stands in `bands`
  bool allowed = false;     ///< it may be ticked; a ticked one always is, so that it can be unticked
  std::string reason;       ///< why it may not be ticked, or what keeps a ticked one from being placed; else empty
  std::string assigned;     ///< the serial that it is pinned to, listed or not; empty is Automatic
  std::string carrier;      ///< the serial of the receiver that carries it; empty without a plan
  bool lacks_mode = false;  ///< only a mode that it has would have to be ticked
  std::optional<PlanError> refusal;  ///< what stands against adding it to a selection that can be placed
};

/// One ticked receiver, in ascending order of serial.
struct ReceiverChoice {
  std::string serial;
  std::string label;                ///< "{model} · {serial}"
  std::vector<std::string> groups;  ///< what it carries, in order of frequency: "40", "@voice1", a typed frequency
  double rate{}, span{};            ///< Hz, of its launch; of its settings where it carries nothing
  std::string state;                ///< "Not needed for the ticked bands", "Cannot be used: …"; empty in use
  CaptureCapability capability;
};

struct BandChoices {
  std::optional<PlanError> error;  ///< what stands against the selection as a whole
  std::vector<PlanNote> notes;
  std::array<BandChoice, band_presets.size()> bands;  ///< in the order of the band table
  std::vector<ReceiverChoice> receivers;
};

/// Never throws: what cannot be planned is told in `error` and the reasons. Answers are remembered for a minute. Takes
/// up to some tens of milliseconds on a large station. Any thread.
BandChoices band_choices(const options::Station& station);
/// The same, computed anew.
BandChoices band_choices_uncached(const options::Station& station);

}  // namespace launcher
