#include "sim/listing.h"

#include <regex>

#include <gtest/gtest.h>

#include "base/text.h"

namespace {

TEST(DeviceListing, SaysHowEachReceiverStands) {
  const std::vector<sim::Receiver> receivers{
      {"RSPdx", "1706026B40", "sdrplay", sim::Presence::ready, 1, {}},
      {"RX-888 MKII", "009028E61B4A1F2C", "rx888", sim::Presence::needs_firmware, 1, {}},
      {"RX-888 MKII", "00E0A61F2C4B9028", "rx888", sim::Presence::not_responding, 1, {}},
      {"RTL-SDR Blog V4", "00000001", "rtl-sdr", sim::Presence::busy, 1, {}},
  };
  EXPECT_EQ(
      sim::device_listing(receivers),
      "0: RSPdx serial=1706026B40 available=1\n"
      "1: RX-888 MKII (needs firmware) serial=usb-2-2 available=0 backend=rx888\n"
      "2: RX-888 MKII (not responding) serial=usb-2-3 available=0 backend=rx888\n"
      "3: RTL-SDR Blog V4 serial=00000001 available=0 backend=rtl-sdr\n"
      "note: RX-888: The RX-888 MKII on usb-2-2 has no firmware.\n"
      "note: RX-888: The RX-888 MKII on usb-2-3 does not answer.\n"
      "note: RTL-SDR: The RTL-SDR 00000001 is in use by another program. Close other SDR programs and press Refresh "
      "receivers.\n");
  EXPECT_EQ(sim::device_listing({}), "");
}

TEST(DeviceListing, KeepsItsFormForTheUsualReceivers) {
  const std::regex form("^[0-9]+: (.*?) serial=([^ ]+) available=([01]).*$");
  const std::string text = sim::device_listing(sim::load_scenario("").receivers);
  auto lines = base::split(text, '\n');
  EXPECT_EQ(lines.back(), "");
  lines.pop_back();
  EXPECT_EQ(lines.size(), 3U);
  for (const auto line : lines)
    EXPECT_TRUE(std::regex_match(std::string(line), form)) << line;
}

}  // namespace
