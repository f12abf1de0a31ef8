#include <algorithm>
#include <stdexcept>

#include <fmt/format.h>

#include "options/check_steps.h"
#include "options/option_table.h"

namespace options::steps {
namespace {

using launcher::DigitalMode;

bool enabled(const Reception& reception, DigitalMode mode) {
  return std::find(reception.modes.begin(), reception.modes.end(), mode) != reception.modes.end();
}

DigitalMode mode_of(const Reception& reception, const ListedFrequency& listed) {
  if (!listed.mode) {
    if (reception.modes.size() == 1) return reception.modes.front();
    throw std::runtime_error(
        "With multiple --modes, prefix each --frequencies entry: FT8:14.074M,FT4:14.080M; or use --bands");
  }
  const auto mode = launcher::parse_digital_mode(*listed.mode);
  if (mode && enabled(reception, *mode)) return *mode;
  throw std::runtime_error(fmt::format("Frequency mode is not enabled by --modes: {}", *listed.mode));
}

const std::vector<DigitalMode>& modes_of(const Reception& reception, const launcher::BandPreset* band) {
  for (const auto& entry : reception.band_modes)
    if (entry.band == band) return entry.modes;
  return reception.modes;
}

void expand_band(ReceiverOptions& options, const ListedBand& band) {
  Reception& reception = options.reception;
  const auto& modes = modes_of(reception, band.preset);
  const bool any = options.known.spot && std::any_of(modes.begin(), modes.end(), [&](DigitalMode mode) {
                     return launcher::dial_frequency(*band.preset, mode) != 0;
                   });
  if (!any) {
    if (options.known.spot && !modes.empty() && !options.known.known_channels)
      throw std::runtime_error(fmt::format(
          "No preset for the selected modes on this band; use an explicit --frequencies entry: {}", band.typed));
    reception.listened_bands.push_back(band.preset);
    return;
  }
  for (const DigitalMode mode : modes)
    if (const double dial = launcher::dial_frequency(*band.preset, mode); dial != 0)
      reception.channels.push_back({dial, mode});
}

}  // namespace

void choose_one_selection(ReceiverOptions& options) {
  if (is_given(options, "bands") && is_given(options, "frequencies"))
    throw std::runtime_error("Choose --bands or --frequencies, not both");
}

void require_modes(ReceiverOptions& options) {
  const Reception& reception = options.reception;
  if (!reception.modes.empty()) return;
  if (is_given(options, "frequencies")) throw std::runtime_error("--frequencies needs a mode; --modes is empty");
  if (is_given(options, "bands") && reception.band_modes.empty() && !options.known.known_channels)
    throw std::runtime_error(
        "--modes is empty: give FT8, FT4, JS8 or WSPR, or add --known-channels to decode only on the known frequencies "
        "of these bands");
}

void repeat_limits(ReceiverOptions& options) {
  // A record may have been filled by code, not by the scan.
  for (const Option& option : option_table)
    if (option.current != nullptr && options.given[option_index(option)])
      check_limits(option.current(options), option.limits, option.limits.whole);
  if (options.known.wefax_images.empty()) throw std::runtime_error("WEFAX image directory cannot be empty");
}

void expand_channels(ReceiverOptions& options) {
  Reception& reception = options.reception;
  auto& channels = options.known.spot ? reception.channels : reception.listened_channels;
  for (const ListedFrequency& listed : reception.frequencies)
    channels.push_back({listed.frequency, mode_of(reception, listed)});
  for (const ListedBand& band : reception.bands)
    expand_band(options, band);
  if (!options.known.spot) options.known.known_channels = false;
}

}  // namespace options::steps
