// What single options take, and in which words they refuse.
#include <gmock/gmock.h>

#include "options/option_table.h"
#include "options_text.h"

namespace {

using options::is_given;
using options_test::parse_line;
using options_test::refusal_of_line;

struct Refusal {
  const char *line, *words;
};

TEST(OptionScan, RefusesValues) {
  const char* gpu = "--gpu must be auto (the receive engine on an NVIDIA GPU when one answers) or off (the CPU)";
  const char* modes = "Digital mode must be FT8, FT4, JS8, JS8-FAST, JS8-TURBO, JS8-SLOW or WSPR: ";
  const char* bands = "; choose 160,80,60,40,30,20,17,15,12,10,6,2 (optional m suffix) or 70cm";
  const char* known =
      "--known-modes takes all, none or a comma list of cw, psk31, rtty, olivia, jtty, sstv, wefax, msk144";
  const char* entry = "--band-modes entries are BAND:MODE+MODE (a band with no mode is BAND:): ";
  const char* cluster = "Invalid --dx-clusters: cannot read DX cluster \"";
  const std::pair<std::string, std::string> cases[] = {
      {"--frequency", "Missing value for --frequency"},
      {"-f", "Missing value for -f"},
      {"--config", "Missing value for --config"},
      {"--config /nowhere/x", "Cannot open configuration file: /nowhere/x"},
      {"--no-such", "Unknown option: --no-such"},
      {"--no-spot", "Unknown option: --no-spot"},
      {"stray", "Unknown option: stray"},
      {"-x", "Unknown option: -x"},
      {"--mode=audio", "Unknown option: --mode=audio"},
      {"--mode dec", "--mode must be audio, decoder, hybrid or receivers"},
      {"--mode Audio", "--mode must be audio, decoder, hybrid or receivers"},
      {"--mode ''", "--mode must be audio, decoder, hybrid or receivers"},
      {"--spot yes", "--spot must be on or off"},
      {"--share ON", "--share must be on or off"},
      {"--agc true", "--agc must be on or off"},
      {"--bias-t 1", "--bias-t must be on or off"},
      {"--rx888-bias-t 1", "--rx888-bias-t must be on or off"},
      {"--rx888-reference 1", "--rx888-reference must be on or off"},
      {"--rtl-bias-t 1", "--rtl-bias-t must be on or off"},
      {"--rf-notch 1", "--rf-notch must be on or off"},
      {"--mw-notch 1", "--mw-notch must be on or off"},
      {"--signal-journal ''", "Signal journal path cannot be empty; use off to disable it"},
      {"--survey-journal ''", "Survey journal path cannot be empty; use off to disable it"},
      {"--wefax-images ''", "WEFAX image directory cannot be empty"},
      {"--survey-bandwidth 47999", "--survey-bandwidth must be 48k..64M Hz"},
      {"--survey-bandwidth 64.1M", "--survey-bandwidth must be 48k..64M Hz"},
      {"--survey-max-decoders 0", "--survey-max-decoders must be 1..255"},
      {"--survey-max-decoders 256", "--survey-max-decoders must be 1..255"},
      {"--survey-min-snr 60.5", "--survey-min-snr must be 0..60 dB"},
      {"--history-days 366", "History retention must be 1..365 days"},
      {"--history-days 1.5", "History retention must be 1..365 days"},
      {"--decoders 0", "--decoders must be 1..96"},
      {"--decoders 97", "--decoders must be 1..96"},
      {"--workers 0", "--workers must be 1..32"},
      {"--workers 33", "--workers must be 1..32"},
      {"--workers two", "Invalid number: two"},
      {"--buffer-seconds 0.4", "--buffer-seconds must be 0.5..30"},
      {"--buffer-seconds 31", "--buffer-seconds must be 0.5..30"},
      {"--rx888-recovery 601", "--rx888-recovery must be 0..600 seconds"},
      {"--rx888-recovery -1", "--rx888-recovery must be 0..600 seconds"},
      {"--rx888-return-wait 31", "--rx888-return-wait must be 0..30 seconds"},
      {"--rtl-port 0", "RTL TCP port must be an integer between 1 and 65535"},
      {"--rtl-port 65536", "RTL TCP port must be an integer between 1 and 65535"},
      {"--rtl-port 1.5", "RTL TCP port must be an integer between 1 and 65535"},
      {"--direct-sampling Q", "Direct sampling must be auto, off, i, q, or q-check"},
      {"--modulation usb", "Modulation must be USB, LSB, or AM"},
      {"-m FM", "Modulation must be USB, LSB, or AM"},
      {"--gpu on", gpu},
      {"--rx888-gpu on", gpu},
      {"--sample-rate 0", "Sample rate must be a positive integer in Hz, at most 64M"},
      {"--sample-rate 2000000.5", "Sample rate must be a positive integer in Hz, at most 64M"},
      {"--sample-rate 64.1M", "Sample rate must be a positive integer in Hz, at most 64M"},
      {"--sample-rate fast", "Invalid number: fast"},
      {"--lna-state 256", "Expected an integer between 0 and 255: 256"},
      {"--lna-state -1", "Expected an integer between 0 and 255: -1"},
      {"--lna-state 1.5", "Expected an integer between 0 and 255: 1.5"},
      {"--lna-state 1k", "Invalid number: 1k"},
      {"--gain-reduction 300", "Expected an integer between 0 and 255: 300"},
      {"--decode-depth x", "Invalid number: x"},
      {"--ppm nan", "Invalid number: nan"},
      {"--ppm inf", "Invalid number: inf"},
      {"--ppm 0x10", "Invalid number: 0x10"},
      {"--ppm +1", "Invalid number: +1"},
      {"--ppm 1,5", "Invalid number: 1,5"},
      {"--frequency M", "Invalid number: M"},
      {"--frequency 7.1MM", "Invalid number: 7.1MM"},
      {"--frequency 1e308M", "Invalid number: 1e308M"},
      {"--modes FT8,", std::string(modes)},
      {"--modes ft8", std::string(modes) + "ft8"},
      {"--modes FT8,FT4,FT8", "Duplicate digital mode: FT8"},
      {"--band-modes 20", std::string(entry) + "20"},
      {"--band-modes 20:FT8,", entry},
      {"--band-modes 20:FT9", std::string(modes) + "FT9"},
      {"--band-modes 20:FT8,20M:FT4", "--band-modes lists a band twice: 20M"},
      {"--band-modes 20m:FT8+FT8", "--band-modes lists a mode twice on 20m"},
      {"--band-modes 11:FT8", std::string("Unsupported band: 11") + bands},
      {"--bands 20,", "--bands contains an empty band"},
      {"--bands 20m,11M", std::string("Unsupported band: 11M") + bands},
      {"--frequencies 14.074M,", "Invalid number: "},
      {"--frequencies FT8:x", "Invalid number: x"},
      {"--known-modes cw,ft8", known},
      {"--known-band-modes 20", "--known-band-modes entries are BAND:MODE+MODE (a band with no mode is BAND:): 20"},
      {"--known-band-modes 20:cw,20m:", "--known-band-modes lists a band twice: 20m"},
      {"--fax-channels psk20", "--fax-channels: not a weather fax window: psk20"},
      {"--dx-clusters host", std::string(cluster) + "host\"; expected host:port, for example dxc.example.org:7300"},
      {"--dx-clusters :7300", std::string(cluster) + ":7300\"; expected host:port, for example dxc.example.org:7300"},
      {"--dx-clusters a:1,", std::string(cluster) + "\"; expected host:port, for example dxc.example.org:7300"},
      {"--dx-clusters a:65536",
       std::string(cluster) + "a:65536\"; expected host:port, for example dxc.example.org:7300"},
      {"--dx-clusters a:1,a:1,a:1,a:1,a:1,a:1,a:1,a:1,a:1", "Invalid --dx-clusters: at most 8 DX clusters"},
      {"--rtl-device 0",
       "Select an RTL-SDR dongle with --serial ID (from --list-devices), or select it on an external server: rtl_tcp "
       "-d "
       "INDEX_OR_SERIAL with --rtl-host/--rtl-port here"},
      {"--bind-usb-receivers", "--bind-usb-receivers is available only on Windows"},
      {"--audio-channel id=a", "Audio channel frequency is required"},
      {"--analysis-channel id=a", "Analysis channel frequency is required"},
  };
  for (const auto& [line, words] : cases)
    EXPECT_EQ(refusal_of_line(line), words) << line;
}

TEST(OptionScan, StoresWhatItReads) {
  const auto options = parse_line(
      "--mode hybrid --bands 30m,40 --modes FT8,JS8-SLOW --band-modes 40:FT4 --workers 0.01k --sample-rate 9M "
      "--audio-gain 2.5 --ppm -1.5 --callsign k1abc --grid fn31 --no-stats --survey --pskreporter --lna-state 3 "
      "--dx-clusters a.b:7300,[::1]:80 --history-days 30 --direct-sampling q-check --signal-journal off");
  EXPECT_EQ(options.reception.mode, options::ReceptionMode::hybrid);
  EXPECT_EQ(options.decoding.workers, 10U);
  EXPECT_EQ(options.hardware.sample_rate, 9e6);
  EXPECT_EQ(options.hardware.audio_gain, 2.5);
  EXPECT_EQ(options.hardware.ppm, -1.5);
  EXPECT_EQ(options.sdrplay.lna_state, 3U);
  EXPECT_EQ(options.history.days, 30U);
  EXPECT_EQ(options.known.signal_journal, "off");
  EXPECT_TRUE(options.known.survey && options.reporting.pskreporter && !options.daemon.stats);
  ASSERT_EQ(options.reporting.dx_clusters.size(), 2U);
  EXPECT_EQ(options.reporting.dx_clusters[1].host, "[::1]");
  using launcher::DigitalMode;
  EXPECT_THAT(options.reception.channels,
              testing::ElementsAre(launcher::DecoderChannel{10136000, DigitalMode::ft8},
                                   launcher::DecoderChannel{10130000, DigitalMode::js8_slow},
                                   launcher::DecoderChannel{7047500, DigitalMode::ft4}));
}

TEST(OptionScan, AnEmptyValueSaysNothing) {
  const auto options = parse_line(
      "--mode decoder --bands 20 --frequencies '' --band-modes '' --antenna '' --usb-mode '' --serial '' --callsign '' "
      "--workers '' --sample-rate '' --known-modes '' --dx-clusters ''");
  EXPECT_FALSE(is_given(options, "frequencies") || is_given(options, "antenna") || is_given(options, "sample-rate"));
  EXPECT_TRUE(is_given(options, "bands"));
  EXPECT_EQ(refusal_of_line("--mode audio --frequency 7.1M --modes '' --bands ''"), "");
}

TEST(OptionScan, LaterOptionsWinAndChannelsAddUp) {
  const std::string channel = " --audio-channel id=a,frequency=7.1M --audio-channel id=b,frequency=7.2M";
  auto options = parse_line("--mode audio --mode receivers" + channel + " --audio-channel id=a,frequency=7.3M");
  EXPECT_EQ(options.reception.mode, options::ReceptionMode::receivers);
  ASSERT_EQ(options.reception.audio_channels.size(), 2U);
  EXPECT_EQ(options.reception.audio_channels[0].frequency, 7.3e6);
  options = parse_line("--mode receivers" + channel + " --remove-audio-channel a --remove-audio-channel none");
  ASSERT_EQ(options.reception.audio_channels.size(), 1U);
  EXPECT_EQ(options.reception.audio_channels[0].id, "b");
  const std::string analysis = " --analysis-channel id=x,frequency=7.1M";
  EXPECT_EQ(refusal_of_line("--mode receivers" + channel + analysis + " --clear-audio-channels"), "");
  EXPECT_EQ(
      refusal_of_line("--mode receivers" + channel + analysis + " --clear-audio-channels --clear-analysis-channels"),
      "Audio receiver mode needs --center-frequency or audio channels");
  EXPECT_EQ(refusal_of_line("--mode receivers" + analysis + " --remove-analysis-channel x"),
            "Audio receiver mode needs --center-frequency or audio channels");
}

TEST(OptionScan, AProfileReadsAsItsLinesOnTheCommandLine) {
  const options::Profile profile{{"mode", "hybrid"},
                                 {"bands", "20"},
                                 {"audio.v", "id=v,frequency=14.1M"},
                                 {"analysis.w", "id=w,frequency=14.2M"},
                                 {"stats", "false"},
                                 {"survey", "true"}};
  const auto options = options::check_profile(profile);
  EXPECT_EQ(options.reception.audio_channels.at(0).id, "v");
  EXPECT_EQ(options.reception.analysis_channels.at(0).id, "w");
  EXPECT_TRUE(!options.daemon.stats && options.known.survey);
  const std::pair<options::Profile, const char*> refused[] = {
      {{{"gui-format", "x"}}, "Unknown option: --gui-format"},
      {{{"list-devices", ""}}, "Unknown option: --list-devices"},
      {{{"rx888-return-wait", "3"}}, "Unknown option: --rx888-return-wait"},
      {{{"audio.v", ""}}, "Invalid audio channel specification"},
  };
  for (const auto& [bad, words] : refused)
    EXPECT_EQ(options_test::refusal([&bad = bad] { (void)options::check_profile(bad); }), words);
}

TEST(OptionHelp, NamesEveryOption) {
  const std::string help = options::help_text("tarnwick");
  for (const options::Option& option : options::option_table)
    EXPECT_THAT(help, testing::HasSubstr(std::string(option.name()))) << option.argument;
  for (const char* part : {"--[no-]stats\n", "-h, --help\n", "-f, --frequency HZ\n", "-kill, --kill\n"})
    EXPECT_THAT(help, testing::HasSubstr(part));
  EXPECT_EQ(refusal_of_line("--help --mode decoder"), "");
  EXPECT_EQ(refusal_of_line("--version"), "");
  EXPECT_EQ(refusal_of_line("--help --mode x"), "--mode must be audio, decoder, hybrid or receivers");
}

}  // namespace
