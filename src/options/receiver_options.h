// One receiver's settings as the engine understands them: what the command line or a profile says, with defaults, and
// what the check derives from it. Frequencies are in Hz, durations in seconds. File names of defaults without a slash
// lie in the state directory. A plain value; any thread.
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "launcher/capture/capture.h"
#include "launcher/catalogue/band_modes.h"
#include "launcher/catalogue/bands.h"
#include "launcher/catalogue/known_filters.h"
#include "options/channels/analysis_channel.h"
#include "options/channels/audio_channel.h"

namespace options {

enum class ReceptionMode : std::uint8_t {
  audio,     ///< one capture demodulated into a virtual sink
  decoder,   ///< digital modes
  hybrid,    ///< digital modes and listening channels
  receivers  ///< listening channels only
};
std::string_view reception_mode_text(ReceptionMode mode);

/// A band of `bands`, with the spelling that messages repeat.
struct ListedBand {
  const launcher::BandPreset* preset{};
  std::string typed;
};
/// An entry of `frequencies`, with or without a "MODE:" in front.
struct ListedFrequency {
  std::optional<std::string> mode;
  double frequency{};
};

struct Reception {
  ReceptionMode mode = ReceptionMode::audio;
  std::string backend = "sdrplay";
  launcher::Family family = launcher::Family::sdrplay;  ///< the backend, once checked
  std::vector<launcher::DigitalMode> modes{launcher::DigitalMode::ft8};
  std::vector<ListedBand> bands;
  std::vector<ListedFrequency> frequencies;
  std::vector<launcher::BandModes> band_modes;
  std::vector<launcher::DecoderChannel> channels;  ///< what bands, frequencies and modes come to; empty with spot off
  std::vector<launcher::DecoderChannel> listened_channels;  ///< `frequencies` with spot off: captured, not decoded
  std::vector<const launcher::BandPreset*> listened_bands;  ///< bands that are captured, but give no channel
  std::vector<AudioChannel> audio_channels;                 ///< each id once
  std::vector<AnalysisChannel> analysis_channels;           ///< each id once
  double center_frequency = 0;                              ///< 0 is automatic before the check, never after it
  std::string audio_control, audio_command;
};

struct Decoding {
  unsigned decoders = 0;  ///< 0 is automatic before the check: one for each channel
  unsigned workers = 0;   ///< 0 is automatic before the check
  unsigned decode_depth = 2;
  double decoder_timeout = 12, wspr_timeout = 60, buffer_seconds = 8;
  std::string decoder = "jt9", wspr_decoder = "wsprd", js8_decoder = "js8-wav";
  std::string all_txt = "ALL.TXT", work_dir;
};

struct KnownFrequencies {
  bool survey = false, known_channels = false, spot = true, share = true;
  bool known_channels_report = false, online_callsign_check = true;
  sig::KnownFilters filters;  ///< judged even where known channels are off
  double survey_bandwidth = 1500000, survey_min_snr = 6;
  unsigned survey_max_decoders = 16;
  std::string survey_journal = "signal-events.jsonl", signal_journal = "signal-events.jsonl";  ///< "off" for none
  std::string wefax_images = "wefax";
};

struct History {
  std::string database = "history.sqlite3";
  unsigned days = 7;
};

/// One "host:port" of a DX cluster.
struct DxCluster {
  std::string host;
  std::uint16_t port{};
};

struct Reporting {
  bool pskreporter = false, wsprnet = false;
  std::string callsign, grid;
  std::vector<DxCluster> dx_clusters;
};

struct Hardware {
  double sample_rate = 0;  ///< 0 until the check fills it in
  double audio_rate = 48000, frequency = 0, bandwidth = 3000;
  std::string modulation = "USB";
  double audio_gain = 10, duration = 0, ppm = 0;
  std::string serial;
};

struct Sdrplay {
  unsigned gain_reduction = 50, lna_state = 0;
  bool agc = true, bias_tee = false, rf_notch = false, mw_notch = false;
  std::string antenna, usb_mode, api_library;
};

struct Rx888 {
  std::string library, firmware, rate = "full", coverage = "bands", gpu = "auto", receive;
  double recovery = 130, return_wait = 0, attenuation = 10, gain = 0;
  bool bias_tee = false, reference = false;
};

struct RtlSdr {
  std::string host = "127.0.0.1", tcp_program, library, direct_sampling = "auto";
  unsigned port = 1234;
  double gain = 25;
  bool bias_tee = false;
};

struct Daemon {
  bool enabled = false, stats = true;
  std::string pid_file, log_file;
};

struct Files {
  std::string iq_file, wav, start_utc, sink = "sdrplay_rx_input";
  double iq_rate = 64000;
};

/// What the command line asks for instead of reception.
struct Requests {
  bool help = false, version = false, kill = false, list_devices = false, list_frequencies = false;
};

struct ReceiverOptions {
  Reception reception;
  Decoding decoding;
  KnownFrequencies known;
  History history;
  Reporting reporting;
  Hardware hardware;
  Sdrplay sdrplay;
  Rx888 rx888;
  RtlSdr rtl;
  Daemon daemon;
  Files files;
  Requests requests;
  launcher::Capture capture;  ///< where the capture lies, in the decoder modes
  std::bitset<128> given;     ///< by row of the option table; ask is_given of options/option_table.h

  /// Decoder, hybrid or receivers: anything but the one virtual audio channel.
  [[nodiscard]] bool wideband() const { return reception.mode != ReceptionMode::audio; }
};

}  // namespace options
