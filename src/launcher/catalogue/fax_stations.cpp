#include "launcher/catalogue/fax_stations.h"

#include <array>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"

namespace sig {
namespace {

struct Station {
  std::string_view name;       ///< as it labels channels
  std::string_view full_name;  ///< as sentences name it, with who runs it; the same for the United States' stations
  std::string_view offers = "Weather fax";
  bool by_carrier = false;  ///< publishes the carrier below the centre
};

constexpr Station nmg{"NMG New Orleans", "NMG New Orleans"};
constexpr Station nmf{"NMF Boston", "NMF Boston"};
constexpr Station nmc{"NMC Pt. Reyes", "NMC Pt. Reyes"};
constexpr Station kvm{"KVM70 Honolulu", "KVM70 Honolulu"};
constexpr Station noj{"NOJ Kodiak", "NOJ Kodiak"};
constexpr Station dwd{"DWD Pinneberg", "DWD Pinneberg, Deutscher Wetterdienst"};
constexpr Station vmc{"VMC Charleville", "VMC Charleville, Australian Bureau of Meteorology"};
constexpr Station vmw{"VMW Wiluna", "VMW Wiluna, Australian Bureau of Meteorology"};
constexpr Station jmh{"JMH Tokyo", "JMH Tokyo, Japan Meteorological Agency"};
constexpr Station hll{"HLL2 Seoul", "HLL2 Seoul, Korea Meteorological Administration"};
constexpr Station hsw{"HSW64 Bangkok", "HSW64 Bangkok, Thai Meteorological Department", "Weather fax", true};
constexpr Station gya{"GYA Northwood", "GYA Northwood, Royal Navy"};
constexpr Station cbv{"CBV Valparaiso", "CBV Valparaiso, Chilean Navy"};
constexpr Station cbm{"CBM Punta Arenas", "CBM Punta Arenas, Chilean Navy"};
constexpr Station vco{"VCO Sydney NS", "VCO Sydney, Nova Scotia, Canadian Coast Guard", "Ice charts"};
constexpr Station svj{"SVJ4 Athens", "SVJ4 Athens, Hellenic National Meteorological Service", "Weather fax", true};

// Runs of charts, UTC.
using Hours = std::string_view;
constexpr Hours around_the_clock;
constexpr Hours nmg_all = "0000-0255 0600-0855 1200-1455 1800-2055";
constexpr Hours nmg_day = "1200-1455 1800-2055";
constexpr Hours nmf_all = "0230-0502 0755-1054 1400-1610 1723-2254";
constexpr Hours nmf_night = "0230-0502 0755-1054";
constexpr Hours nmf_day = "1400-1610 1723-2254";
constexpr Hours nmc_all = "0143-0420 0657-1019 1124-1238 1403-1618 1820-0006";
constexpr Hours nmc_night = "0143-0420 0657-1019 1124-1238 1403-1618";
constexpr Hours nmc_day = "1820-0006";
constexpr Hours kvm_all = "0200-0409 0535-1302 1400-1609 1735-0102";
constexpr Hours kvm_night = "0535-1302 1400-1609";
constexpr Hours kvm_day = "0200-0409 1735-0102";
constexpr Hours noj_all = "0343-0608 0953-1209 1543-1808 2153-0028";
constexpr Hours dwd_all = "0430-0535 0638-1133 1236-1406 1508-1550 1636-1648 1800-1951 2115-2220";
constexpr Hours australia_all = "0600-0633 0730-1710 1800-1838 1915-2040 2215-0500";
constexpr Hours australia_night = "0900-1900";
constexpr Hours australia_day = "1900-0900";
constexpr Hours hll_all = "0000-1200 1200-0000";
constexpr Hours hll_night = "1200-0000";
constexpr Hours hll_day = "0000-1200";
constexpr Hours hsw_all = "0050-0620 0700-1040 1300-1310 1700-1740 2300-2340";
constexpr Hours gya_all = "1200-0934";
constexpr Hours gya_night = "2136-0520";
constexpr Hours gya_day = "0612-0934 1200-2008";
constexpr Hours cbv_all = "1115-1145 1630-1700 1915-1945 2200-2340";
constexpr Hours vco_4416 = "1121-1202 1741-1801";
constexpr Hours vco_6915 = "2220-2240 2331-2351";
constexpr Hours svj_all = "0845-1056";

struct Row {
  std::string_view id;
  const Station& station;
  double centre_hz;
  Hours hours;
};

constexpr std::array<Row, 54> rows{{
    {"faxnmg8", nmg, 8503900, nmg_all},          {"faxnmg12", nmg, 12789900, nmg_all},
    {"faxnmg4", nmg, 4317900, nmg_all},          {"faxnmg17", nmg, 17146400, nmg_day},
    {"faxnmf6", nmf, 6340500, nmf_all},          {"faxnmf9", nmf, 9110000, nmf_all},
    {"faxnmf4", nmf, 4235000, nmf_night},        {"faxnmf12", nmf, 12750000, nmf_day},
    {"faxnmc8", nmc, 8682000, nmc_all},          {"faxnmc12", nmc, 12786000, nmc_all},
    {"faxnmc17", nmc, 17151200, nmc_all},        {"faxnmc22", nmc, 22527000, nmc_day},
    {"faxkvm16", kvm, 16135000, kvm_day},        {"faxnmc4", nmc, 4346000, nmc_night},
    {"faxkvm9", kvm, 9982500, kvm_night},        {"faxkvm11", kvm, 11090000, kvm_all},
    {"faxnoj2", noj, 2054000, noj_all},          {"faxnoj4", noj, 4298000, noj_all},
    {"faxnoj8", noj, 8459000, noj_all},          {"faxnoj12", noj, 12412500, noj_all},
    {"faxdwd3", dwd, 3855000, dwd_all},          {"faxdwd7", dwd, 7880000, dwd_all},
    {"faxdwd13", dwd, 13882500, dwd_all},        {"faxvmc2", vmc, 2628000, australia_night},
    {"faxvmc5", vmc, 5100000, australia_all},    {"faxvmc11", vmc, 11030000, australia_all},
    {"faxvmc13", vmc, 13920000, australia_all},  {"faxvmc20", vmc, 20469000, australia_day},
    {"faxvmw5", vmw, 5755000, australia_night},  {"faxvmw7", vmw, 7535000, australia_all},
    {"faxvmw10", vmw, 10555000, australia_all},  {"faxvmw15", vmw, 15615000, australia_all},
    {"faxvmw18", vmw, 18060000, australia_day},  {"faxjmh3", jmh, 3622500, around_the_clock},
    {"faxjmh7", jmh, 7795000, around_the_clock}, {"faxjmh13", jmh, 13988500, around_the_clock},
    {"faxhll3", hll, 3585000, hll_night},        {"faxhll5", hll, 5857500, hll_all},
    {"faxhll7", hll, 7433500, hll_all},          {"faxhll9", hll, 9165000, hll_all},
    {"faxhll13", hll, 13570000, hll_day},        {"faxhsw7", hsw, 7396900, hsw_all},
    {"faxgya2", gya, 2618500, gya_night},        {"faxgya4", gya, 4610000, gya_all},
    {"faxgya8", gya, 8040000, gya_all},          {"faxgya11", gya, 11086500, gya_day},
    {"faxcbv4", cbv, 4228000, cbv_all},          {"faxcbv8", cbv, 8677000, cbv_all},
    {"faxcbm4", cbm, 4322000, around_the_clock}, {"faxcbm8", cbm, 8696000, around_the_clock},
    {"faxvco4", vco, 4416000, vco_4416},         {"faxvco6", vco, 6915100, vco_6915},
    {"faxsvj4", svj, 4482900, svj_all},          {"faxsvj8", svj, 8106900, svj_all},
}};

constexpr double carrier_offset_hz = 1900;
constexpr int one_chart = 10;  ///< minutes; a run this short is named by its start alone

int minute_of(std::string_view clock) {
  const int digits = static_cast<int>(*base::parse_int(clock));
  return digits / 100 * 60 + digits % 100;
}

std::vector<FaxBlock> blocks_of(Hours hours) {
  std::vector<FaxBlock> blocks;
  for (const std::string_view run : base::words(hours))
    blocks.push_back({minute_of(run.substr(0, 4)), minute_of(run.substr(5))});
  return blocks;
}

std::string clock_text(int minute) {
  return fmt::format("{:02}{:02}", minute / 60, minute % 60);
}

std::string hours_text(const std::vector<FaxBlock>& blocks) {
  if (blocks.empty()) return "around the clock";
  std::vector<std::string> runs;
  for (const auto& block : blocks) {
    const bool single = block.end - block.start == one_chart;
    runs.push_back(clock_text(block.start) + (single ? "" : " to " + clock_text(block.end)));
  }
  return base::enumerate(runs, "and") + " UTC";
}

std::string describe(const Row& row, const std::vector<FaxBlock>& blocks) {
  const Station& station = row.station;
  const double khz = row.centre_hz / 1000;
  const std::string head = fmt::format("{} from {}", station.offers, station.full_name);
  if (station.name == station.full_name)
    return fmt::format("{} on {:.1f} kHz, on the air {}", head, khz, hours_text(blocks));
  if (station.by_carrier)
    return fmt::format("{}, carrier {:.1f} kHz (centre {:.1f}), charts {}", head,
                       (row.centre_hz - carrier_offset_hz) / 1000, khz, hours_text(blocks));
  return fmt::format("{}, on {:.1f} kHz, charts {}", head, khz, hours_text(blocks));
}

std::vector<FaxTransmitter> build() {
  std::vector<FaxTransmitter> transmitters;
  for (const auto& row : rows) {
    std::vector<FaxBlock> blocks = blocks_of(row.hours);
    std::string description = describe(row, blocks);
    transmitters.push_back({row.id, row.station.name, row.centre_hz, std::move(blocks), std::move(description)});
  }
  return transmitters;
}

}  // namespace

const std::vector<FaxTransmitter>& fax_transmitters() {
  static const std::vector<FaxTransmitter> transmitters = build();
  return transmitters;
}

}  // namespace sig
