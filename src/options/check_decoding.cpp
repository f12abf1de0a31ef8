#include <algorithm>
#include <thread>

#include "base/callsign.h"
#include "base/locator.h"
#include "base/text.h"
#include "options/check_steps.h"
#include "options/option_table.h"

namespace options::steps {
namespace {

constexpr std::size_t channel_limit = 96;

void refuse_decoder_options(const ReceiverOptions& options) {
  const bool modes = is_given(options, "modes") && !options.reception.modes.empty();
  if (modes || is_given(options, "bands") || is_given(options, "frequencies") || is_given(options, "band-modes") ||
      is_given(options, "decoders"))
    fail("Decoder options require --mode decoder");
}

/// Half the machine is left to everything else.
unsigned automatic_workers(std::size_t channels) {
  static const unsigned threads = std::thread::hardware_concurrency();
  const auto wanted = std::min<std::size_t>({threads / 2, channels, 32});
  return std::max(1U, static_cast<unsigned>(wanted));
}

bool listens(const Reception& reception) {
  return !reception.audio_channels.empty() || !reception.analysis_channels.empty();
}

void count_decoders(ReceiverOptions& options) {
  const Reception& reception = options.reception;
  const std::size_t count = reception.channels.size();
  const bool nothing = reception.bands.empty() && reception.frequencies.empty() && !listens(reception);
  if (count > channel_limit || nothing)
    fail("Specify 1..96 decoder channels with --frequencies or --bands (each band/mode pair counts)");
  if (is_given(options, "decoders") && options.decoding.decoders != count)
    fail("--decoders must match the number of selected band/mode or frequency/mode channels");
  options.decoding.decoders = static_cast<unsigned>(count);
  if (options.decoding.workers == 0) options.decoding.workers = automatic_workers(count);
}

bool decodes(const Reception& reception, launcher::DigitalMode first, launcher::DigitalMode last) {
  return std::any_of(reception.channels.begin(), reception.channels.end(),
                     [&](const auto& channel) { return channel.mode >= first && channel.mode <= last; });
}

bool lacks_program(const ReceiverOptions& options) {
  using launcher::DigitalMode;
  const Decoding& decoding = options.decoding;
  const auto selected = [&](DigitalMode first, DigitalMode last) { return decodes(options.reception, first, last); };
  return (decoding.decoder.empty() && selected(DigitalMode::ft8, DigitalMode::ft4)) ||
         (decoding.js8_decoder.empty() && selected(DigitalMode::js8, DigitalMode::js8_slow)) ||
         (decoding.wspr_decoder.empty() && selected(DigitalMode::wspr, DigitalMode::wspr));
}

bool in_range(double value, double above, double most) {
  return value > above && value <= most;
}

}  // namespace

void prepare_channels(ReceiverOptions& options) {
  if (!options.wideband()) return refuse_decoder_options(options);
  if (is_given(options, "frequency"))
    fail("Use --frequencies for decoder channels and --center-frequency for the receiver center");
  Hardware& hardware = options.hardware;
  if (!is_given(options, "audio-rate")) hardware.audio_rate = 12000;
  if (!is_given(options, "bandwidth")) hardware.bandwidth = 4000;
  if (!(hardware.bandwidth >= 1000 && hardware.bandwidth <= 5000))
    fail("Decoder channel bandwidth must be 1000..5000 Hz");
  if (options.reception.mode == ReceptionMode::receivers)
    options.decoding.workers = 1;
  else
    count_decoders(options);
}

void judge_decoders(ReceiverOptions& options) {
  if (!options.wideband()) return;
  const Decoding& decoding = options.decoding;
  if (!in_range(decoding.workers, 0, 32) || !in_range(decoding.decode_depth, 0, 3) ||
      !in_range(decoding.decoder_timeout, 0, 60))
    fail("Workers must be 1..32, decode depth 1..3 and decoder timeout >0..60 seconds");
  if (!in_range(decoding.wspr_timeout, 0, 110)) fail("WSPR timeout must be >0..110 seconds");
  if (lacks_program(options) || decoding.all_txt.empty())
    fail("Selected decoder executable and ALL.TXT path cannot be empty");
}

void judge_station(ReceiverOptions& options) {
  const Reporting& reporting = options.reporting;
  if (!reporting.callsign.empty() && !base::is_callsign(base::upper(reporting.callsign)))
    fail("Invalid --callsign; use your receiving station's callsign");
  if (!reporting.grid.empty() && !base::is_locator(base::upper(reporting.grid)))
    fail("Invalid --grid; use a 4, 6 or 8 character Maidenhead locator");
}

void judge_reporting(ReceiverOptions& options) {
  const Reporting& reporting = options.reporting;
  const bool replay = !options.files.iq_file.empty();
  const bool anonymous = reporting.callsign.empty() || reporting.grid.empty();
  if (reporting.pskreporter && replay) fail("--pskreporter requires live reception; IQ replay is not published");
  if (reporting.wsprnet && replay) fail("--wsprnet requires live reception; IQ replay is not published");
  if (reporting.pskreporter && anonymous) fail("--pskreporter requires --callsign and --grid");
  if (reporting.wsprnet && anonymous) fail("--wsprnet requires --callsign and --grid");
}

}  // namespace options::steps
