#include "options/profile.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "options_text.h"

namespace {

using options::parse_config_text;
using options::Profile;
using options_test::refusal;
using testing::ElementsAre;
using testing::Pair;

std::string reading_refusal(std::string_view text, bool multi = false) {
  return refusal([&] { (void)parse_config_text(text, "f", multi); });
}

std::string rendering_refusal(const Profile& profile) {
  return refusal([&] { (void)options::render_profile(profile); });
}

class TemporaryFile {
 public:
  explicit TemporaryFile(std::string_view text)
      : path_(std::filesystem::temp_directory_path() /
              fmt::format("profile-{}-{}.conf", ::getpid(), testing::UnitTest::GetInstance()->random_seed())) {
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~TemporaryFile() { std::filesystem::remove(path_); }
  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

TEST(ProfileReading, TakesLinesApart) {
  const Profile profile = parse_config_text(
      "# comment\n; another\n\n \t\r\n  callsign = 'K1ABC' \r\n"
      "grid=\"FN31\"\nserial = a=b # kept\nwork-dir = ''\nall-txt = \"it's\"\naudio.a = x\nanalysis. = y\nstats=YES\n"
      "survey = 0\niq-file = \xff\xfe\nsink = 'last'",
      "f", false);
  EXPECT_THAT(profile, ElementsAre(Pair("all-txt", "it's"), Pair("analysis.", "y"), Pair("audio.a", "x"),
                                   Pair("callsign", "K1ABC"), Pair("grid", "FN31"), Pair("iq-file", "\xff\xfe"),
                                   Pair("serial", "a=b # kept"), Pair("sink", "last"), Pair("stats", "true"),
                                   Pair("survey", "false"), Pair("work-dir", "")));
}

TEST(ProfileReading, FlagsTakeFourWordsEach) {
  for (const char* yes : {"true", "ON", "Yes", "1"})
    EXPECT_EQ(parse_config_text(fmt::format("daemon = {}", yes), "f", false).at("daemon"), "true") << yes;
  for (const char* no : {"FALSE", "off", "no", "0"})
    EXPECT_EQ(parse_config_text(fmt::format("daemon = '{}'", no), "f", false).at("daemon"), "false") << no;
}

TEST(ProfileReading, RefusesWithFileAndLine) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, std::string> cases[] = {
      {"mode", "f line 1: Expected option = value"},
      {"# one\nmode = audio\n\nmode", "f line 4: Expected option = value"},
      {"mode = a\0b"sv, "f line 1: Expected option = value"},
      {"=", "f line 1: Unknown or CLI-only configuration option: "},
      {"help = true", "f line 1: Unknown or CLI-only configuration option: help"},
      {"kill = x", "f line 1: Unknown or CLI-only configuration option: kill"},
      {"rx888-return-wait = 3", "f line 1: Unknown or CLI-only configuration option: rx888-return-wait"},
      {"Mode = audio", "f line 1: Unknown or CLI-only configuration option: Mode"},
      {"gui-format = x", "f line 1: Unknown or CLI-only configuration option: gui-format"},
      {"receiver.A.enabled = true", "f line 1: Unknown or CLI-only configuration option: receiver.A.enabled"},
      {"callsign = 'K1ABC", "f line 1: Unterminated quoted value"},
      {"callsign = '", "f line 1: Unterminated quoted value"},
      {"callsign = \"K1ABC'", "f line 1: Unterminated quoted value"},
      {"callsign = 'K1ABC' x", "f line 1: Unexpected text after quoted value"},
      {"callsign = 'K1'ABC'", "f line 1: Unexpected text after quoted value"},
      {"stats = maybe", "f line 1: Expected true/false, on/off, yes/no or 1/0"},
      {"stats =", "f line 1: Expected true/false, on/off, yes/no or 1/0"},
      {"mode = decoder\nmode = decoder", "f line 2: Duplicate configuration option: mode"},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(reading_refusal(text), expected) << text;
}

TEST(ProfileReading, LimitsLinesAndFiles) {
  const std::string key = "callsign = ";
  EXPECT_EQ(reading_refusal(key + std::string(4096 - key.size(), 'x')), "");
  EXPECT_EQ(reading_refusal(key + std::string(4097 - key.size(), 'x')),
            "f line 1: Configuration file exceeds size limit");
  const std::string comment = "#" + std::string(4094, '-') + "\n";  // 256 of them are the limit
  std::string text;
  for (int i = 0; i < 256; ++i)
    text += comment;
  EXPECT_EQ(reading_refusal(text), "");
  EXPECT_EQ(reading_refusal(text + "\n"), "f line 257: Configuration file exceeds size limit");
}

TEST(ProfileReading, ReadsFiles) {
  const TemporaryFile file("receiver.A.enabled = true\n");
  EXPECT_THAT(options::read_profile(file.path()), ElementsAre(Pair("receiver.A.enabled", "true")));
  EXPECT_EQ(refusal([&] { (void)options::parse_config(file.path(), false); }),
            file.path() + " line 1: Unknown or CLI-only configuration option: receiver.A.enabled");
  EXPECT_EQ(refusal([] { (void)options::read_profile("/nowhere/x"); }), "Cannot open configuration file: /nowhere/x");
  EXPECT_EQ(refusal([] { (void)options::read_profile("/tmp"); }), "Failed reading configuration file: /tmp");
  EXPECT_TRUE(options::read_profile("/dev/null").empty());
  EXPECT_EQ(refusal([] { (void)options::read_profile("/dev/zero"); }),
            "/dev/zero line 1: Configuration file exceeds size limit");
}

/// Whatever bytes come, the answer is a map or a refusal that names the line.
TEST(ProfileReading, StandsHostileFiles) {
  std::string every_byte, separators, keys;
  for (int c = 0; c < 256; ++c)
    every_byte += fmt::format("{}\n", static_cast<char>(c));
  for (int i = 0; i < 1000; ++i) {
    separators += "receiver." + std::string(1000, '.') + "=\"'\"\n";
    keys += fmt::format("audio.{} = {}\n", i, std::string(1000, '='));
  }
  for (const std::string& text : {std::string(1 << 20, '='), std::string(1 << 20, '\n'), std::string(1 << 20, '\''),
                                  std::string(1 << 20, '\0'), every_byte, separators, keys}) {
    const std::string words = reading_refusal(text, true);
    if (!words.empty()) {
      EXPECT_THAT(words, testing::MatchesRegex("f line [0-9]+: [A-Z](.|\n)*"));
    }
  }
}

TEST(ProfileWriting, QuotesEveryValue) {
  const Profile single{{"mode", "decoder"}, {"bands", "20"}, {"work-dir", ""}, {"all-txt", "it's"}, {"stats", "true"}};
  EXPECT_EQ(options::render_profile(single),
            "# Tarnwick launcher profile. Paths are absolute.\n"
            "# Run with: tarnwick --config PROFILE.conf\n"
            "# GUI and systemd own their processes; CLI daemon mode is disabled here.\n\n"
            "all-txt = \"it's\"\nbands = '20'\nmode = 'decoder'\nstats = 'true'\nwork-dir = ''\n");
  EXPECT_EQ(options::render_profile({{"gui-format", "multi-receiver-v1"}}),
            "# Tarnwick launcher profile. Paths are absolute.\n"
            "# Open with: tarnwick-gui --config PROFILE.conf\n"
            "# GUI and systemd own their processes; CLI daemon mode is disabled here.\n\n"
            "gui-format = 'multi-receiver-v1'\n");
}

TEST(ProfileWriting, RefusesWhatWouldNotLoad) {
  const auto station = [](const std::string& key, const std::string& value) {
    return Profile{{"gui-format", "multi-receiver-v1"}, {key, value}};
  };
  const std::pair<Profile, std::string> cases[] = {
      {station("callsign", "a\nb"), "Configuration values cannot contain line breaks"},
      {station("callsign", "a\rb"), "Configuration values cannot contain line breaks"},
      {station("callsign", "'\""), "A configuration value cannot contain both kinds of quotation mark"},
      {station("callsign", std::string("a\0b", 3)), "Expected option = value"},
      {station("future", "1"), "Unknown or CLI-only configuration option: future"},
      {station("stats", "maybe"), "Expected true/false, on/off, yes/no or 1/0"},
      {station("audio.a=b", "x"), "Expected option = value"},
      {station("receiver.A=B.enabled", "true"), "Expected option = value"},
      {station("callsign", std::string(4096, 'x')), "Configuration file exceeds size limit"},
      {station("receiver.A.foo", "1"), "Unsupported receiver profile option: foo"},
      {{{"gui-format", "multi-receiver-v2"}}, "Unsupported GUI profile format"},
      {{{"mode", "dec"}}, "--mode must be audio, decoder, hybrid or receivers"},
      {{{"mode", "decoder"}, {"bands", "20"}, {"receiver.A.enabled", "true"}}, "Unknown option: --receiver.A.enabled"},
      {{{"help", ""}}, "Unknown option: --help"},
  };
  for (const auto& [profile, expected] : cases)
    EXPECT_EQ(rendering_refusal(profile), expected);
  Profile large = station("callsign", "K1ABC");
  for (int i = 0; i < 300; ++i)
    large[fmt::format("audio.{}", i)] = std::string(4000, 'x');
  EXPECT_EQ(rendering_refusal(large), "Configuration file exceeds size limit");
}

TEST(ProfileWriting, LeavesTheOldFileWhenRefused) {
  const TemporaryFile file("callsign = K1ABC\n");
  EXPECT_ANY_THROW(options::write_config(file.path(), {{"gui-format", "multi-receiver-v1"}, {"callsign", "a\nb"}}));
  EXPECT_THAT(options::read_profile(file.path()), ElementsAre(Pair("callsign", "K1ABC")));
  options::write_config(file.path(), {{"gui-format", "multi-receiver-v1"}, {"callsign", "W9XYZ"}});
  EXPECT_EQ(options::read_profile(file.path()).at("callsign"), "W9XYZ");
}

}  // namespace
