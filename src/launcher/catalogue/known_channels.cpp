#include "launcher/catalogue/known_channels.h"

#include <algorithm>
#include <array>
#include <span>

#include <fmt/format.h>

#include "launcher/catalogue/fax_stations.h"
#include "launcher/catalogue/rtty_segments.h"
#include "options/channels/specification.h"

namespace sig {
namespace {

// Calling frequencies are those that the modes' own communities publish; W1AW's and the NCDXF beacons' are theirs.
struct Row {
  std::string_view id;
  double dial_hz;
  bool usb;
  double bandwidth_hz;
  std::string_view spec, label, description;
};

constexpr std::array<Row, 20> rows_before_fax{{
    {"psk20", 14069500, true, 4200, "modes=auto,olivia=8/250@3000+8/250@3500", "PSK 20 m",
     "PSK31 from 14070.1 to 14073.0 kHz; Olivia 8/250 calls at 14072.5 or 14073.0"},
    {"ibp17", 18109200, true, 1600, "modes=auto", "Beacons 17 m", "NCDXF beacons on 18110.0 kHz"},
    {"ibp12", 24929200, true, 1600, "modes=auto", "Beacons 12 m", "NCDXF beacons on 24930.0 kHz"},
    {"ibp10", 28199200, true, 1600, "modes=auto", "Beacons 10 m", "NCDXF beacons on 28200.0 kHz"},
    {"psk40", 7068700, true, 5000, "modes=auto,olivia=8/250@3800+8/250@4300", "PSK 40 m",
     "PSK31 from 7070.1 to 7073.0 kHz; Olivia calls at 7072.5 or 7073.0"},
    {"w1aw40", 7093500, true, 5000, "modes=auto,pairs=on", "W1AW 40 m", "W1AW digital bulletin near 7096.5 kHz"},
    {"psk80", 3579500, true, 5000, "modes=auto,olivia=8/250@3500", "PSK 80 m",
     "PSK31 from 3580.1 to 3583.0 kHz; W1AW CW on 3581.5"},
    {"jtty20", 14090000, true, 3000, "modes=jtty", "JTTY 20 m", "JTTY dial 14.090 MHz, the main meeting place"},
    {"jtty40", 7078000, true, 3000, "modes=jtty", "JTTY 40 m", "JTTY dial 7.078 MHz"},
    {"jtty15", 21090000, true, 3000, "modes=jtty", "JTTY 15 m", "JTTY dial 21.090 MHz"},
    {"jtty10", 28090000, true, 3000, "modes=jtty", "JTTY 10 m", "JTTY dial 28.090 MHz"},
    {"jtty80", 3572000, true, 3000, "modes=jtty", "JTTY 80 m", "JTTY dial 3.572 MHz"},
    {"jtty30", 10140000, true, 3000, "modes=jtty", "JTTY 30 m", "JTTY dial 10.140 MHz"},
    {"jtty17", 18104000, true, 3000, "modes=jtty", "JTTY 17 m", "JTTY dial 18.104 MHz"},
    {"jtty12", 24920000, true, 3000, "modes=jtty", "JTTY 12 m", "JTTY dial 24.920 MHz"},
    {"jtty160", 1839000, true, 3000, "modes=jtty", "JTTY 160 m", "JTTY dial 1.839 MHz"},
    {"jtty6", 50160000, true, 3000, "modes=jtty", "JTTY 6 m", "JTTY dial 50.160 MHz"},
    {"jtty2", 144160000, true, 3000, "modes=jtty", "JTTY 2 m", "JTTY dial 144.160 MHz"},
    {"msk6", 50260000, true, 3000, "modes=msk144", "MSK144 6 m",
     "MSK144 dial 50.260 MHz, the meteor-scatter calling frequency"},
    {"msk2", 144360000, true, 3000, "modes=msk144", "MSK144 2 m",
     "MSK144 dial 144.360 MHz, the meteor-scatter calling frequency"},
}};

constexpr std::array<Row, 18> rows_after_fax{{
    {"sstv20", 14230000, true, 3000, "modes=sstv,report=off", "SSTV 14230", "SSTV calling frequency on 20 m"},
    {"sstv15", 21340000, true, 3000, "modes=sstv,report=off", "SSTV 21340", "SSTV calling frequency on 15 m"},
    {"sstv10", 28680000, true, 3000, "modes=sstv,report=off", "SSTV 28680", "SSTV calling frequency on 10 m"},
    {"sstv40", 7171000, false, 3000, "modes=sstv,report=off", "SSTV 7171",
     "SSTV calling frequency on 40 m (lower sideband)"},
    {"cw20", 14046700, true, 1600, "modes=auto", "W1AW CW 20 m", "W1AW code practice and CW bulletins on 14047.5 kHz"},
    {"olw20", 14106500, true, 5000, "modes=auto,olivia=32/1000@1000+16/1000@1000+32/1000@2000+16/1000@2000,skip=rtty",
     "Olivia 20 m", "Olivia 32/1000 and 16/1000 centred on 14107.5 or 14108.5 kHz"},
    {"dig17", 18096500, true, 3400, "modes=auto,olivia=8/250@2500", "Digital 17 m",
     "Olivia calls at 18099.0 kHz; PSK31 below the FT8 slot"},
    {"w1aw17", 18103000, true, 3500, "modes=auto,pairs=on", "W1AW 17 m",
     "W1AW digital bulletin near 18104.0 kHz, above the FT8 slot"},
    {"cw17", 18076700, true, 1600, "modes=auto", "W1AW CW 17 m", "W1AW CW on 18077.5 kHz"},
    {"psk15", 21069500, true, 4200, "modes=auto,olivia=8/250@3000+8/250@3500", "PSK 15 m",
     "PSK31 from 21070.1 to 21073.0 kHz"},
    {"cw15", 21066700, true, 1600, "modes=auto", "W1AW CW 15 m", "W1AW CW on 21067.5 kHz"},
    {"psk10", 28119500, true, 4200, "modes=auto,olivia=8/250@3000+8/250@3500", "PSK 10 m",
     "PSK31 from 28120.1 to 28123.0 kHz"},
    {"bcn10a", 28254500, true, 1600, "modes=auto", "Beacon N4ES", "N4ES beacon on 28255.3 kHz (Tryon, North Carolina)"},
    {"bcn10b", 28293700, true, 1600, "modes=auto", "Beacon KK3AM",
     "KK3AM beacon on 28294.5 kHz (Murphy, North Carolina)"},
    {"cw40", 7046700, true, 1600, "modes=auto", "W1AW CW 40 m", "W1AW CW on 7047.5 kHz"},
    {"rtty40", 7083000, true, 5000, "modes=auto,pairs=on", "RTTY 40 m", "RTTY from 7083 to 7088 kHz"},
    {"dig30", 10141000, true, 5000, "modes=auto,olivia=8/250@2000+16/1000@3000", "Digital 30 m",
     "PSK31 and Olivia from 10141 to 10146 kHz"},
    {"dwd30", 10099300, true, 3000, "modes=auto,pairs=on", "DWD RTTY 30 m",
     "German weather service RTTY on 10100.8 kHz, 50 baud, all day"},
}};

/// Fax tones fall at the usual audio offset when the dial lies this far below the centre of the emission.
constexpr double fax_audio_hz = 1900;

void append(std::vector<KnownChannel>& channels, std::span<const Row> rows) {
  for (const auto& row : rows)
    channels.push_back({std::string(row.id), row.dial_hz, row.usb, row.bandwidth_hz, std::string(row.spec),
                        std::string(row.label), std::string(row.description)});
}

std::vector<KnownChannel> build() {
  std::vector<KnownChannel> channels;
  append(channels, rows_before_fax);
  for (const auto& fax : fax_transmitters())
    channels.push_back({std::string(fax.id), fax.centre_hz - fax_audio_hz, true, 3000,
                        "modes=wefax,wefax=120/576,report=off",
                        fmt::format("{} {:.1f}", fax.station, fax.centre_hz / 1000), fax.description});
  append(channels, rows_after_fax);
  return channels;
}

struct BandEdges {
  std::string_view band;
  double low, high;
};
/// The bands that are not scanned for RTTY.
constexpr std::array<BandEdges, 3> other_bands{
    {{"60", 5250000, 5450000}, {"2", 144000000, 148000000}, {"70cm", 420000000, 450000000}}};

}  // namespace

const std::vector<KnownChannel>& known_channels() {
  static const std::vector<KnownChannel> channels = build();
  return channels;
}

const KnownChannel* find_known_channel(std::string_view id) {
  const auto& channels = known_channels();
  const auto found =
      std::find_if(channels.begin(), channels.end(), [id](const KnownChannel& row) { return row.id == id; });
  return found == channels.end() ? nullptr : &*found;
}

bool is_fax_channel(const KnownChannel& row) {
  return row.spec.starts_with("modes=wefax,");
}

std::string known_channel_specification(const KnownChannel& row) {
  return fmt::format("id={},frequency={},modulation={},bandwidth={},{}", row.id, options::number_text(row.dial_hz),
                     row.usb ? "USB" : "LSB", options::number_text(row.bandwidth_hz), row.spec);
}

std::string_view known_channel_band(double hz) {
  if (const RttySegment* const segment = rtty_segment_at(hz)) return segment->band();
  for (const auto& other : other_bands)
    if (hz >= other.low && hz <= other.high) return other.band;
  return {};
}

}  // namespace sig
