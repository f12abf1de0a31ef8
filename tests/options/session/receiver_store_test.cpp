#include "options/receiver_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using options::Profile;
using options::ReceiverStore;
using Lines = std::vector<std::string>;

TEST(ReceiverStoreTest, TheJournalSaysWhatChanged) {
  struct Case {
    Profile stored, saved;
    Lines lines;
  } const cases[] = {
      {{}, {{"mode", "decoder"}, {"band.20.receiver", "A1"}}, {}},
      {{},
       {{"receiver.A1.model", "RSPdx"}, {"receiver.A1.gain-reduction", "33"}, {"receiver.A1.enabled", "true"}},
       {"RSPdx · A1: first saved with enabled='true', gain-reduction='33', model='RSPdx'"}},
      {{}, {{"receiver.A1.agc", ""}}, {"A1: first saved with agc=''"}},
      {{{"receiver.A1.agc", "on"}}, {{"receiver.A1.agc", "on"}}, {}},
      {{{"receiver.A1.model", "RSPdx"}, {"receiver.A1.agc", "on"}, {"receiver.A1.ppm", "0"}},
       {{"receiver.A1.model", "RSPdx"}, {"receiver.A1.agc", "off"}, {"receiver.A1.lna-state", "3"}},
       {"RSPdx · A1: agc: 'on' -> 'off'", "RSPdx · A1: lna-state: (none) -> '3'", "RSPdx · A1: ppm: '0' -> (none)"}},
      {{{"receiver.A1.antenna", "A"}}, {{"receiver.A1.antenna", ""}}, {"A1: antenna: 'A' -> ''"}},
      {{{"receiver.A1.model", "Unknown RSP"}},
       {{"receiver.A1.model", "RSPdx"}, {"receiver.B2.model", "RX-888"}},
       {"RSPdx · A1: model: 'Unknown RSP' -> 'RSPdx'", "RX-888 · B2: first saved with model='RX-888'"}},
      {{{"receiver.A1.agc", "on"}}, {{"mode", "decoder"}}, {}},
      // A serial may hold anything but a dot, an option too.
      {{}, {{"receiver.rtl usb=1-4.remote-x.y", "1"}}, {"rtl usb=1-4: first saved with remote-x.y='1'"}},
  };
  for (const auto& [stored, saved, lines] : cases) {
    ReceiverStore store;
    store.assign(stored);
    EXPECT_EQ(store.update(saved), lines);
    EXPECT_EQ(store.update(saved), Lines()) << "told once";
  }
}

TEST(ReceiverStoreTest, AReceiverOutsideTheSessionKeepsItsSection) {
  ReceiverStore store;
  store.assign({{"gui-format", "multi-receiver-v1"}, {"receiver.A1.agc", "on"}, {"receiver.A1.ppm", "2"}});
  (void)store.update({{"mode", "decoder"}, {"receiver.B2.agc", "off"}});
  EXPECT_EQ(store.profile(), (Profile{{"gui-format", "multi-receiver-v1"},
                                      {"receiver.A1.agc", "on"},
                                      {"receiver.A1.ppm", "2"},
                                      {"receiver.B2.agc", "off"}}));
  (void)store.update({{"receiver.A1.ppm", "3"}});
  ASSERT_NE(store.find("A1"), nullptr);
  EXPECT_EQ(*store.find("A1"), (ReceiverStore::Section{{"ppm", "3"}})) << "the new section replaces the stored one";
  EXPECT_EQ(store.find("C3"), nullptr);
}

}  // namespace
