// A refusal of the planner as an answer.
#pragma once

#include "inspect/answer.h"
#include "inspect/subcommand.h"
#include "launcher/plan_error.h"

namespace inspect {

/// Of kind "plan", with what a control could change.
inline Refusal plan_refusal(const launcher::PlanError& error) {
  Refusal refusal("plan", error.what());
  refusal.details = {{"code", static_cast<int>(error.code)},
                     {"band", json_text(error.band)},
                     {"serial", json_text(error.serial)},
                     {"key", json_text(error.key)},
                     {"value", json_text(error.value)}};
  return refusal;
}

}  // namespace inspect
