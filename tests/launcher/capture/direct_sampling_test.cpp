#include "launcher/capture/direct_sampling.h"

#include <gtest/gtest.h>

namespace {

using radios::HfClass;

struct Case {
  const char* setting;
  HfClass hf;
  double center;
  const char* result;  ///< the setting to run with, or the refusal
};

TEST(DirectSampling, FollowsSettingDongleAndBand) {
  const char* hf_only =
      "direct sampling covers HF only (up to 28.8 MHz); turn Direct sampling off in SDR Config for 6 m and up";
  const char* both =
      "HF and 6 m or up do not fit one RTL-SDR capture: direct sampling takes HF (up to 28.8 MHz), the tuner 24 MHz "
      "and "
      "up";
  const char* needs = "HF on the V3 needs direct sampling; set Direct sampling to Automatic in SDR Config";
  const char* converter = "HF needs an upconverter in front of the V3";
  const Case cases[] = {
      {"auto", HfClass::direct_q, 14.1e6, "q"},       {"auto", HfClass::unknown, 14.1e6, "q-check"},
      {"auto", HfClass::upconverter, 14.1e6, "off"},  {"auto", HfClass::none, 14.1e6, converter},
      {"auto", HfClass::none, 28.1e6, "off"},         {"auto", HfClass::direct_q, 146e6, "off"},
      {"auto", HfClass::unknown, 146e6, "off"},       {"auto", HfClass::direct_q, 27.6e6, "q"},  // reaches 28.8 MHz
      {"auto", HfClass::direct_q, 27.6e6 + 1, "off"},  // above 24 MHz the tuner takes over
      {"q", HfClass::upconverter, 14.1e6, "q"},       {"i", HfClass::none, 14.1e6, "i"},
      {"q-check", HfClass::unknown, 50.3e6, hf_only}, {"off", HfClass::unknown, 14.1e6, needs},
      {"off", HfClass::direct_q, 25.2e6, "off"},      {"off", HfClass::direct_q, 25.2e6 - 1, needs},
      {"off", HfClass::none, 14.1e6, converter},      {"off", HfClass::upconverter, 14.1e6, "off"},
  };
  for (const Case& c : cases) {
    std::string result;
    try {
      result = launcher::choose_direct_sampling(c.setting, c.hf, {c.center, 2.4e6, 2.4e6}, "V3");
    } catch (const launcher::CaptureFitError& error) {
      result = error.what();
    }
    EXPECT_EQ(result, c.result) << c.setting << " at " << c.center;
  }
  const auto wide = [&](const char* model) {
    try {
      (void)launcher::choose_direct_sampling("off", HfClass::unknown, {26e6, 6e6, 6e6}, model);
    } catch (const launcher::CaptureFitError& error) {
      return std::string(error.what());
    }
    return std::string();
  };
  EXPECT_EQ(wide("V3"), both);
  EXPECT_THROW((void)launcher::choose_direct_sampling("off", HfClass::none, {14e6, 2.4e6, 2.4e6}, ""),
               launcher::CaptureFitError);
}

}  // namespace
