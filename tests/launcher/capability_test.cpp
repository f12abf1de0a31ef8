#include "launcher/capability.h"

#include <gtest/gtest.h>

namespace launcher {
namespace {

using Keys = std::vector<std::string>;

const options::Profile sdrplay{}, rtl{{"backend", "rtl-sdr"}}, rx888{{"backend", "rx888"}};

options::Profile with(options::Profile profile, const options::Profile& more) {
  for (const auto& [key, value] : more)
    profile[key] = value;
  return profile;
}

CaptureCapability capability(const options::Profile& settings, const options::Profile& common = {}) {
  options::ReceiverProfile receiver;
  receiver.serial = "ONE";
  receiver.model = "RSP2";
  receiver.settings = settings;
  return capability_of(common, receiver);
}

TEST(Capability, SaysWhatASettingCosts) {
  const options::Profile common_rate{{"sample-rate", "2.048M"}, {"modes", ""}, {"mode", "receivers"}};
  const struct {
    const char* what;
    options::Profile settings, common;
    double rate, span, full_span;
    Keys limits;
  } cases[] = {
      {"all automatic", sdrplay, {}, 10e6, 7.2e6, 7.2e6, {}},
      {"a narrow rate", with(sdrplay, {{"sample-rate", "2048000"}}), {}, 2.048e6, 1382400, 7.2e6, {"sample-rate"}},
      {"a rate that costs nothing", with(sdrplay, {{"sample-rate", "8M"}}), {}, 8e6, 7.2e6, 7.2e6, {}},
      {"the common rate", sdrplay, common_rate, 2.048e6, 1382400, 7.2e6, {"sample-rate"}},
      {"its own is automatic", with(sdrplay, {{"sample-rate", ""}}), common_rate, 10e6, 7.2e6, 7.2e6, {}},
      {"a centre far from the test, before the rate",
       with(sdrplay, {{"center-frequency", "7.1M"}, {"sample-rate", "2048k"}}),
       {},
       2.048e6,
       1382400,
       7.2e6,
       {"center-frequency"}},
      {"a common centre", rtl, {{"center-frequency", "14.1M"}}, 2.4e6, 0.9 * 2.4e6, 0.9 * 2.4e6, {"center-frequency"}},
      {"a dongle", rtl, {}, 2.4e6, 0.9 * 2.4e6, 0.9 * 2.4e6, {}},
      {"a wide dongle", with(rtl, {{"sample-rate", "3.2M"}}), {}, 3.2e6, 0.9 * 3.2e6, 0.9 * 2.4e6, {}},
      {"a narrow dongle", with(rtl, {{"sample-rate", "250k"}}), {}, 250e3, 0.9 * 250e3, 0.9 * 2.4e6, {"sample-rate"}},
      {"sized to the bands", rx888, {}, 32e6, 28.8e6, 28.8e6, {}},
      {"sized, half", with(rx888, {{"rx888-rate", "half"}}), {}, 32e6, 28.8e6, 28.8e6, {}},
      {"everything, half",
       with(rx888, {{"rx888-coverage", "all"}, {"rx888-rate", "half"}}),
       {},
       32e6,
       28.8e6,
       28.8e6,
       {}},
      {"everything, full", with(rx888, {{"rx888-coverage", "all"}}), common_rate, 64e6, 57.6e6, 57.6e6, {}},
  };
  for (const auto& c : cases) {
    const auto record = capability(c.settings, c.common);
    EXPECT_EQ(record.unusable_reason, "") << c.what;
    EXPECT_DOUBLE_EQ(record.set_rate, c.rate) << c.what;
    EXPECT_DOUBLE_EQ(record.set_span, c.span) << c.what;
    EXPECT_DOUBLE_EQ(record.full_span, c.full_span) << c.what;
    EXPECT_EQ(record.limit_keys, c.limits) << c.what;
  }
  const auto record = capability(with(rx888, {{"sample-rate", "16M"}}), {{"center-frequency", "7.1M"}});
  EXPECT_EQ(record.backend, "rx888");
  EXPECT_EQ(record.rate_text, "16M");
  EXPECT_EQ(record.center_text, "7.1M");
}

TEST(Capability, IsOfTheReceiverAlone) {
  // A station of all three families, listening by itself until now.
  const options::Profile common{{"mode", "audio"},
                                {"frequency", "7.1M"},
                                {"sink", "speaker"},
                                {"modulation", "AM"},
                                {"decoders", "5"},
                                {"bands", "40,30"},
                                {"audio.voice", "not even a channel"},
                                {"gain-reduction", "40"},
                                {"bias-t", "on"},
                                {"rx888-gain", "4"},
                                {"rx888-recovery", "60"},
                                {"rtl-bias-t", "on"},
                                {"rtl-library", "librtlsdr.so"}};
  for (const auto& settings : {sdrplay, rtl, rx888})
    EXPECT_EQ(capability(settings, common).unusable_reason, "") << capability(settings, common).backend;
}

TEST(Capability, SaysWhyAReceiverCannotBeUsed) {
  const struct {
    options::Profile settings;
    const char* reason;
  } cases[] = {
      {with(sdrplay, {{"bandwidth", "6k"}}), "Decoder channel bandwidth must be 1000..5000 Hz"},
      {with(sdrplay, {{"sample-rate", "12M"}}), "SDRplay hardware sample rate must be 2M through 10M Hz"},
      {with(sdrplay, {{"center-frequency", "high"}}), "Invalid number: high"},
      {with(rtl, {{"sample-rate", "600k"}}), "RTL-SDR sample rate must be 225001..300000 or 900001..3200000 Hz"},
      {with(rtl, {{"ppm", "0.5"}}), "RTL-SDR requires integer PPM and does not support --antenna"},
      {with(rx888, {{"rx888-gain", "99"}}),
       "RX-888 VGA gain range is -8..32 dB (applied hardware steps are approximate)"},
      {{{"backend", "hackrf"}}, "Unsupported receiver backend"},
      {{{"workers", "2"}}, "Unsupported receiver setting: workers"},
  };
  for (const auto& c : cases) {
    const auto record = capability(c.settings);
    EXPECT_EQ(record.unusable_reason, c.reason);
    EXPECT_EQ(record.label, "RSP2 · ONE");
  }
  EXPECT_EQ(capability({{"backend", "hackrf"}, {"center-frequency", "7M"}}).limit_keys, Keys{"center-frequency"});
}

TEST(Capability, IsToldInTheMiddleOfASentence) {
  auto record = capability({{"sample-rate", "2048000"}, {"center-frequency", "7.1M"}});
  EXPECT_EQ(capture_text(record, "sample-rate"), "RSP2 · ONE is set to 2.048 MS/s and captures only 1.38 MHz");
  EXPECT_EQ(capture_text(record, "center-frequency"), "RSP2 · ONE has Capture center fixed at 7.1M");
  record = capability({{"sample-rate", "6M"}});
  EXPECT_EQ(capture_text(record, "sample-rate"), "RSP2 · ONE is set to 6 MS/s and captures only 5.4 MHz");
  EXPECT_EQ(mega_text(10e6, 3), "10");
  EXPECT_EQ(mega_text(100e6, 0), "100");
}

}  // namespace
}  // namespace launcher
