#include "base/key_file.h"

#include <filesystem>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace {

struct KeyFileTest : testing::Test {
  test::TemporaryDirectory directory;
  base::KeyFile file{directory / "tarnwick/activity.ini"};

  void write(const std::string& text) const { directory.write("tarnwick/activity.ini", text); }
};

TEST_F(KeyFileTest, AWriterChangesItsOwnKeyAndKeepsTheRest) {
  const std::string text =
      "# Choices of this station\n\n[Display]\n# larger for the wall screen\ninterface-size=125\n\n"
      "[Someone-Else]\nfuture=a;b;\n";
  write(text);
  file.set("Display", "interface-size", "150");
  std::string expected = text;
  expected.replace(expected.find("125"), 3, "150");
  EXPECT_EQ(test::content(file.path()), expected);
  file.set("Startup", "start-receivers", true);
  EXPECT_EQ(test::content(file.path()), expected + "\n[Startup]\nstart-receivers=true\n");
}

TEST_F(KeyFileTest, EveryKindOfValueComesBack) {
  file.set("G", "truth", true);
  file.set("G", "number", -12);
  file.set("G", "text", " blanks; and\nlines\t");
  file.set_list("G", "list", {"one;two", "", "three"});
  EXPECT_TRUE(file.get("G", "truth", false));
  EXPECT_EQ(file.get("G", "number", 0), -12);
  EXPECT_EQ(file.get("G", "text", ""), " blanks; and\nlines\t");
  EXPECT_EQ(file.get_list("G", "list"), (std::vector<std::string>{"one;two", "", "three"}));
}

TEST_F(KeyFileTest, WhatIsMissingOrOfAnotherTypeIsTheDefault) {
  const auto all_defaults = [&](const char* group) {
    EXPECT_TRUE(file.get(group, "k", true));
    EXPECT_EQ(file.get(group, "k", 7), 7);
    EXPECT_EQ(file.get("none", "k", "text"), "text");
    EXPECT_TRUE(file.get_list("none", "k").empty());
  };
  all_defaults("G");
  write("[G]\nk=maybe\n");
  all_defaults("G");
  write("no key file\n");
  all_defaults("G");
}

TEST_F(KeyFileTest, ADamagedFileIsNotReplacedByOneKey) {
  write("[Display\ninterface-size=125\n");
  EXPECT_THROW(file.set("Startup", "start-receivers", true), std::runtime_error);
  EXPECT_EQ(test::content(file.path()), "[Display\ninterface-size=125\n");
}

TEST_F(KeyFileTest, FileAndDirectoryArePrivate) {
  file.set("G", "k", 1);
  EXPECT_EQ(std::filesystem::status(file.path()).permissions(), static_cast<std::filesystem::perms>(0600));
  EXPECT_EQ(std::filesystem::status(directory / "tarnwick").permissions(), static_cast<std::filesystem::perms>(0700));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory / "tarnwick"), {}), 1);
}

}  // namespace
