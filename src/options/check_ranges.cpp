#include "options/check_steps.h"
#include "options/option_table.h"

namespace options::steps {
namespace {

bool is_antenna(std::string_view text) {
  return text == "A" || text == "B" || text == "C" || text == "HiZ";
}

}  // namespace

void judge_audio_mode(ReceiverOptions& options) {
  if (options.wideband()) return;
  Hardware& hardware = options.hardware;
  if (!(hardware.frequency >= 1000 && hardware.frequency <= 2e9))
    fail("--frequency is required and must be between 1k and 2000M Hz");
  if (!is_given(options, "bandwidth") && hardware.modulation == "AM") hardware.bandwidth = 6000;
  if (!(hardware.bandwidth >= 200 && hardware.bandwidth <= 20000)) fail("Bandwidth must be between 200 and 20000 Hz");
  if (!(hardware.bandwidth < hardware.audio_rate / 2))
    fail("Receive audio bandwidth must be below half the audio sample rate");
}

void judge_common_ranges(ReceiverOptions& options) {
  const Hardware& hardware = options.hardware;
  const Files& files = options.files;
  if (!(hardware.audio_gain > 0 && hardware.audio_gain <= 10000))
    fail("Audio gain must be greater than 0 and at most 10000");
  if (!(hardware.duration >= 0 && hardware.duration <= 86400))
    fail("Duration must be between 0 and 86400 seconds (0 means unlimited)");
  if (!(hardware.ppm >= -1000 && hardware.ppm <= 1000)) fail("PPM must be between -1000 and 1000");
  if (options.sdrplay.gain_reduction < 20 || options.sdrplay.gain_reduction > 59)
    fail("Gain reduction must be 20 through 59 dB");
  if (files.sink.empty()) fail("Sink name cannot be empty");
  if (is_given(options, "antenna") && !is_antenna(options.sdrplay.antenna)) fail("Antenna must be A, B, C, or HiZ");
  if (!files.iq_file.empty() && files.iq_file == files.wav) fail("IQ input and WAV output must be different files");
  if (options.requests.list_devices && (!files.iq_file.empty() || !files.wav.empty()))
    fail("--list-devices cannot be combined with IQ replay or WAV output");
  if (!(options.rtl.gain >= -10 && options.rtl.gain <= 60)) fail("RTL gain must be between -10 and 60 dB");
  if (options.rtl.host.empty()) fail("RTL TCP host cannot be empty");
}

void judge_requests(ReceiverOptions& options) {
  const Requests& requests = options.requests;
  if (!options.reception.audio_command.empty() && options.reception.audio_control.empty())
    fail("--audio-command requires --audio-control");
  if (requests.kill) {
    auto others = options.given;
    for (const OptionId accepted : {OptionId("kill"), OptionId("pid-file"), OptionId("config")})
      others.reset(accepted.index());
    if (others.any()) fail("--kill accepts only --pid-file and --config; do not include receiver options or --daemon");
  }
  if (requests.list_frequencies && (options.daemon.enabled || requests.kill || requests.list_devices))
    fail("--list-frequencies cannot be combined with daemon control or --list-devices");
}

}  // namespace options::steps
