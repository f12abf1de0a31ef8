// The rules between options: each refusal, what just passes beside it, and which of two faults is named.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include "options_text.h"

namespace {

using options_test::parse_line;
using options_test::refusal_of_line;

struct Case {
  std::string line, words;  // no words: it passes
};

void expect_all(const std::vector<Case>& cases, const std::string& before = "") {
  for (const Case& c : cases)
    EXPECT_EQ(refusal_of_line(before + c.line), c.words) << before << c.line;
}

std::string numbered(const char* pattern, int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += fmt::format(fmt::runtime(pattern), i);
  return text;
}

/// "14.000M,14.001M,..." for --frequencies.
std::string many_frequencies(int count) {
  std::string text;
  for (int i = 0; i < count; ++i)
    text += fmt::format("{}{}", i == 0 ? "" : ",", 14000000 + 4000 * i);
  return text;
}

TEST(OptionCheck, Selection) {
  const std::string modes_empty =
      "--modes is empty: give FT8, FT4, JS8 or WSPR, or add --known-channels to decode only on the known frequencies "
      "of "
      "these bands";
  const std::string prefix =
      "With multiple --modes, prefix each --frequencies entry: FT8:14.074M,FT4:14.080M; or use --bands";
  const std::string no_preset = "No preset for the selected modes on this band; use an explicit --frequencies entry: ";
  expect_all(
      {
          {"--bands 20 --frequencies 14.074M", "Choose --bands or --frequencies, not both"},
          {"--frequencies 14.074M --modes ''", "--frequencies needs a mode; --modes is empty"},
          {"--bands 20 --modes ''", modes_empty},
          {"--bands 20 --modes '' --known-channels", ""},
          {"--bands 20 --modes '' --band-modes 20:FT8", ""},
          {"--bands 60m --modes JS8", no_preset + "60m"},
          {"--bands 60 --modes FT8,JS8", ""},
          {"--bands 60 --modes JS8 --known-channels", ""},
          {"--bands 60 --modes JS8 --spot off", ""},
          {"--bands 40,60 --band-modes 60:", ""},
          {"--frequencies 14.074M --modes FT8,FT4", prefix},
          {"--frequencies FT8:14.074M,14.08M --modes FT8,FT4 --spot off", prefix},
          {"--frequencies FT4:14.074M", "Frequency mode is not enabled by --modes: FT4"},
          {"--frequencies ft8:14.074M", "Frequency mode is not enabled by --modes: ft8"},
          {"--frequencies 14.074M", ""},
          {"--bands 20,20", "Duplicate decoder frequency/mode"},
          {"--bands 60 --modes FT8,FT4", ""},
          {"--frequencies FT8:14.074M,FT8:14.0740M", "Duplicate decoder frequency/mode"},
          {"--frequencies 14M,14M --spot off", "Duplicate decoder frequency/mode"},
          {"--frequencies 999", "Decoder frequencies must be between 1k and 2000M Hz"},
          {"--frequencies 2001M", "Decoder frequencies must be between 1k and 2000M Hz"},
          {"--bands 20 --center-frequency 0", "Decoder frequencies must be between 1k and 2000M Hz"},
      },
      "--mode decoder ");
}

TEST(OptionCheck, Daemon) {
  expect_all(
      {
          {"--pid-file ''", "Daemon PID path cannot be empty"},
          {"--pid-file /p", "--pid-file requires --daemon or --kill"},
          {"--log-file /l", "--log-file requires --daemon"},
          {"--daemon --log-file ''", "Daemon log path cannot be empty"},
          {"--daemon --list-devices", "--daemon cannot be combined with --list-devices"},
          {"--daemon --pid-file /p --log-file /l", ""},
      },
      "--mode decoder --bands 20 ");
}

TEST(OptionCheck, Rx888) {
  const std::string live = "RX-888 settings require live --backend rx888";
  const std::string other =
      "RX-888 uses native HF direct sampling; SDRplay gain/API/antenna settings and IQ replay do not apply";
  const std::string rate =
      "RX-888 complex output rate must be the ADC clock divided by a power of two, up to 32M Hz (64M with "
      "--rx888-coverage all)";
  const std::string gain = "RX-888 VGA gain range is -8..32 dB (applied hardware steps are approximate)";
  const std::string attenuation = "RX-888 attenuation must be 0..31.5 dB in 0.5 dB steps";
  const std::string half_rate = "--rx888-rate must be full (128 MS/s ADC, 0-64 MHz) or half (64 MS/s ADC, 0-32 MHz)";
  expect_all(
      {
          {"--backend RX888", "Backend must be sdrplay, rtl-sdr or rx888"},
          {"--backend ''", "Backend must be sdrplay, rtl-sdr or rx888"},
          {"--rx888-gain 0", live},
          {"--rx888-rate full", live},
          {"--rx888-reference on", live},
          {"--rx888-reference off --rx888-bias-t off --gpu off", ""},
          {"--backend rtl-sdr --rx888-receive x", live},
          {"--backend rx888 --rx888-receive x", ""},
          {"--backend rx888 --rx888-gain 1 --iq-file /i", live},
          {"--rx888-return-wait 5", "--rx888-return-wait applies to --list-devices only"},
          {"--backend rx888 --agc on", "RX-888 uses manual gain; set --rx888-gain and --rx888-attenuation"},
          {"--backend rx888 --agc off", ""},
          {"--backend rx888 --rx888-rate Half", half_rate},
          {"--backend rx888 --rx888-coverage some",
           "--rx888-coverage must be bands (sized to the selection) or all (0 Hz to 90% of Nyquist)"},
          {"--backend rx888 --rx888-gain -8", ""},
          {"--backend rx888 --rx888-gain -8.1", gain},
          {"--backend rx888 --rx888-gain 32.1", gain},
          {"--backend rx888 --rx888-attenuation 31.5", ""},
          {"--backend rx888 --rx888-attenuation 32", attenuation},
          {"--backend rx888 --rx888-attenuation 0.25", attenuation},
          {"--backend rx888 --gain-reduction 50", other},
          {"--backend rx888 --lna-state 0", other},
          {"--backend rx888 --antenna A", other},
          {"--backend rx888 --api-library /l", other},
          {"--backend rx888 --iq-file /i", other},
          {"--backend rx888 --sample-rate 9000000", rate},
          {"--backend rx888 --sample-rate 64M", rate},
          {"--backend rx888 --sample-rate 64M --rx888-coverage all", ""},
          {"--backend rx888 --sample-rate 500k", ""},
          {"--backend rx888 --sample-rate 250k", rate},
          {"--backend rx888 --sample-rate 250k --rx888-rate half", ""},
          {"--backend rx888 --rtl-gain 20 --direct-sampling q", ""},
      },
      "--mode decoder --bands 20 ");
  EXPECT_FALSE(parse_line("--mode decoder --bands 20 --backend rx888").sdrplay.agc);
}

TEST(OptionCheck, OtherFamilies) {
  const std::string bias =
      "--bias-t is the SDRplay bias tee; the RX-888 has --rx888-bias-t and an RTL-SDR --rtl-bias-t";
  const std::string notch = "Hardware notch filters require local SDRplay receivers";
  const std::string one =
      "--serial runs the bundled rtl_tcp for that dongle; --rtl-host/--rtl-port are for an external rtl_tcp server. "
      "Give "
      "one or the other";
  const std::string server = "--rtl-host/--rtl-port require the RTL-SDR TCP backend, without IQ replay";
  const std::string programs = "--rtl-tcp-program and --rtl-library require --backend rtl-sdr";
  const std::string integer = "RTL-SDR requires integer PPM and does not support --antenna";
  const std::string rtl_rate = "RTL-SDR sample rate must be 225001..300000 or 900001..3200000 Hz";
  expect_all(
      {
          {"--backend rtl-sdr --bias-t on", bias},
          {"--backend rx888 --bias-t on", bias},
          {"--backend rtl-sdr --bias-t off --rf-notch off --mw-notch off", ""},
          {"--bias-t on --rf-notch on --mw-notch on", ""},
          {"--backend rtl-sdr --rf-notch on", notch},
          {"--mw-notch on --iq-file /i", notch},
          {"--rtl-bias-t on", "--rtl-bias-t requires --backend rtl-sdr"},
          {"--rtl-bias-t off", ""},
          {"--backend rtl-sdr --serial A --rtl-port 1234", one},
          {"--backend rtl-sdr --rtl-host h", ""},
          {"--rtl-host h", server},
          {"--backend rtl-sdr --rtl-host h --iq-file /i", server},
          {"--backend rtl-sdr --rtl-host ''", "RTL TCP host cannot be empty"},
          {"--rtl-tcp-program p", programs},
          {"--rtl-library l", programs},
          {"--backend rtl-sdr --api-library l",
           "RTL-SDR runs through rtl_tcp, not the SDRplay API: --api-library does not apply"},
          {"--backend rtl-sdr --usb-mode bulk", "--usb-mode requires SDRplay hardware"},
          {"--usb-mode fast", "USB mode must be bulk or isochronous"},
          {"--usb-mode isochronous", ""},
          {"--backend rtl-sdr --ppm 1.5", integer},
          {"--backend rtl-sdr --antenna A", integer},
          {"--backend rtl-sdr --gain-reduction 30 --lna-state 3", ""},
          {"--backend rtl-sdr --sample-rate 300001", rtl_rate},
          {"--backend rtl-sdr --sample-rate 225000", rtl_rate},
          {"--backend rtl-sdr --sample-rate 225001", ""},
          {"--backend rtl-sdr --sample-rate 3.2M", ""},
          {"--sample-rate 1999999", "SDRplay hardware sample rate must be 2M through 10M Hz"},
          {"--sample-rate 10M --antenna HiZ", ""},
          {"--antenna hiz", "Antenna must be A, B, C, or HiZ"},
      },
      "--mode decoder --bands 20 ");
}

TEST(OptionCheck, Decoding) {
  const std::string count = "Specify 1..96 decoder channels with --frequencies or --bands (each band/mode pair counts)";
  const std::string match = "--decoders must match the number of selected band/mode or frequency/mode channels";
  const std::string limits = "Workers must be 1..32, decode depth 1..3 and decoder timeout >0..60 seconds";
  const std::string program = "Selected decoder executable and ALL.TXT path cannot be empty";
  const std::string audio_only =
      "Decoder mode uses internal USB audio at 12000 Hz; --wav, --sink, --audio-rate and LSB/AM are audio-mode options";
  expect_all({
      {"--mode decoder", count},
      {"--mode decoder --bands ''", count},
      {"--mode hybrid", count},
      {"--mode decoder --audio-channel id=a,frequency=14M", ""},
      {"--mode decoder --frequencies " + many_frequencies(96), ""},
      {"--mode decoder --frequencies " + many_frequencies(97), count},
      {"--mode decoder --frequencies " + many_frequencies(97) + " --spot off", ""},
      {"--mode decoder --bands 20 --decoders 2", match},
      {"--mode decoder --bands 20 --decoders 1 --workers 32", ""},
      {"--mode receivers --center-frequency 14M --decoders 2", ""},
      {"--mode decoder --bands 20 --frequency 14M",
       "Use --frequencies for decoder channels and --center-frequency for the receiver center"},
      {"--mode decoder --bands 20 --bandwidth 999", "Decoder channel bandwidth must be 1000..5000 Hz"},
      {"--mode decoder --bands 20 -b 5001", "Decoder channel bandwidth must be 1000..5000 Hz"},
      {"--mode decoder --bands 20 -b 5k", ""},
      {"--mode decoder --bands 20 --decode-depth 4", limits},
      {"--mode decoder --bands 20 --decode-depth 0", limits},
      {"--mode decoder --bands 20 --decoder-timeout 0", limits},
      {"--mode decoder --bands 20 --decoder-timeout 60.1", limits},
      {"--mode decoder --bands 20 --wspr-timeout 111", "WSPR timeout must be >0..110 seconds"},
      {"--mode decoder --bands 20 --decoder ''", program},
      {"--mode decoder --bands 20 --wspr-decoder '' --js8-decoder ''", ""},
      {"--mode decoder --bands 20 --modes WSPR --wspr-decoder ''", program},
      {"--mode decoder --bands 20 --modes JS8-SLOW --js8-decoder ''", program},
      {"--mode decoder --bands 20 --all-txt ''", program},
      {"--mode decoder --bands 20 --wav /w", audio_only},
      {"--mode decoder --bands 20 --sink x", audio_only},
      {"--mode decoder --bands 20 --audio-rate 12000", audio_only},
      {"--mode decoder --bands 20 --modulation LSB", audio_only},
      {"--mode decoder --bands 20 --modulation USB", ""},
  });
}

TEST(OptionCheck, StationAndReports) {
  const std::string call = "Invalid --callsign; use your receiving station's callsign";
  const std::string grid = "Invalid --grid; use a 4, 6 or 8 character Maidenhead locator";
  expect_all(
      {
          {"--callsign K1", call},
          {"--callsign k1abc", ""},
          {"--callsign DL/K1ABC/P", ""},
          {"--callsign K1ABC/", call},
          {"--grid FN3", grid},
          {"--grid FN31PR0", grid},
          {"--grid SN31", grid},
          {"--grid fn31pr07", ""},
          {"--pskreporter --iq-file /i", "--pskreporter requires live reception; IQ replay is not published"},
          {"--wsprnet --iq-file /i", "--wsprnet requires live reception; IQ replay is not published"},
          {"--pskreporter --callsign K1ABC", "--pskreporter requires --callsign and --grid"},
          {"--wsprnet --grid FN31", "--wsprnet requires --callsign and --grid"},
          {"--wsprnet --pskreporter --grid FN31 --callsign K1ABC", ""},
      },
      "--mode decoder --bands 20 ");
}

TEST(OptionCheck, Replay) {
  const std::string start = "Decoder IQ replay requires --start-utc YYYYMMDD_HHMMSS";
  const std::string rate = "Decoder IQ replay rate must be 64000..10M Hz";
  const std::string only = "--start-utc and --iq-rate require --iq-file";
  const std::string decoder = "--mode decoder --frequencies 14.074M ";
  expect_all({
      {decoder + "--iq-file /i", start},
      {decoder + "--iq-file /i --start-utc 20260230_000000", start},
      {decoder + "--iq-file /i --start-utc 20260228-000000", start},
      {decoder + "--iq-file /i --start-utc 2026022x_000000", start},
      {decoder + "--iq-file /i --start-utc 20260228_235959", ""},
      {decoder + "--iq-file /i --start-utc 20260228_235959 --iq-rate 63999", rate},
      {decoder + "--iq-file /i --start-utc 20260228_235959 --iq-rate 10.1M", rate},
      {decoder + "--start-utc 20260228_235959", only},
      {"--mode audio --frequency 7M --iq-rate 64k", only},
      {"--mode audio --frequency 7M --iq-file /i", ""},
      {"--mode audio --frequency 7M --iq-file /i --sample-rate 2M",
       "--sample-rate controls hardware; decoder IQ replay uses --iq-rate and audio replay uses 64000 Hz"},
      {"--mode audio --frequency 7M --iq-file /i --wav /i", "IQ input and WAV output must be different files"},
      {"--list-devices --wav /w", "--list-devices cannot be combined with IQ replay or WAV output"},
      {"--list-devices --iq-file /i", "--list-devices cannot be combined with IQ replay or WAV output"},
  });
}

TEST(OptionCheck, ListeningChannels) {
  const std::string too_many = "At most 16 audio and analysis channels per SDR";
  const std::string needs = "Audio receiver mode needs --center-frequency or audio channels";
  const std::string audio = numbered(" --audio-channel id=a{},frequency=14.1M", 5);
  const std::string analysis = numbered(" --analysis-channel id=n{},frequency=14.1M", 11);
  const std::string disabled = " --analysis-channel id=x,frequency=14.1M,enabled=off";
  expect_all({
      {"--mode receivers" + audio + analysis, ""},
      {"--mode receivers" + audio + analysis + disabled, ""},
      {"--mode receivers" + audio + analysis + " --analysis-channel id=x,frequency=14.1M", too_many},
      {"--mode audio --frequency 7M" + audio, "Audio channels need decoder, hybrid or receivers mode"},
      {"--mode audio --frequency 7M" + disabled, "Analysis channels need decoder, hybrid or receivers mode"},
      {"--mode receivers --bands 20", "Audio receiver mode does not take FTx channels"},
      {"--mode receivers --bands 20 --spot off", ""},
      {"--mode receivers --bands 20 --modes '' --known-channels", ""},
      {"--mode receivers", needs},
      {"--mode receivers --backend rx888", needs},
      {"--mode receivers" + disabled, needs},
      {"--mode receivers --center-frequency 7.1M", ""},
      {"--mode receivers --analysis-channel id=x,frequency=14.1M", ""},
  });
}

TEST(OptionCheck, AudioMode) {
  const std::string decoder = "Decoder options require --mode decoder";
  const std::string frequency = "--frequency is required and must be between 1k and 2000M Hz";
  const std::string nyquist = "Receive audio bandwidth must be below half the audio sample rate";
  expect_all({
      {"", frequency},
      {"-f 999", frequency},
      {"-f 7.1M", ""},
      {"-f 7.1M --modes FT8", decoder},
      {"-f 7.1M --bands 20", decoder},
      {"-f 7.1M --frequencies 14M", decoder},
      {"-f 7.1M --band-modes 20:FT8", decoder},
      {"-f 7.1M --decoders 1", decoder},
      {"-f 7.1M --workers 2 --decode-depth 9 --center-frequency 0", ""},
      {"-f 7.1M -b 199", "Bandwidth must be between 200 and 20000 Hz"},
      {"-f 7.1M -b 20001", "Bandwidth must be between 200 and 20000 Hz"},
      {"-f 7.1M -b 4000 --audio-rate 8000", nyquist},
      {"-f 7.1M -b 3999 --audio-rate 8000", ""},
      {"-f 7.1M -m AM --audio-rate 12000", nyquist},
      {"-f 7.1M --audio-rate 7999", "Audio rate must be 8000..192000 Hz"},
      {"-f 7.1M --audio-rate 193k", "Audio rate must be 8000..192000 Hz"},
      {"-f 7.1M --sink x --wav /w -m LSB", ""},
  });
}

TEST(OptionCheck, CommonRanges) {
  expect_all(
      {
          {"--audio-gain 0", "Audio gain must be greater than 0 and at most 10000"},
          {"--audio-gain 10001", "Audio gain must be greater than 0 and at most 10000"},
          {"--duration -1", "Duration must be between 0 and 86400 seconds (0 means unlimited)"},
          {"--duration 86401", "Duration must be between 0 and 86400 seconds (0 means unlimited)"},
          {"--ppm 1001", "PPM must be between -1000 and 1000"},
          {"--ppm -1001", "PPM must be between -1000 and 1000"},
          {"--gain-reduction 19", "Gain reduction must be 20 through 59 dB"},
          {"--gain-reduction 60", "Gain reduction must be 20 through 59 dB"},
          {"--gain-reduction 59 --lna-state 255 --duration 86400", ""},
          {"--sink ''", "Sink name cannot be empty"},
          {"--rtl-gain 61", "RTL gain must be between -10 and 60 dB"},
          {"--rtl-gain -10", ""},
          {"--audio-command x", "--audio-command requires --audio-control"},
          {"--audio-command x --audio-control /s", ""},
      },
      "-f 7.1M ");
}

TEST(OptionCheck, RequestsOtherThanReception) {
  const std::string alone = "--kill accepts only --pid-file and --config; do not include receiver options or --daemon";
  const std::string listing = "--list-frequencies cannot be combined with daemon control or --list-devices";
  expect_all({
      {"--kill", ""},
      {"-kill --pid-file /p --config /dev/null", ""},
      {"--kill --daemon", alone},
      {"--kill --bands 20", alone},
      {"--kill --list-frequencies", alone},
      {"--config /dev/null --list-devices", ""},
      {"--list-devices --rx888-return-wait 20", ""},
      {"--list-frequencies --bands 20", ""},
      {"--list-frequencies --daemon", listing},
      {"--list-frequencies --list-devices", listing},
  });
}

/// Each line breaks two rules of neighbouring steps or more; the earlier one is named.
TEST(OptionCheck, NamesTheFirstOfSeveralFaults) {
  expect_all({
      {"--mode decoder --bands 20 --frequencies x", "Invalid number: x"},
      {"--bands 20 --frequencies 14M --modes ''", "Choose --bands or --frequencies, not both"},
      {"--bands 60 --modes JS8 --pid-file ''",
       "No preset for the selected modes on this band; use an explicit --frequencies entry: 60"},
      {"--pid-file '' --backend x", "Daemon PID path cannot be empty"},
      {"--backend x --bias-t on --callsign x", "Backend must be sdrplay, rtl-sdr or rx888"},
      {"--backend rtl-sdr --bias-t on --bands 20",
       "--bias-t is the SDRplay bias tee; the RX-888 has --rx888-bias-t and an RTL-SDR --rtl-bias-t"},
      {"--mode decoder --decode-depth 9",
       "Specify 1..96 decoder channels with --frequencies or --bands (each band/mode pair counts)"},
      {"--mode decoder --bands 20 --decode-depth 9 --callsign x",
       "Workers must be 1..32, decode depth 1..3 and decoder timeout >0..60 seconds"},
      {"--mode decoder --bands 20,2 --callsign x", "Invalid --callsign; use your receiving station's callsign"},
      {"--mode decoder --bands 20,2 --wav /w --sample-rate 1",
       "Decoder channels do not fit the usable capture bandwidth; increase --sample-rate, change --center-frequency, "
       "or "
       "use closer frequencies"},
      {"--mode receivers --sample-rate 1M --ppm 2000",
       "Audio receiver mode needs --center-frequency or audio channels"},
      {"--sample-rate 1M --ppm 2000", "SDRplay hardware sample rate must be 2M through 10M Hz"},
      {"--ppm 2000 --sink '' --audio-command x", "--frequency is required and must be between 1k and 2000M Hz"},
      {"-f 7M --ppm 2000 --audio-command x", "PPM must be between -1000 and 1000"},
  });
}

struct Derived {
  const char* line;
  double sample_rate, center;
  unsigned decoders;
};

TEST(OptionCheck, FillsInWhatIsAutomatic) {
  const Derived cases[] = {
      {"--mode decoder --bands 20", 10e6, (14074000 + 14078000) / 2.0 + 8000, 1},
      {"--mode decoder --bands 20 --backend rtl-sdr", 2.4e6, (14074000 + 14078000) / 2.0 + 8000, 1},
      {"--mode decoder --bands 20 --backend rx888", 8e6, (14074000 + 14078000) / 2.0, 1},
      {"--mode decoder --bands 20 --center-frequency 14.2M --sample-rate 2M", 2e6, 14.2e6, 1},
      {"--mode decoder --bands 20,40 --spot off", 10e6, (7038600 + 14095600 + 4000) / 2.0 + 8000, 0},
      {"--mode decoder --frequencies 14M,14.1M --spot off", 10e6, (14000000 + 14104000) / 2.0 + 8000, 0},
      {"--mode decoder --bands 20,40 --band-modes 40: --known-channels", 10e6, (7038600 + 14078000) / 2.0 + 8000, 1},
      {"--mode receivers --audio-channel id=a,frequency=7.1M,modulation=LSB", 10e6, 7098500 + 8000, 0},
      {"--mode hybrid --audio-channel id=a,frequency=7.1M,enabled=off", 10e6, 146e6, 0},
      {"--mode decoder --frequencies 14.074M --iq-file /i --start-utc 20260101_000000", 64000,
       (14074000 + 14078000) / 2.0 + 8000, 1},
      {"--mode audio -f 7M", 2048000, 0, 0},
      {"--mode audio -f 7M --backend rtl-sdr", 1024000, 0, 0},
  };
  for (const Derived& c : cases) {
    const auto options = parse_line(c.line);
    EXPECT_EQ(options.wideband() ? options.capture.sample_rate : options.hardware.sample_rate, c.sample_rate) << c.line;
    EXPECT_EQ(options.reception.center_frequency, c.center) << c.line;
    EXPECT_EQ(options.decoding.decoders, c.decoders) << c.line;
  }
  const auto five = parse_line("--mode decoder --bands 40,30,20 --modes FT8,FT4 --workers 9");
  EXPECT_EQ(five.decoding.workers, 9U);
  EXPECT_EQ(five.hardware.audio_rate, 12000);
  EXPECT_EQ(five.hardware.bandwidth, 4000);
  EXPECT_EQ(parse_line("--mode receivers --center-frequency 7M --workers 9").decoding.workers, 1U);
  const unsigned automatic = parse_line("--mode decoder --frequencies " + many_frequencies(90)).decoding.workers;
  EXPECT_TRUE(automatic >= 1 && automatic <= 32);
  EXPECT_EQ(parse_line("--mode decoder --bands 20").decoding.workers, 1U);
  EXPECT_EQ(parse_line("-f 7M -m AM").hardware.bandwidth, 6000);
  EXPECT_EQ(parse_line("-f 7M").hardware.bandwidth, 3000);
  EXPECT_FALSE(parse_line("--mode decoder --bands 20 --spot off --known-channels").known.known_channels);
}

TEST(OptionCheck, TellsACaptureThatIsTooNarrowFromEverythingElse) {
  EXPECT_THROW(parse_line("--mode decoder --bands 20,2"), options::CaptureFitError);
  EXPECT_THROW(parse_line("--mode decoder --bands 20 --audio-channel id=a,frequency=144M"), options::CaptureFitError);
  EXPECT_EQ(refusal_of_line("--mode decoder --bands 20 --center-frequency 14M --audio-channel id=a,frequency=18M"),
            "The bands do not fit the usable capture bandwidth; increase --sample-rate, change --center-frequency, or "
            "tick closer bands");
  EXPECT_EQ(refusal_of_line("--mode decoder --bands 20 --audio-channel id=a,frequency=144M,enabled=off"), "");
  EXPECT_THROW(parse_line("--mode decoder --bands 6 --backend rx888 --rx888-rate half"), options::CaptureFitError);
}

}  // namespace
