// Every option of the receive engine, once: name, kind, limits, words, where it applies. The scan of a command line,
// the keys of profiles, the help text and the second look at limits all walk this table.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "options/option_kinds.h"

namespace options {

namespace option_rows {
using O = ReceiverOptions;
using namespace kinds;

// clang-format off
inline constexpr std::array table{
    // Reception
    word<&O::reception, &Reception::mode>("--mode", "audio|decoder|hybrid|receivers", "what to do with the signals",
        "--mode must be audio, decoder, hybrid or receivers"),
    per_receiver(text<&O::reception, &Reception::backend>("--backend", "sdrplay|rtl-sdr|rx888", "receiver family")),
    custom("--modes", "MODE,...", "digital modes to decode: FT8, FT4, JS8, JS8-FAST, JS8-TURBO, JS8-SLOW, WSPR", values::set_modes),
    list("--bands", "BAND,...", "bands to decode at their usual frequencies", values::set_bands),
    list("--band-modes", "BAND:MODE+MODE,...", "modes of single bands, instead of --modes", values::set_band_modes),
    list("--frequencies", "[MODE:]HZ,...", "dial frequencies to decode", values::set_frequencies),
    per_receiver(number<&O::reception, &Reception::center_frequency>("--center-frequency", "HZ", "centre of the capture (default automatic)")),
    custom("--audio-channel", "SPEC", "add a listening channel, or replace the one with its id", values::add_audio_channel),
    custom("--remove-audio-channel", "ID", "remove a listening channel", values::remove_audio_channel),
    action("--clear-audio-channels", "remove all listening channels", values::clear_audio_channels),
    custom("--analysis-channel", "SPEC", "add an analysis channel, or replace the one with its id", values::add_analysis_channel),
    custom("--remove-analysis-channel", "ID", "remove an analysis channel", values::remove_analysis_channel),
    action("--clear-analysis-channels", "remove all analysis channels", values::clear_analysis_channels),
    optional_text<&O::reception, &Reception::audio_control>("--audio-control", "PATH", "socket for live control"),
    optional_text<&O::reception, &Reception::audio_command>("--audio-command", "TEXT", "helper of the live control"),

    // Decoding
    number<&O::decoding, &Decoding::decoders>("--decoders", "N", "decoders, one for each channel (default automatic)",
        {1, 96, "--decoders must be 1..96"}),
    number<&O::decoding, &Decoding::workers>("--workers", "N", "decodes at one time (default automatic)",
        {1, 32, "--workers must be 1..32"}),
    small_integer<&O::decoding, &Decoding::decode_depth>("--decode-depth", "effort of a decode, 1..3"),
    number<&O::decoding, &Decoding::decoder_timeout>("--decoder-timeout", "SECONDS", "longest decode"),
    number<&O::decoding, &Decoding::wspr_timeout>("--wspr-timeout", "SECONDS", "longest WSPR decode"),
    number<&O::decoding, &Decoding::buffer_seconds>("--buffer-seconds", "SECONDS", "audio kept while decoders are busy",
        {0.5, 30, "--buffer-seconds must be 0.5..30"}),
    text<&O::decoding, &Decoding::decoder>("--decoder", "PROGRAM", "FT8 and FT4 decoder"),
    text<&O::decoding, &Decoding::wspr_decoder>("--wspr-decoder", "PROGRAM", "WSPR decoder"),
    text<&O::decoding, &Decoding::js8_decoder>("--js8-decoder", "PROGRAM", "JS8 decoder"),
    text<&O::decoding, &Decoding::all_txt>("--all-txt", "FILE", "decode log to append to"),
    optional_text<&O::decoding, &Decoding::work_dir>("--work-dir", "DIRECTORY", "where decoders keep their files"),

    // Known frequencies
    flag<&O::known, &KnownFrequencies::known_channels>("--known-channels", "decode on the known frequencies of other modes"),
    flag<&O::known, &KnownFrequencies::known_channels_report>("--known-channels-report", "report callsigns heard on known frequencies"),
    list("--known-modes", "all|none|WORD,...", "kinds of signal to decode on known frequencies", values::set_known_modes),
    list("--known-band-modes", "BAND:WORD+WORD,...", "kinds for single bands, instead of --known-modes", values::set_known_band_modes),
    custom("--fax-channels", "ID,...|none", "weather fax stations to receive (default all)", values::set_fax_channels),
    flag<&O::known, &KnownFrequencies::online_callsign_check>("--online-callsign-check", "look callsigns up before they count"),
    on_off<&O::known, &KnownFrequencies::spot>("--spot", "decode and report (off: listen only)"),
    on_off<&O::known, &KnownFrequencies::share>("--share", "let other stations listen"),
    flag<&O::known, &KnownFrequencies::survey>("--survey", "look for signals away from the known frequencies"),
    number<&O::known, &KnownFrequencies::survey_bandwidth>("--survey-bandwidth", "HZ", "width of the survey",
        {48e3, 64e6, "--survey-bandwidth must be 48k..64M Hz"}),
    number<&O::known, &KnownFrequencies::survey_max_decoders>("--survey-max-decoders", "N", "signals surveyed at one time",
        {1, 255, "--survey-max-decoders must be 1..255"}),
    number<&O::known, &KnownFrequencies::survey_min_snr>("--survey-min-snr", "DB", "weakest signal surveyed",
        {0, 60, "--survey-min-snr must be 0..60 dB"}),
    text<&O::known, &KnownFrequencies::survey_journal>("--survey-journal", "FILE|off", "journal of the survey",
        "Survey journal path cannot be empty; use off to disable it"),
    text<&O::known, &KnownFrequencies::signal_journal>("--signal-journal", "FILE|off", "journal of signals",
        "Signal journal path cannot be empty; use off to disable it"),
    text<&O::known, &KnownFrequencies::wefax_images>("--wefax-images", "DIRECTORY", "where received pictures go",
        "WEFAX image directory cannot be empty"),

    // History and reporting
    optional_text<&O::history, &History::database>("--history-db", "FILE", "history of decode cycles"),
    number<&O::history, &History::days>("--history-days", "DAYS", "how long the history is kept",
        {1, 365, "History retention must be 1..365 days"}),
    flag<&O::reporting, &Reporting::pskreporter>("--pskreporter", "report to PSK Reporter"),
    flag<&O::reporting, &Reporting::wsprnet>("--wsprnet", "report to WSPRnet"),
    optional_text<&O::reporting, &Reporting::callsign>("--callsign", "CALL", "callsign of the receiving station"),
    optional_text<&O::reporting, &Reporting::grid>("--grid", "LOCATOR", "Maidenhead locator of the receiving station"),
    list("--dx-clusters", "HOST:PORT,...", "DX clusters to report to", values::set_dx_clusters),

    // Hardware, all families
    optional_text<&O::hardware, &Hardware::serial>("--serial", "ID", "receiver to use"),
    per_receiver(number<&O::hardware, &Hardware::sample_rate>("--sample-rate", "HZ", "sample rate of the receiver (default automatic)",
        {1, 64e6, "Sample rate must be a positive integer in Hz, at most 64M", true})),
    number<&O::hardware, &Hardware::audio_rate>("--audio-rate", "HZ", "sample rate of the audio"),
    number<&O::hardware, &Hardware::frequency>("--frequency", "HZ", "dial frequency in mode audio"),
    per_receiver(number<&O::hardware, &Hardware::bandwidth>("--bandwidth", "HZ", "width of a channel")),
    word<&O::hardware, &Hardware::modulation>("--modulation", "USB|LSB|AM", "modulation in mode audio",
        "Modulation must be USB, LSB, or AM"),
    per_receiver(number<&O::hardware, &Hardware::audio_gain>("--audio-gain", "FACTOR", "gain of the audio")),
    number<&O::hardware, &Hardware::duration>("--duration", "SECONDS", "stop after this time (0: never)"),
    per_receiver(number<&O::hardware, &Hardware::ppm>("--ppm", "PPM", "correction of the receiver's clock")),

    // SDRplay
    per_receiver(small_integer<&O::sdrplay, &Sdrplay::gain_reduction>("--gain-reduction", "IF gain reduction in dB, 20..59")),
    per_receiver(small_integer<&O::sdrplay, &Sdrplay::lna_state>("--lna-state", "RF gain state")),
    per_receiver(on_off<&O::sdrplay, &Sdrplay::agc>("--agc", "let the receiver set its IF gain")),
    per_receiver(optional_text<&O::sdrplay, &Sdrplay::antenna>("--antenna", "A|B|C|HiZ", "antenna input")),
    on_off<&O::sdrplay, &Sdrplay::bias_tee>("--bias-t", "power on the antenna input"),
    per_receiver(on_off<&O::sdrplay, &Sdrplay::rf_notch>("--rf-notch", "MW and FM broadcast notch")),
    per_receiver(on_off<&O::sdrplay, &Sdrplay::mw_notch>("--mw-notch", "MW notch of the Hi-Z input")),
    per_receiver(optional_text<&O::sdrplay, &Sdrplay::usb_mode>("--usb-mode", "bulk|isochronous", "USB transfer")),
    per_receiver(optional_text<&O::sdrplay, &Sdrplay::api_library>("--api-library", "FILE", "SDRplay API library")),

    // RX-888
    per_receiver(optional_text<&O::rx888, &Rx888::library>("--rx888-library", "FILE", "RX-888 library")),
    per_receiver(optional_text<&O::rx888, &Rx888::firmware>("--rx888-firmware", "FILE", "RX-888 firmware")),
    number<&O::rx888, &Rx888::recovery>("--rx888-recovery", "SECONDS", "how long to wait for a lost RX-888",
        {0, 600, "--rx888-recovery must be 0..600 seconds"}),
    command_line(number<&O::rx888, &Rx888::return_wait>("--rx888-return-wait", "SECONDS", "how long a listing waits for an RX-888",
        {0, 30, "--rx888-return-wait must be 0..30 seconds"})),
    per_receiver(number<&O::rx888, &Rx888::attenuation>("--rx888-attenuation", "DB", "HF attenuator")),
    per_receiver(number<&O::rx888, &Rx888::gain>("--rx888-gain", "DB", "VGA gain")),
    per_receiver(text<&O::rx888, &Rx888::rate>("--rx888-rate", "full|half", "ADC at 128 or 64 MS/s")),
    per_receiver(text<&O::rx888, &Rx888::coverage>("--rx888-coverage", "bands|all", "capture sized to the selection, or everything")),
    word<&O::rx888, &Rx888::gpu>("--gpu", "auto|off", "receive engine on an NVIDIA GPU",
        "--gpu must be auto (the receive engine on an NVIDIA GPU when one answers) or off (the CPU)"),
    word<&O::rx888, &Rx888::gpu>("--rx888-gpu", "auto|off", "older name of --gpu",
        "--gpu must be auto (the receive engine on an NVIDIA GPU when one answers) or off (the CPU)"),
    optional_text<&O::rx888, &Rx888::receive>("--rx888-receive", "TEXT", "passed on to the RX-888 library"),
    per_receiver(on_off<&O::rx888, &Rx888::bias_tee>("--rx888-bias-t", "power on the RX-888's antenna inputs")),
    per_receiver(on_off<&O::rx888, &Rx888::reference>("--rx888-reference", "external clock reference")),

    // RTL-SDR
    text<&O::rtl, &RtlSdr::host>("--rtl-host", "HOST", "external rtl_tcp server"),
    number<&O::rtl, &RtlSdr::port>("--rtl-port", "PORT", "port of the external rtl_tcp server",
        {1, 65535, "RTL TCP port must be an integer between 1 and 65535"}),
    per_receiver(number<&O::rtl, &RtlSdr::gain>("--rtl-gain", "DB", "tuner gain")),
    optional_text<&O::rtl, &RtlSdr::tcp_program>("--rtl-tcp-program", "PROGRAM", "rtl_tcp to run"),
    optional_text<&O::rtl, &RtlSdr::library>("--rtl-library", "FILE", "RTL-SDR library"),
    per_receiver(on_off<&O::rtl, &RtlSdr::bias_tee>("--rtl-bias-t", "power on the dongle's antenna input")),
    per_receiver(word<&O::rtl, &RtlSdr::direct_sampling>("--direct-sampling", "auto|off|i|q|q-check", "direct sampling for HF",
        "Direct sampling must be auto, off, i, q, or q-check")),
    refused(custom("--rtl-device", "INDEX", "not taken: use --serial", values::refuse),
        "Select an RTL-SDR dongle with --serial ID (from --list-devices), or select it on an external server: rtl_tcp -d "
        "INDEX_OR_SERIAL with --rtl-host/--rtl-port here"),

    // Daemon and files
    flag<&O::daemon, &Daemon::enabled>("--daemon", "run in the background"),
    flag<&O::daemon, &Daemon::stats>("--stats", "print statistics"),
    text<&O::daemon, &Daemon::pid_file>("--pid-file", "FILE", "process id of the daemon"),
    text<&O::daemon, &Daemon::log_file>("--log-file", "FILE", "output of the daemon"),
    optional_text<&O::files, &Files::iq_file>("--iq-file", "FILE", "recording to receive from"),
    optional_text<&O::files, &Files::wav>("--wav", "FILE", "audio recording to write"),
    optional_text<&O::files, &Files::start_utc>("--start-utc", "YYYYMMDD_HHMMSS", "when the recording was made"),
    number<&O::files, &Files::iq_rate>("--iq-rate", "HZ", "sample rate of the recording"),
    text<&O::files, &Files::sink>("--sink", "NAME", "audio output"),

    // Requests
    action("--help", "show this text", set_flag<&O::requests, &Requests::help>),
    action("--version", "show the version", set_flag<&O::requests, &Requests::version>),
    command_line(custom("--config", "FILE", "read options from a profile", values::already_read)),
    action("--kill", "end the daemon", set_flag<&O::requests, &Requests::kill>),
    action("--list-devices", "list the receivers", set_flag<&O::requests, &Requests::list_devices>),
    action("--list-frequencies", "list the frequencies of bands and modes", set_flag<&O::requests, &Requests::list_frequencies>),
    refused(action("--bind-usb-receivers", "not on this system", values::refuse),
        "--bind-usb-receivers is available only on Windows"),
};
// clang-format on

/// Other spellings on the command line.
struct Alias {
  std::string_view spelling, argument;
};
inline constexpr std::array<Alias, 5> aliases{
    {{"-h", "--help"}, {"-kill", "--kill"}, {"-f", "--frequency"}, {"-b", "--bandwidth"}, {"-m", "--modulation"}}};

}  // namespace option_rows

inline constexpr const auto& option_table = option_rows::table;

/// The row of a name without dashes; null if there is none.
const Option* find_option(std::string_view name);

inline std::size_t option_index(const Option& option) {
  return static_cast<std::size_t>(&option - option_table.data());
}

/// A row of the table, by a name that is checked when the code is compiled.
class OptionId {
 public:
  consteval OptionId(const char* name) : index_(search(name)) {}
  [[nodiscard]] constexpr std::size_t index() const { return index_; }

 private:
  static consteval std::size_t search(std::string_view name) {
    for (std::size_t i = 0; i < option_table.size(); ++i)
      if (option_table[i].name() == name) return i;
    throw "no such option";
  }
  std::size_t index_;
};

/// Whether an option was there, whatever its value; an empty value says nothing where the table has it so.
inline bool is_given(const ReceiverOptions& options, OptionId id) {
  return options.given[id.index()];
}

}  // namespace options
