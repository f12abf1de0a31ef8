#include <filesystem>
#include <fstream>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/file_write.h"
#include "gui/settings/autostart_entry.h"
#include "gui/settings/settings_texts.h"
#include "options/receiver_options.h"

namespace {

using gui::RowControl;
using gui::SettingRow;
using options::Profile;

const SettingRow& row(std::string_view key) {
  for (const auto& card : gui::setting_cards())
    for (const auto& one : card.rows)
      if (one.key == key) return one;
  throw std::out_of_range(std::string(key));
}

TEST(SettingRows, ShowAProfileWithinTheirLimits) {
  const struct {
    const char* key;
    Profile profile;
    const char* shown;
  } cases[] = {
      {"callsign", {}, ""},
      {"callsign", {{"callsign", "K1ABC"}}, "K1ABC"},
      {"all-txt", {}, "/state/ALL.TXT"},
      {"history-db", {}, "/state/history.sqlite3"},
      {"history-db", {{"history-db", "off"}}, "off"},
      {"stats", {}, "true"},
      {"pskreporter", {}, "false"},
      {"pskreporter", {{"pskreporter", "true"}}, "true"},
      {"stats", {{"stats", "maybe"}}, "false"},
      {"workers", {}, "0"},
      {"workers", {{"workers", "33"}}, "32"},
      {"history-days", {{"history-days", "0"}}, "1"},
      {"history-days", {{"history-days", "a week"}}, "7"},
      {"decoder-timeout", {{"decoder-timeout", "12"}}, "12.0"},
      {"decoder-timeout", {{"decoder-timeout", "0.01"}}, "0.1"},
      {"wspr-timeout", {{"wspr-timeout", "111"}}, "110"},
      {"decode-depth", {{"decode-depth", "3"}}, "3"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(gui::shown_value(row(c.key), c.profile, "/state"), c.shown) << c.key;
}

TEST(SettingRows, WriteNoKeyForAutomaticAndBlank) {
  Profile profile = {{"workers", "4"}, {"sink", "speakers"}, {"all-txt", "/a"}, {"mode", "decoder"}};
  for (const char* key : {"workers", "sink", "all-txt"})
    gui::write_value(row(key), key == std::string("workers") ? "0" : "", profile);
  EXPECT_EQ(profile, (Profile{{"all-txt", ""}, {"mode", "decoder"}}));
  gui::write_value(row("workers"), "5", profile);
  EXPECT_EQ(profile["workers"], "5");
}

TEST(SettingRows, FallBackToWhatTheEngineAssumes) {
  const options::ReceiverOptions defaults;
  const auto shown = [](const char* key) { return std::stod(gui::shown_value(row(key), {}, "")); };
  EXPECT_EQ(shown("decode-depth"), defaults.decoding.decode_depth);
  EXPECT_EQ(shown("decoder-timeout"), defaults.decoding.decoder_timeout);
  EXPECT_EQ(shown("wspr-timeout"), defaults.decoding.wspr_timeout);
}

TEST(StationIdentity, NeedsACallsignAndALocator) {
  const struct {
    const char *callsign, *grid;
    bool valid;
  } cases[] = {
      {"K1ABC", "FN42", true},      {" k1abc ", "fn42ab", true}, {"DL/K1ABC/P", "JO62QM47", true},
      {"K1ABC", "", false},         {"", "FN42", false},         {"K1ABC", "FN4", false},
      {"K1ABC", "FN42a", false},    {"K1ABC", "SN42", false},    {"K1ABC", "FN42ay", false},
      {"K1ABC", "FN42abc0", false}, {"1234", "FN42", false},     {"K1ABC", "FNXX", false},
  };
  for (const auto& c : cases)
    EXPECT_EQ(gui::identity_is_valid(c.callsign, c.grid), c.valid) << c.callsign << c.grid;
}

TEST(SettingsTexts, SayWhetherTheStationReports) {
  EXPECT_EQ(gui::reporting_text({false, true, true}), "PSK Reporter: enabled. Station identity is valid.");
  EXPECT_EQ(gui::reporting_text({false, true, false}), "PSK Reporter: off. Station identity is valid.");
  EXPECT_EQ(gui::reporting_text({false, false, true}),
            "PSK Reporter: off. Enter a valid callsign and a 4, 6 or 8 character grid to enable reporting.");
  EXPECT_EQ(gui::reporting_text({true, false, true}), "PSK Reporter: off in audio mode.");
}

TEST(SettingsTexts, OnlyLiveSettingsCanBeChangedWhileReceiving) {
  std::set<std::string> live;
  for (const auto& card : gui::setting_cards())
    for (const auto& one : card.rows) {
      const auto state = gui::row_state(one, true, true);
      EXPECT_EQ(state.tooltip, state.sensitive ? one.tooltip : "Stop reception to change this setting.") << one.key;
      if (state.sensitive) live.insert(one.key);
      EXPECT_EQ(gui::row_state(one, false, false).sensitive, !one.needs_identity) << one.key;
    }
  EXPECT_THAT(live, testing::ElementsAre("decode-depth", "known-channels-report", "online-callsign-check",
                                         "pskreporter", "wsprnet"));
}

TEST(InterfaceSize, IsKeptInOneFormAndReadFromAny) {
  for (const int percent : gui::interface_sizes())
    EXPECT_EQ(gui::interface_size_percent(gui::interface_size_value(percent)), percent);
  for (const char* text : {"", "auto", "110", "-100", "150 %", "1e2"})
    EXPECT_EQ(gui::interface_size_percent(text), 0) << text;
  EXPECT_EQ(gui::interface_size_label(0, 125), "Automatic (125 %)");
  EXPECT_EQ(gui::interface_size_label(150, 125), "150 %");
}

TEST(AutostartEntry, IsAFileThatIsThereOrNot) {
  const std::string directory = testing::TempDir() + "tarnwick-autostart/config/autostart";
  std::filesystem::remove_all(testing::TempDir() + "tarnwick-autostart");
  const gui::Autostart autostart(directory, "/opt/a b/$x%\"\\tarnwick-gui");
  EXPECT_FALSE(autostart.present());
  autostart.set(true);
  EXPECT_TRUE(autostart.present());
  EXPECT_THAT(base::read_file(directory + "/tarnwick.desktop"),
              testing::HasSubstr("\nExec=\"/opt/a b/\\\\$x%%\\\\\"\\\\\\\\tarnwick-gui\"\n"));
  autostart.set(false);
  autostart.set(false);
  EXPECT_FALSE(autostart.present());

  std::ofstream(testing::TempDir() + "tarnwick-autostart/file") << "in the way";
  const gui::Autostart blocked(testing::TempDir() + "tarnwick-autostart/file", "/usr/bin/tarnwick-gui");
  EXPECT_THROW(blocked.set(true), std::runtime_error);
}

}  // namespace
