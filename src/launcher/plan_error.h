// Why a selection cannot be received, in the operator's words and as what a control could change. Plain values; any
// thread.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace launcher {

/// What keeps a selection from being placed. The values are part of what tarnwick-inspect answers.
enum class PlanCode : std::uint8_t {
  other = 0,              ///< settings that no placement could cure
  no_receiver = 1,        ///< none ticked
  nothing_selected = 2,   ///< no band, frequency or listening channel
  no_mode = 3,            ///< none ticked
  missing_frequency = 4,  ///< a band has none for the ticked modes
  absent_receiver = 5,    ///< a ticked receiver is absent or busy
  unusable_receiver = 6,  ///< a setting of it makes it so
  narrowed_capture = 7,   ///< a setting that narrows a capture blocks the selection
  out_of_reach = 8,       ///< no ticked receiver can take the group
  assignment = 9,         ///< a pin blocks the plan
  consumers = 11,         ///< listening or analysis channels need captures of their own
  capacity = 12,          ///< more receivers are needed
  too_many_groups = 13,
  audio_mode = 16  ///< takes exactly one receiver
};

/// The selection cannot be placed. The fields that say nothing in a case are empty.
class PlanError : public std::runtime_error {
 public:
  PlanError(PlanCode what, const std::string& text) : std::runtime_error(text), code(what) {}

  PlanCode code;
  std::string band;    ///< the group at fault: "20", "@voice1", or a typed frequency
  std::string serial;  ///< the receiver at fault
  std::string key;     ///< the profile key to change
  std::string value;   ///< its value now

  [[nodiscard]] std::string text() const { return what(); }
};

/// A remark that does not stop the plan.
struct PlanNote {
  PlanCode code{};
  std::string band, serial, key, value;  ///< as in PlanError
  std::string text;
  bool operator==(const PlanNote&) const = default;
};

}  // namespace launcher
