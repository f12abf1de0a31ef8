// The catalogue of RTL-SDR dongles: which USB strings mean which dongle, and what it can do below its tuner's range.
// Read from radios.conf, which an operator may add to. A damaged file costs the damaged lines, never the program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace radios {

/// What a dongle needs to hear HF. Values in the order of the documentation.
enum class HfClass : std::uint8_t { unknown, none, direct_q, upconverter };

/// One model, matched by its USB strings. An empty string matches anything.
struct RtlModel {
  std::string product;       ///< "{product}" in it stands for any text
  std::string manufacturer;  ///< exact
  std::string name;          ///< on screen; printable, 1 to 88 characters
  std::string source;        ///< where the claim comes from
  HfClass hf = HfClass::unknown;
};

struct UsbId {
  std::uint16_t vendor{}, product{};
  bool operator==(const UsbId&) const = default;
};

struct Catalogue {
  std::vector<UsbId> usb;
  std::vector<RtlModel> models;       ///< tried in this order
  std::vector<std::string> warnings;  ///< "{file}:{line}: {problem}, left out"
};

/// Adds what a file says to the end of the catalogue; `file` is only named in warnings. Linear, never throws.
void add_to_catalogue(Catalogue& catalogue, std::string_view text, std::string_view file);

/// The model of a dongle's USB strings, null if no entry matches.
const RtlModel* find_model(const Catalogue& catalogue, std::string_view manufacturer, std::string_view product);
/// By display name; unknown for a name that the catalogue lacks.
HfClass hf_class(const Catalogue& catalogue, std::string_view model_name);
/// What the card of such a dongle says of HF.
std::string_view hf_tooltip(HfClass hf);

/// The operator's own file, if there is one, then the one that was installed: beside the executable, else in
/// share/tarnwick one level above it. Only the second is missed, with a warning. Reads files.
Catalogue read_catalogue(const std::string& user_file);
/// The same, with the directory of the executable given.
Catalogue read_catalogue(const std::string& user_file, const std::string& executable_directory);
/// The same, read once per process: the first call decides. Any thread.
const Catalogue& catalogue(const std::string& user_file);

}  // namespace radios
