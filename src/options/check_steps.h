// The steps of the check stage, each one group of rules. All throw what options/check.h says.
#pragma once

#include <stdexcept>

#include "options/receiver_options.h"

namespace options::steps {

[[noreturn]] inline void fail(const char* words) {
  throw std::runtime_error(words);
}

// What is selected (check_selection.cpp)
void choose_one_selection(ReceiverOptions& options);
void require_modes(ReceiverOptions& options);
void repeat_limits(ReceiverOptions& options);
void expand_channels(ReceiverOptions& options);

// The process and the receiver (check_hardware.cpp)
void judge_daemon(ReceiverOptions& options);
void judge_backend(ReceiverOptions& options);
void judge_rx888(ReceiverOptions& options);
void judge_other_families(ReceiverOptions& options);
void fill_sample_rate(ReceiverOptions& options);
void judge_rates(ReceiverOptions& options);
void judge_rtl_sdr(ReceiverOptions& options);

// What is decoded and reported (check_decoding.cpp)
void prepare_channels(ReceiverOptions& options);
void judge_decoders(ReceiverOptions& options);
void judge_station(ReceiverOptions& options);
void judge_reporting(ReceiverOptions& options);

// Where it is captured (check_capture.cpp)
void fit_channels(ReceiverOptions& options);
void judge_frequencies(const ReceiverOptions& options);
launcher::CaptureSettings capture_settings(const ReceiverOptions& options);
launcher::CaptureNeeds capture_needs(const ReceiverOptions& options);
void judge_replay(ReceiverOptions& options);
void refuse_audio_mode_options(ReceiverOptions& options);
void judge_listening_channels(ReceiverOptions& options);

// The rest (check_ranges.cpp)
void judge_audio_mode(ReceiverOptions& options);
void judge_common_ranges(ReceiverOptions& options);
void judge_requests(ReceiverOptions& options);

}  // namespace options::steps
