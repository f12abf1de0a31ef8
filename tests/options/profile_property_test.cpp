// What holds for every profile that is valid: writing and reading lose nothing.
#include <random>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "options/option_table.h"
#include "options/profile.h"
#include "options/station.h"
#include "options_text.h"

namespace {

using options::Profile;

/// Makes valid profiles at random: texts of any bytes that a file can hold, and settings that the check lets pass.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  Profile station_profile() {
    options::Station station;
    for (const options::Option& option : options::option_table)
      if (option.in_profile && chance(4)) station.common[std::string(option.name())] = value_of(option);
    for (int i = pick(4); i > 0; --i)
      station.common[fmt::format("audio.{}", key_text())] = any_text();
    for (int i = pick(3); i > 0; --i)
      add_receiver(station);
    Profile profile = render_station(station);
    if (chance(3)) profile["band.20.receiver"] = fmt::format("S {}", pick(100));
    if (chance(3)) profile["band.@voice.receiver"] = "S";
    return profile;
  }

  Profile receiver_profile() {
    Profile profile{{"mode", chance(2) ? "decoder" : "hybrid"}, {"bands", chance(2) ? "20" : "30,40m"}};
    for (const options::Option& option : options::option_table)
      if (option.in_profile && option.takes == options::Takes::flag && chance(3) && option.name() != "daemon" &&
          option.name() != "pskreporter" && option.name() != "wsprnet")
        profile[std::string(option.name())] = truth();
    for (const char* key : {"work-dir", "history-db", "serial"})
      if (chance(3)) profile[key] = any_text();
    if (chance(2)) profile["lna-state"] = fmt::format("{}", pick(256));
    if (chance(2)) profile["ppm"] = fmt::format("{:.17g}", std::uniform_real_distribution(-1000.0, 1000.0)(random_));
    if (chance(2)) profile["modes"] = chance(2) ? "FT8,FT4" : "WSPR";
    if (chance(2)) profile["audio.a"] = "id=a,frequency=10.13M,bandwidth=2700";
    if (chance(2)) profile["center-frequency"] = "10.1M", profile["bands"] = "30";
    return profile;
  }

 private:
  int pick(int below) { return std::uniform_int_distribution(0, below - 1)(random_); }
  bool chance(int one_in) { return pick(one_in) == 0; }
  std::string truth() { return chance(2) ? "true" : "false"; }
  std::string value_of(const options::Option& option) {
    return option.takes == options::Takes::flag ? truth() : any_text();
  }

  void add_receiver(options::Station& station) {
    options::ReceiverProfile receiver;
    receiver.serial = "S" + key_text();
    receiver.enabled = chance(2), receiver.spot = chance(2), receiver.share = chance(2);
    if (chance(2)) receiver.model = fmt::format("RSP{}", pick(100));
    for (const options::Option& option : options::option_table)
      if (option.per_receiver && chance(3)) receiver.settings[std::string(option.name())] = any_text();
    if (chance(2)) receiver.settings["remote-" + key_text()] = any_text();
    station.receivers.push_back(receiver);
  }

  std::string key_text() {
    std::string text;
    for (int i = pick(8); i >= 0; --i)
      text += "ab0-_ #'\"\xc3\xff"[static_cast<std::size_t>(pick(11))];
    return text + "z";  // a blank at the end would not be the key's
  }

  /// Any byte but NUL and line breaks, with one kind of quotation mark at most.
  std::string any_text() {
    const char forbidden = chance(2) ? '\'' : '"';
    std::string text;
    for (int i = chance(20) ? 3000 : pick(20); i > 0; --i) {
      const char c = static_cast<char>(pick(256));
      if (c != '\0' && c != '\n' && c != '\r' && c != forbidden) text += c;
    }
    return text;
  }

  std::mt19937 random_;
};

void expect_lossless(const Profile& profile) {
  const std::string text = options::render_profile(profile);
  const Profile read = options::parse_config_text(text, "f", true);
  EXPECT_EQ(read, profile) << text;
  EXPECT_EQ(options::render_profile(read), text);
}

TEST(ProfileProperties, StationsSurviveWritingAndReading) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    const Profile profile = Generator(seed).station_profile();
    ASSERT_NO_FATAL_FAILURE(expect_lossless(profile)) << seed;
    const options::Station station = options::parse_station(profile);
    EXPECT_EQ(options::parse_station(options::render_station(station)), station) << seed;
  }
}

TEST(ProfileProperties, ReceiversSurviveWritingAndReading) {
  for (unsigned seed = 0; seed < 400; ++seed)
    ASSERT_NO_FATAL_FAILURE(expect_lossless(Generator(seed).receiver_profile()));
}

/// A profile is judged alike from its text, from memory, and from a file that an engine is started with.
TEST(ProfileProperties, ReceiversAreJudgedAlikeByLineAndByProfile) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const Profile profile = Generator(seed).receiver_profile();
    std::vector<std::string> words;
    for (const auto& [key, value] : profile) {
      const options::Option* option = options::find_option(key.starts_with("audio.") ? "audio-channel" : key);
      const bool flag = option->takes == options::Takes::flag;
      words.push_back(flag && value == "false" ? fmt::format("--no-{}", key) : std::string(option->argument));
      if (!flag) words.push_back(value);
    }
    const auto by_line = options::parse(std::vector<std::string_view>(words.begin(), words.end()));
    const auto by_profile = options::check_profile(profile);
    EXPECT_EQ(by_line.given, by_profile.given) << seed;
    EXPECT_EQ(by_line.capture, by_profile.capture) << seed;
    EXPECT_EQ(by_line.reception.channels, by_profile.reception.channels) << seed;
    EXPECT_EQ(by_line.hardware.ppm, by_profile.hardware.ppm) << seed;
  }
}

}  // namespace
