// Thousands of random sequences of everything that can happen to receivers while their settings change.
// TARNWICK_MODEL_SEQUENCES says how many, TARNWICK_MODEL_SEED where to begin.
#include "gui/apply/apply_model.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "base/numbers.h"

namespace gui::testing_apply {
namespace {

unsigned from_environment(const char* name, unsigned otherwise) {
  const char* const text = std::getenv(name);
  return text == nullptr ? otherwise : static_cast<unsigned>(base::parse_unsigned(text).value_or(otherwise));
}

TEST(ApplyModel, WhateverHappensWhatIsSavedIsTrue) {
  const unsigned first = from_environment("TARNWICK_MODEL_SEED", 1);
  const unsigned sequences = from_environment("TARNWICK_MODEL_SEQUENCES", 200);
  unsigned accepted = 0, bad = 0;
  for (unsigned seed = first; seed < first + sequences && bad < 5; ++seed) {
    ApplyModel model(seed);
    if (const std::string wrong = model.run(); !wrong.empty()) {
      ADD_FAILURE() << "TARNWICK_MODEL_SEED=" << seed << ": " << wrong;
      ++bad;
    }
    accepted += model.accepted();
  }
  EXPECT_GT(accepted, sequences / 2) << "the sequences try nothing";
}

}  // namespace
}  // namespace gui::testing_apply
