// Stations of all families with settings that help and settings that hinder, as many as a test asks for.
#pragma once

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "base/text.h"
#include "launcher/catalogue/bands.h"
#include "options/station.h"

namespace launcher {

class StationGenerator {
 public:
  explicit StationGenerator(unsigned seed) : random_(seed) {}

  options::Station station(std::size_t most_bands, std::size_t most_receivers) {
    options::Station station;
    station.common["mode"] = one_in(4) ? "hybrid" : "decoder";
    station.common["modes"] = std::array{"FT8", "FT8,WSPR", "FT4,JS8", "FT8,FT4,JS8,WSPR"}.at(below(4));
    if (one_in(4)) station.common["known-channels"] = "true";
    station.common["bands"] = base::join(some_bands(most_bands), ",");
    if (station.common["mode"] == "hybrid")
      for (std::size_t id = below(3); id > 0; --id)
        station.common[fmt::format("audio.v{}", id)] =
            fmt::format("id=v{},frequency={}", id, 1800000 + below(50000000));
    for (std::size_t count = 1 + below(most_receivers), index = 0; index < count; ++index)
      station.receivers.push_back(receiver(fmt::format("R{:02}", index)));
    for (const std::string& band : some_bands(most_bands))
      if (one_in(6)) station.assignments[band] = station.receivers[below(station.receivers.size())].serial;
    return station;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  bool one_in(std::size_t n) { return below(n) == 0; }

  std::vector<std::string> some_bands(std::size_t most) {
    std::vector<std::string> names;
    for (const BandPreset& band : band_presets)
      names.emplace_back(band.name);
    std::shuffle(names.begin(), names.end(), random_);
    names.resize(1 + below(most));
    return names;
  }

  options::ReceiverProfile receiver(const std::string& serial) {
    options::ReceiverProfile receiver;
    receiver.serial = serial;
    receiver.enabled = receiver.available = true;
    receiver.spot = !one_in(8);
    switch (below(3)) {
      case 0:
        receiver.model = "RX-888 MKII";
        receiver.settings["backend"] = "rx888";
        if (one_in(2)) receiver.settings["rx888-rate"] = "half";
        if (one_in(4)) receiver.settings["rx888-coverage"] = "all";
        break;
      case 1:
        receiver.model = std::array{"RTL-SDR Blog V4", "RTL-SDR Blog V3", "Generic RTL2832U"}.at(below(3));
        receiver.settings["backend"] = "rtl-sdr";
        if (one_in(4)) receiver.settings["sample-rate"] = "1024000";
        if (one_in(4)) receiver.settings["direct-sampling"] = one_in(2) ? "off" : "q";
        break;
      default:
        receiver.model = std::array{"RSP1A", "RSP2", "RSPduo", "RSPdx", ""}.at(below(5));
        if (one_in(4)) receiver.settings["sample-rate"] = one_in(2) ? "2048000" : "6M";
        if (one_in(4)) receiver.settings["lna-state"] = std::to_string(below(30));
        if (receiver.model == "RSPduo" && one_in(2)) receiver.settings["antenna"] = "HiZ";
    }
    if (one_in(6)) receiver.settings["center-frequency"] = fmt::format("{}k", 1500 + below(30000));
    if (one_in(8)) receiver.settings["bandwidth"] = one_in(3) ? "6k" : "3k";
    return receiver;
  }

  std::mt19937 random_;
};

}  // namespace launcher
