// What one receiver can capture with its settings as they are, and what its settings cost it. In Hz. Pure; any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "options/station.h"

namespace launcher {

struct CaptureCapability {
  std::string label;                   ///< "{model} · {serial}"
  std::string backend;                 ///< "sdrplay", "rtl-sdr", "rx888", or what stands there instead
  std::string center_text, rate_text;  ///< the explicit `center-frequency` and `sample-rate` as typed; empty: automatic
  std::vector<std::string> limit_keys;  ///< the settings that narrow this receiver now, first the one to mention
  double set_rate{};                    ///< the rate that it runs at; for an RX-888 the fastest it may come to
  double set_span{};                    ///< usable at that rate
  double full_span{};                   ///< usable with an automatic rate
  std::string unusable_reason;          ///< empty when its settings can be read; the spans mean nothing otherwise
};

/// Builds the record by the option check itself, on a band that every receiver can hold.
CaptureCapability capability_of(const options::Profile& common, const options::ReceiverProfile& receiver);

/// How one of the record's `limit_keys` narrows the receiver, as the middle of a sentence.
std::string capture_text(const CaptureCapability& record, std::string_view key);

/// Hz as MHz, or S/s as MS/s, with at most this many decimals: 2048000 is "2.048", 10000000 is "10".
std::string mega_text(double value, int decimals);

}  // namespace launcher
