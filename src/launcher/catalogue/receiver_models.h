// What is known of each receiver model: antennas, notches, and which settings its family does not take. Constant data,
// any thread.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace launcher {

// The three families, as `backend` names them. A profile without one is an SDRplay profile.
inline constexpr std::string_view backend_sdrplay = "sdrplay";
inline constexpr std::string_view backend_rx888 = "rx888";
inline constexpr std::string_view backend_rtl_sdr = "rtl-sdr";

/// Settings of other families, which an RX-888 or a dongle is started without.
inline constexpr std::array<std::string_view, 10> keys_not_for_rx888{
    "gain-reduction", "lna-state", "usb-mode", "api-library", "serial",
    "rf-notch",       "mw-notch",  "antenna",  "agc",         "sample-rate"};
inline constexpr std::array<std::string_view, 7> keys_not_for_rtl_sdr{
    "gain-reduction", "lna-state", "usb-mode", "api-library", "rf-notch", "mw-notch", "antenna"};

/// Which switchable notch filters an SDRplay model has. A blank or unknown model has neither, and is not `known`.
struct ModelNotches {
  bool rf_notch = false;  ///< MW / FM
  bool mw_notch = false;  ///< of the Hi-Z input
  bool known = false;
};
ModelNotches model_notches(std::string_view model);

/// The choices of `antenna`; empty for a fixed input and for a model that is not known.
std::span<const std::string_view> model_antennas(std::string_view model);

// Both throw std::runtime_error with the operator's words for what the model cannot do, and let a blank or unknown
// model pass.
void check_antenna(std::string_view model, std::string_view antenna);
void check_notches(std::string_view model, bool rf_notch_on, bool mw_notch_on);

/// "RSP2 · ONE", the key of lines, cards and journals; the serial alone for a blank model.
std::string model_label(std::string_view model, std::string_view serial);

}  // namespace launcher
