#include "launcher/capture/capture.h"

#include <gtest/gtest.h>

namespace {

using launcher::Capture;
using launcher::CaptureFitError;
using launcher::CaptureNeeds;
using launcher::CaptureSettings;
using launcher::DigitalMode;
using launcher::Extent;
using launcher::Family;
using launcher::fit_capture;

CaptureNeeds decoders(double low, double high) {
  return {{low, high}, {low, high}};
}
CaptureNeeds listeners(double low, double high) {
  return {{}, {low, high}};
}

std::string fit_text(const CaptureSettings& settings, const CaptureNeeds& needs) {
  try {
    (void)fit_capture(settings, needs);
  } catch (const CaptureFitError& error) {
    return error.what();
  }
  return {};
}

TEST(CaptureWidths, FollowModeAndFilter) {
  EXPECT_EQ(launcher::channel_width(DigitalMode::ft8, 2000), 4000);
  EXPECT_EQ(launcher::channel_width(DigitalMode::ft8, 5000), 5000);
  EXPECT_EQ(launcher::channel_width(DigitalMode::wspr, 2000), 2000);
  const auto span = launcher::listened_span(*launcher::find_band("2"), 4000);
  EXPECT_EQ(span.lower, 144170000);
  EXPECT_EQ(span.upper, 144493000);
  const std::pair<double, double> ladder[] = {
      {225001, 200e3},  {299999, 200e3},  {300e3, 300e3},   {599999, 300e3}, {600e3, 600e3},
      {1535999, 600e3}, {1536e3, 1536e3}, {2048e3, 1536e3}, {5e6, 5e6},      {6e6, 6e6},
      {7999999, 7e6},   {8e6, 8e6},       {10e6, 8e6},
  };
  for (const auto& [rate, bandwidth] : ladder)
    EXPECT_EQ(launcher::sdrplay_filter_bandwidth(rate), bandwidth) << rate;
}

TEST(CaptureFit, CentresATunerBesideItsChannels) {
  const Capture sdrplay = fit_capture({Family::sdrplay, 10e6}, decoders(7e6, 14e6));
  EXPECT_EQ(sdrplay, (Capture{10508000, 10e6, 8e6}));
  EXPECT_DOUBLE_EQ(sdrplay.usable_span(), 7.2e6);
  EXPECT_EQ(fit_capture({Family::rtl_sdr, 2.4e6}, listeners(7e6, 8e6)), (Capture{7508000, 2.4e6, 2.4e6}));
  EXPECT_EQ(fit_capture({Family::sdrplay, 2048e3, 7.1e6}, decoders(7e6, 7.2e6)), (Capture{7.1e6, 2048e3, 1536e3}));
  EXPECT_EQ(fit_capture({Family::sdrplay, 64e3, 0, true}, {}), (Capture{146e6, 64e3, 64e3}));
}

TEST(CaptureFit, RefusesATunersChannelsInTwoSteps) {
  const std::string channels =
      "Decoder channels do not fit the usable capture bandwidth; increase --sample-rate, change --center-frequency, or "
      "use closer frequencies";
  const std::string bands =
      "The bands do not fit the usable capture bandwidth; increase --sample-rate, change --center-frequency, or tick "
      "closer bands";
  const CaptureSettings automatic{Family::sdrplay, 10e6};
  const CaptureSettings fixed{Family::sdrplay, 10e6, 10e6};
  // The centre lies 8 kHz above the middle, so the lower edge is the tight one.
  EXPECT_EQ(fit_text(automatic, decoders(7e6, 7e6 + 7.2e6 - 16000)), "");
  EXPECT_EQ(fit_text(automatic, decoders(7e6, 7e6 + 7.2e6 - 15998)), channels);
  EXPECT_EQ(fit_text(automatic, listeners(7e6, 7e6 + 7.2e6 - 15998)), bands);
  EXPECT_EQ(fit_text(fixed, decoders(6.4e6, 13.6e6)), "");
  EXPECT_EQ(fit_text(fixed, decoders(6.4e6 - 1, 7e6)), channels);
  EXPECT_EQ(fit_text(fixed, decoders(7e6, 13.6e6 + 1)), channels);
  CaptureNeeds wider = decoders(7e6, 8e6);
  wider.all.add(Extent{13e6, 14e6});
  EXPECT_EQ(fit_text(fixed, wider), bands);
}

TEST(CaptureFit, SizesAnRx888FromTheSmallestRateUp) {
  CaptureSettings half{Family::rx888};
  half.half_rate = true;
  CaptureSettings full{Family::rx888};
  struct Case {
    CaptureSettings settings;
    double low, high, rate, center;
  };
  CaptureSettings fixed = full;
  fixed.center = 14.1e6;
  const Case cases[] = {
      {full, 14.074e6, 14.078e6, 8e6, 14.076e6}, {full, 7e6, 14.2e6, 8e6, 10.6e6},  // exactly nine tenths of 8 MS/s
      {full, 7e6, 14.2e6 + 2, 16e6, 10600001},                                      //
      {full, 1.84e6, 1.844e6, 8e6, 3.6e6},                                          // kept above 0 Hz
      {half, 31e6, 31.004e6, 8e6, 28.4e6},                                          // kept below Nyquist
      {half, 1.84e6, 14.078e6, 16e6, 7.959e6},                                      // 160 m to 20 m
      {half, 1.84e6, 28.078e6, 32e6, 14.959e6},                                     // all of HF
      {fixed, 14.074e6, 14.078e6, 8e6, 14.1e6},                                     //
      {fixed, 10e6, 14.078e6, 16e6, 14.1e6},                                        //
  };
  for (const Case& c : cases) {
    const Capture capture = fit_capture(c.settings, decoders(c.low, c.high));
    EXPECT_EQ(capture.sample_rate, c.rate) << c.low << ".." << c.high;
    EXPECT_DOUBLE_EQ(capture.center, c.center) << c.low << ".." << c.high;
  }
}

TEST(CaptureFit, FollowsTheRx888sClockError) {
  CaptureSettings settings{Family::rx888};
  settings.ppm = -100;
  const Capture capture = fit_capture(settings, decoders(7e6, 14e6));
  EXPECT_EQ(capture.sample_rate, 8e6);
  EXPECT_DOUBLE_EQ(capture.filter_bandwidth, 7999200);
  EXPECT_EQ(fit_capture(settings, decoders(7e6, 14.2e6)).sample_rate, 16e6);
  settings.ppm = -2e6;  // judged elsewhere; here it only must not loop or crash
  EXPECT_ANY_THROW((void)fit_capture(settings, decoders(7e6, 14e6)));
}

TEST(CaptureFit, RefusesAnRx888ByItsAdcRate) {
  const std::string half_words =
      "RX-888 cannot fit this selection in one capture: at the half ADC rate it covers 0-32 MHz, and at most 28.8 MHz "
      "of it at once";
  const std::string full_words =
      "RX-888 cannot fit this selection in one capture: at the full ADC rate it covers 0-64 MHz, and at most 28.8 MHz "
      "of it at once";
  CaptureSettings half{Family::rx888};
  half.half_rate = true;
  CaptureSettings full{Family::rx888};
  EXPECT_EQ(fit_text(half, decoders(50.313e6, 50.317e6)), half_words);
  EXPECT_EQ(fit_text(full, decoders(50.313e6, 50.317e6)), "");
  EXPECT_EQ(fit_text(full, decoders(14e6, 42.8e6)), "");
  EXPECT_EQ(fit_text(full, decoders(14e6, 42.9e6)), full_words);
  EXPECT_EQ(fit_text(full, decoders(144e6, 144.1e6)), full_words);
  full.center = 3.5e6;  // too near to 0 Hz for the smallest rate, and to its own left for the others
  EXPECT_EQ(fit_text(full, decoders(3.5e6, 3.6e6)), full_words);
  half.whole_spectrum = full.whole_spectrum = true;
  EXPECT_EQ(fit_text(half, decoders(0, 28.8e6)), "");
  EXPECT_EQ(fit_text(half, decoders(0, 28.8e6 + 1)),
            "RX-888 coverage \"all\" reaches 28.8 MHz; this selection goes higher");
  EXPECT_EQ(fit_text(full, decoders(0, 57.7e6)),
            "RX-888 coverage \"all\" reaches 57.6 MHz; this selection goes higher");
  EXPECT_EQ(fit_capture(full, {}), (Capture{28.8e6, 64e6, 64e6}));
  EXPECT_EQ(fit_capture(half, {}), (Capture{14.4e6, 32e6, 32e6}));
}

TEST(CaptureFit, NamesFamiliesByTheirBackends) {
  for (const Family family : {Family::sdrplay, Family::rtl_sdr, Family::rx888})
    EXPECT_EQ(launcher::parse_family(launcher::family_text(family)), family);
  EXPECT_FALSE(launcher::parse_family("RX888"));
  EXPECT_FALSE(launcher::parse_family(""));
}

}  // namespace
