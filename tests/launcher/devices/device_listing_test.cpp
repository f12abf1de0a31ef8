#include "launcher/device_listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace launcher {

// For the messages of failed tests.
void PrintTo(const ListedDevice& device, std::ostream* out) {
  *out << '[' << device.model << '|' << device.serial << '|' << device.backend << '|' << device.available << '|'
       << device_status_word(device.status) << ']';
}

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

ListedDevice device(std::string model, std::string serial, std::string backend = "sdrplay", bool available = true,
                    DeviceStatus status = DeviceStatus::ready) {
  return {std::move(serial), std::move(model), std::move(backend), available, status};
}

TEST(DeviceLine, GivesAReceiverOrNothing) {
  using std::string_literals::operator""s;
  const struct {
    std::string text;
    std::vector<ListedDevice> devices;
  } cases[] = {
      {"0: RSP1 serial=ONE available=1", {device("RSP1", "ONE")}},
      {"12: RSP 1 A serial=X_-y available=1 backend=rtl-sdr more\r\n", {device("RSP 1 A", "X_-y", "rtl-sdr")}},
      {"0: RSP2 serial=ONE available=0", {device("RSP2", "ONE", "sdrplay", false, DeviceStatus::busy)}},
      {"0: RSP2 (not responding) serial=ONE available=1",
       {device("RSP2", "ONE", "sdrplay", true, DeviceStatus::not_responding)}},
      {"0: A serial=B available=7 serial=C available=1", {device("A serial=B available=7", "C")}},
      {"0: A serial= serial=C available=1", {device("A serial=", "C")}},
      {"0: RX-888 serial=usb-2-1 available=1", {device("RX-888", "usb-2-1", "rx888")}},
      {"0: A serial=\xff\0\x01 available=1"s, {device("A", "\xff\0\x01"s)}},
      {"0: A serial=B available=1\n0: C serial=D available=1\n3: E serial=B available=0",
       {device("E", "B", "sdrplay", false, DeviceStatus::busy), device("C", "D")}},
      {": A serial=B available=1", {}},
      {"0:A serial=B available=1", {}},
      {" 0: A serial=B available=1", {}},
      {"0: A serial=B  available=1", {}},
      {"0: A serial= available=1", {}},
      {"0: A serial=B available=", {}},
      {"0: A\n serial=B available=1", {}},
      {"", {}},
  };
  for (const auto& example : cases)
    EXPECT_EQ(parse_device_listing(example.text).devices, example.devices) << example.text;
}

TEST(DeviceNotes, AreOfKnownFamilies) {
  const auto listing = parse_device_listing(
      "note: RX-888: The RX-888 needs its USB driver.\r\nNote: RTL-SDR: In use: close it.\nnote: SDRplay: \n"
      "note: HackRF: no\nnote: RX-888 no colon\nNOTE: RX-888: no\n0: RSP2 serial=ONE available=1");
  EXPECT_THAT(listing.notes, ElementsAre(DiscoveryNote{"RX-888", "The RX-888 needs its USB driver."},
                                         DiscoveryNote{"RTL-SDR", "In use: close it."}, DiscoveryNote{"SDRplay", ""}));
  EXPECT_THAT(listing.devices, SizeIs(1));
}

TEST(DeviceReports, StandForAnRx888ThatIsNoReceiver) {
  const auto listing = parse_device_listing(
      "0: RX-888 (needs firmware) serial=usb-2-1 available=0 backend=rx888\n"
      "1: RX-888 MKII (not responding) serial=009028 available=1 backend=rx888\n");
  EXPECT_THAT(listing.devices, IsEmpty());
  ASSERT_THAT(listing.reports, SizeIs(2));
  EXPECT_EQ(listing.reports[0].short_text(), "RX-888 on 2-1 needs firmware.");
  EXPECT_EQ(listing.reports[0].long_text(),
            "RX-888 on usb-2-1 needs firmware. Put SDDC_FX3.img in ~/.local/share/tarnwick/firmware/ and press Refresh "
            "receivers.");
  EXPECT_EQ(listing.reports[1].short_text(), "RX-888 on 009028 has stopped responding; unplug and replug it.");
}

TEST(DeviceListing, TakesLongLinesAndManyDevices) {
  std::string text = "0: ";
  for (int i = 0; i < 200000; ++i)
    text += " serial=x available=";
  text += "\n";
  for (int i = 0; i < 20000; ++i)
    text += std::to_string(i) + ": RSP1 serial=S" + std::to_string(i / 2) + " available=1\n";
  EXPECT_THAT(parse_device_listing(text).devices, SizeIs(10000));
}

}  // namespace
}  // namespace launcher
