#include "options/check.h"

#include <array>

#include "options/check_steps.h"

namespace options {
namespace {

/// A listing or the end of a daemon needs no reception that works.
enum class For : std::uint8_t { everything, reception };

struct Step {
  void (*run)(ReceiverOptions&);
  For wanted = For::everything;
};

/// The order is a promise: an operator with several faults sees the same one from every program that reads the profile.
constexpr std::array order{
    Step{steps::choose_one_selection},
    Step{steps::require_modes},
    Step{steps::repeat_limits},
    Step{steps::expand_channels},
    Step{steps::judge_daemon},
    Step{steps::judge_backend},
    Step{steps::judge_rx888},
    Step{steps::judge_other_families},
    Step{steps::fill_sample_rate, For::reception},
    Step{steps::prepare_channels, For::reception},
    Step{steps::judge_decoders, For::reception},
    Step{steps::judge_station},
    Step{steps::judge_reporting},
    Step{steps::fit_channels, For::reception},
    Step{steps::judge_replay, For::reception},
    Step{steps::refuse_audio_mode_options, For::reception},
    Step{steps::judge_listening_channels, For::reception},
    Step{steps::judge_rates, For::reception},
    Step{steps::judge_rtl_sdr},
    Step{steps::judge_audio_mode, For::reception},
    Step{steps::judge_common_ranges},
    Step{steps::judge_requests},
};

bool is_reception(const Requests& requests) {
  return !requests.kill && !requests.list_devices && !requests.list_frequencies;
}

}  // namespace

void check(ReceiverOptions& options) {
  if (options.requests.help || options.requests.version) return;
  const bool reception = is_reception(options.requests);
  for (const Step& step : order)
    if (reception || step.wanted == For::everything) step.run(options);
}

UnfittedCheck check_but_fit(ReceiverOptions& options) {
  UnfittedCheck result;
  bool asked = false;
  for (const Step& step : order)
    try {
      if (step.run != steps::fit_channels) {
        step.run(options);
        continue;
      }
      steps::judge_frequencies(options);
      result.settings = steps::capture_settings(options);
      result.needs = steps::capture_needs(options);
      asked = true;
    } catch (const std::exception& error) {
      if (!asked) throw;
      result.refused_later = error.what();
      break;
    }
  return result;
}

}  // namespace options
