#include <algorithm>
#include <charconv>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "base/time_text.h"
#include "options/check_steps.h"
#include "options/option_table.h"

namespace options::steps {
namespace {

constexpr std::size_t listening_limit = 16;

bool is_start_time(std::string_view text) {
  if (text.size() != 15 || text[8] != '_') return false;
  const auto field = [&](std::size_t from, std::size_t length) {
    const auto value = base::parse_unsigned(text.substr(from, length));
    return value ? static_cast<int>(*value) : -1;
  };
  return base::utc_seconds(field(0, 4), field(4, 2), field(6, 2), field(9, 2), field(11, 2), field(13, 2)).has_value();
}

template <typename Channel>
std::size_t enabled_count(const std::vector<Channel>& channels) {
  return static_cast<std::size_t>(
      std::count_if(channels.begin(), channels.end(), [](const Channel& channel) { return channel.enabled; }));
}

}  // namespace

void judge_frequencies(const ReceiverOptions& options) {
  const Reception& reception = options.reception;
  const auto receivable = [](double hz) { return hz >= 1000 && hz <= 2e9; };
  std::vector<std::pair<double, launcher::DigitalMode>> seen;
  for (const auto* channels : {&reception.channels, &reception.listened_channels})
    for (const launcher::DecoderChannel& channel : *channels) {
      if (!receivable(channel.frequency)) fail("Decoder frequencies must be between 1k and 2000M Hz");
      seen.emplace_back(channel.frequency, channel.mode);
    }
  if (is_given(options, "center-frequency") && !receivable(reception.center_frequency))
    fail("Decoder frequencies must be between 1k and 2000M Hz");
  std::sort(seen.begin(), seen.end());
  if (std::adjacent_find(seen.begin(), seen.end()) != seen.end()) fail("Duplicate decoder frequency/mode");
}

launcher::CaptureNeeds capture_needs(const ReceiverOptions& options) {
  const Reception& reception = options.reception;
  const double bandwidth = options.hardware.bandwidth;
  launcher::CaptureNeeds needs;
  for (const auto& channel : reception.channels)
    needs.decoders.add(launcher::channel_span(channel, bandwidth));
  needs.all = needs.decoders;
  for (const auto& channel : reception.listened_channels)
    needs.all.add(launcher::channel_span(channel, bandwidth));
  for (const auto* band : reception.listened_bands)
    needs.all.add(launcher::listened_span(*band, bandwidth));
  for (const auto& channel : reception.audio_channels)
    if (channel.enabled) needs.all.add(audio_passband(channel));
  for (const auto& channel : reception.analysis_channels)
    if (channel.enabled) needs.all.add(analysis_passband(channel));
  return needs;
}

launcher::CaptureSettings capture_settings(const ReceiverOptions& options) {
  const bool replay = !options.files.iq_file.empty();
  launcher::CaptureSettings settings;
  settings.family = options.reception.family;
  settings.sample_rate = replay ? options.files.iq_rate : options.hardware.sample_rate;
  settings.center = options.reception.center_frequency;
  settings.replay = replay;
  settings.half_rate = options.rx888.rate == "half";
  settings.whole_spectrum = options.rx888.coverage == "all";
  settings.ppm = options.hardware.ppm;
  return settings;
}

void fit_channels(ReceiverOptions& options) {
  if (!options.wideband()) return;
  judge_frequencies(options);
  options.capture = launcher::fit_capture(capture_settings(options), capture_needs(options));
  options.reception.center_frequency = options.capture.center;
}

void judge_replay(ReceiverOptions& options) {
  const Files& files = options.files;
  if (files.iq_file.empty()) {
    if (is_given(options, "start-utc") || is_given(options, "iq-rate"))
      fail("--start-utc and --iq-rate require --iq-file");
  } else if (options.wideband()) {
    if (!is_start_time(files.start_utc)) fail("Decoder IQ replay requires --start-utc YYYYMMDD_HHMMSS");
    if (!(files.iq_rate >= 64000 && files.iq_rate <= 10e6)) fail("Decoder IQ replay rate must be 64000..10M Hz");
  }
}

void refuse_audio_mode_options(ReceiverOptions& options) {
  if (!options.wideband()) return;
  if (is_given(options, "wav") || is_given(options, "sink") || is_given(options, "audio-rate") ||
      options.hardware.modulation != "USB")
    fail(
        "Decoder mode uses internal USB audio at 12000 Hz; --wav, --sink, --audio-rate and LSB/AM are audio-mode "
        "options");
}

void judge_listening_channels(ReceiverOptions& options) {
  const Reception& reception = options.reception;
  const std::size_t listening = enabled_count(reception.audio_channels) + enabled_count(reception.analysis_channels);
  if (listening > listening_limit) fail("At most 16 audio and analysis channels per SDR");
  if (!options.wideband() && !reception.audio_channels.empty())
    fail("Audio channels need decoder, hybrid or receivers mode");
  if (!options.wideband() && !reception.analysis_channels.empty())
    fail("Analysis channels need decoder, hybrid or receivers mode");
  if (reception.mode != ReceptionMode::receivers) return;
  if (!reception.channels.empty()) fail("Audio receiver mode does not take FTx channels");
  const bool aimed = is_given(options, "center-frequency") || listening > 0 || !reception.listened_bands.empty() ||
                     !reception.listened_channels.empty();
  if (!aimed) fail("Audio receiver mode needs --center-frequency or audio channels");
}

}  // namespace options::steps
