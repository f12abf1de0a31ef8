#include <array>
#include <cmath>
#include <string>

#include "options/check_steps.h"
#include "options/option_table.h"

namespace options::steps {
namespace {

using launcher::Family;

bool any_given(const ReceiverOptions& options, std::initializer_list<OptionId> ids) {
  for (const OptionId id : ids)
    if (is_given(options, id)) return true;
  return false;
}

/// Switches that are off say nothing: a station's common settings may hold them for its other receivers.
bool asks_for_rx888(const ReceiverOptions& options) {
  return options.rx888.bias_tee || options.rx888.reference ||
         any_given(options, {"rx888-library", "rx888-firmware", "rx888-recovery", "rx888-attenuation", "rx888-gain",
                             "rx888-rate", "rx888-coverage", "rx888-gpu", "rx888-receive"});
}

bool is_replay(const ReceiverOptions& options) {
  return !options.files.iq_file.empty();
}

bool is_divided_clock(double rate, const Rx888& rx888) {
  double clock = launcher::adc_clock(rx888.rate == "half") / 2;
  const double most = rx888.coverage == "all" ? 64e6 : 32e6;
  for (int divisor = 2; divisor <= 256; divisor *= 2, clock /= 2)
    if (rate == clock) return rate <= most;
  return false;
}

bool is_rtl_rate(double rate) {
  return (rate >= 225001 && rate <= 300000) || (rate >= 900001 && rate <= 3200000);
}

}  // namespace

void judge_daemon(ReceiverOptions& options) {
  const Daemon& daemon = options.daemon;
  const bool pid_given = is_given(options, "pid-file"), log_given = is_given(options, "log-file");
  if (pid_given && daemon.pid_file.empty()) fail("Daemon PID path cannot be empty");
  if (pid_given && !daemon.enabled && !options.requests.kill) fail("--pid-file requires --daemon or --kill");
  if (log_given && !daemon.enabled) fail("--log-file requires --daemon");
  if (daemon.enabled && options.requests.list_devices) fail("--daemon cannot be combined with --list-devices");
  if (log_given && daemon.log_file.empty()) fail("Daemon log path cannot be empty");
}

void judge_backend(ReceiverOptions& options) {
  const auto family = launcher::parse_family(options.reception.backend);
  if (!family) fail("Backend must be sdrplay, rtl-sdr or rx888");
  options.reception.family = *family;
  if (asks_for_rx888(options) && (*family != Family::rx888 || is_replay(options)))
    fail("RX-888 settings require live --backend rx888");
  if (is_given(options, "rx888-return-wait") && !options.requests.list_devices)
    fail("--rx888-return-wait applies to --list-devices only");
}

void judge_rx888(ReceiverOptions& options) {
  if (options.reception.family != Family::rx888) return;
  const Rx888& rx888 = options.rx888;
  if (is_given(options, "agc") && options.sdrplay.agc)
    fail("RX-888 uses manual gain; set --rx888-gain and --rx888-attenuation");
  options.sdrplay.agc = false;
  if (rx888.rate != "full" && rx888.rate != "half")
    fail("--rx888-rate must be full (128 MS/s ADC, 0-64 MHz) or half (64 MS/s ADC, 0-32 MHz)");
  if (rx888.coverage != "bands" && rx888.coverage != "all")
    fail("--rx888-coverage must be bands (sized to the selection) or all (0 Hz to 90% of Nyquist)");
  if (!(rx888.gain >= -8 && rx888.gain <= 32))
    fail("RX-888 VGA gain range is -8..32 dB (applied hardware steps are approximate)");
  if (!(rx888.attenuation >= 0 && rx888.attenuation <= 31.5) ||
      rx888.attenuation * 2 != std::floor(rx888.attenuation * 2))
    fail("RX-888 attenuation must be 0..31.5 dB in 0.5 dB steps");
  if (any_given(options, {"gain-reduction", "lna-state", "api-library", "antenna", "iq-file"}))
    fail("RX-888 uses native HF direct sampling; SDRplay gain/API/antenna settings and IQ replay do not apply");
}

void judge_other_families(ReceiverOptions& options) {
  const bool rtl = options.reception.family == Family::rtl_sdr, sdrplay = options.reception.family == Family::sdrplay;
  const bool server = any_given(options, {"rtl-host", "rtl-port"});
  const Sdrplay& tuner = options.sdrplay;
  if (tuner.bias_tee && !sdrplay)
    fail("--bias-t is the SDRplay bias tee; the RX-888 has --rx888-bias-t and an RTL-SDR --rtl-bias-t");
  if ((tuner.rf_notch || tuner.mw_notch) && (!sdrplay || is_replay(options)))
    fail("Hardware notch filters require local SDRplay receivers");
  if (options.rtl.bias_tee && !rtl) fail("--rtl-bias-t requires --backend rtl-sdr");
  if (rtl && server && is_given(options, "serial"))
    fail(
        "--serial runs the bundled rtl_tcp for that dongle; --rtl-host/--rtl-port are for an external rtl_tcp server. "
        "Give one or the other");
  if (server && (!rtl || is_replay(options)))
    fail("--rtl-host/--rtl-port require the RTL-SDR TCP backend, without IQ replay");
  if (any_given(options, {"rtl-tcp-program", "rtl-library"}) && !rtl)
    fail("--rtl-tcp-program and --rtl-library require --backend rtl-sdr");
  if (rtl && is_given(options, "api-library"))
    fail("RTL-SDR runs through rtl_tcp, not the SDRplay API: --api-library does not apply");
  if (is_given(options, "usb-mode") && !sdrplay) fail("--usb-mode requires SDRplay hardware");
  if (is_given(options, "usb-mode") && tuner.usb_mode != "bulk" && tuner.usb_mode != "isochronous")
    fail("USB mode must be bulk or isochronous");
}

void fill_sample_rate(ReceiverOptions& options) {
  if (is_given(options, "sample-rate")) return;
  struct Defaults {
    double decoders, audio;
  };
  // By family, in its order. The RX-888 hears no single channel by itself.
  constexpr std::array<Defaults, 3> defaults{{{10e6, 2048e3}, {2400e3, 1024e3}, {8e6, 8e6}}};
  const Defaults& rates = defaults.at(static_cast<std::size_t>(options.reception.family));
  options.hardware.sample_rate = options.wideband() ? rates.decoders : rates.audio;
}

void judge_rates(ReceiverOptions& options) {
  const double rate = options.hardware.sample_rate;
  if (is_replay(options)) {
    if (is_given(options, "sample-rate"))
      fail("--sample-rate controls hardware; decoder IQ replay uses --iq-rate and audio replay uses 64000 Hz");
  } else if (options.reception.family == Family::sdrplay) {
    if (rate < 2e6 || rate > 10e6) fail("SDRplay hardware sample rate must be 2M through 10M Hz");
  } else if (options.reception.family == Family::rx888) {
    if (is_given(options, "sample-rate") && !is_divided_clock(rate, options.rx888))
      fail(
          "RX-888 complex output rate must be the ADC clock divided by a power of two, up to 32M Hz (64M with "
          "--rx888-coverage all)");
  } else if (!is_rtl_rate(rate)) {
    fail("RTL-SDR sample rate must be 225001..300000 or 900001..3200000 Hz");
  }
  if (!(options.hardware.audio_rate >= 8000 && options.hardware.audio_rate <= 192000))
    fail("Audio rate must be 8000..192000 Hz");
}

void judge_rtl_sdr(ReceiverOptions& options) {
  if (options.reception.family != Family::rtl_sdr) return;
  const double ppm = options.hardware.ppm;
  if (ppm != std::floor(ppm) || is_given(options, "antenna"))
    fail("RTL-SDR requires integer PPM and does not support --antenna");
}

}  // namespace options::steps
