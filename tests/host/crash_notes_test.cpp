#include "host/crash_notes.h"

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace {

using testing::MatchesRegex;

const std::string time_pattern = "[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}Z";

// Runs `fail` in a child process behind the handler; returns the signal that ended it, 0 if none did.
int crash(const std::string& directory, const std::function<void()>& fail) {
  const pid_t child = ::fork();
  if (child == 0) {
    const int nowhere = ::open("/dev/null", O_WRONLY);
    ::dup2(nowhere, STDERR_FILENO);
    host::install_crash_notes(directory);
    std::thread([&] { fail(); }).join();
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

struct CrashNotesTest : testing::Test {
  test::TemporaryDirectory directory;
  std::string notes = directory / "crash.txt";
  std::string previous = directory / "crash-previous.txt";

  std::optional<std::string> report() { return host::report_crash(directory.path()); }
};

TEST_F(CrashNotesTest, AnUnhandledExceptionLeavesOneLineAndAborts) {
  const std::pair<std::function<void()>, std::string> cases[] = {
      {[] { throw std::runtime_error("planner: no capture"); }, "unhandled exception: planner: no capture"},
      {[] { throw 7; }, "unhandled exception \\(not a std::exception\\)"},
      {[] { std::terminate(); }, "unhandled exception \\(not a std::exception\\)"},
      {[] { throw std::runtime_error("two\nlines"); }, "unhandled exception: two lines"},
      {[] { throw std::runtime_error(std::string(100000, 'x')); }, "unhandled exception: x{1900,2047}"},
  };
  for (const auto& [fail, text] : cases) {
    EXPECT_EQ(crash(directory.path(), fail), SIGABRT);
    EXPECT_THAT(test::content(notes), MatchesRegex(time_pattern + " crash: " + text + "\n"));
    std::filesystem::remove(notes);
  }
}

TEST_F(CrashNotesTest, WithoutAPlaceForTheNoteItStillAborts) {
  const auto fail = [] { throw std::runtime_error("x"); };
  for (const auto& place : {std::string(), directory / "missing", std::string(5000, 'd')})
    EXPECT_EQ(crash(place, fail), SIGABRT) << place.size();
  EXPECT_TRUE(test::tree(directory.path()).empty());
}

TEST_F(CrashNotesTest, TwoCrashesKeepBothLinesAndTheLastIsToldOnce) {
  EXPECT_EQ(report(), std::nullopt) << "after a clean end";
  crash(directory.path(), [] { throw std::runtime_error("first"); });
  crash(directory.path(), [] { throw std::runtime_error("second"); });
  const std::string both = test::content(notes);
  EXPECT_THAT(report().value_or(""),
              MatchesRegex("The last run ended badly: " + time_pattern + " crash: unhandled exception: second"));
  EXPECT_EQ(test::content(notes), "(none)");
  EXPECT_EQ(test::content(previous), both);
  EXPECT_EQ(report(), std::nullopt);
  EXPECT_EQ(test::content(previous), both);
}

TEST_F(CrashNotesTest, WhatIsToldOfAFile) {
  std::string many;
  for (int i = 1; i <= 25; ++i)
    many += "note " + std::to_string(i) + "\n";
  const std::string please = " (please send this with a Diagnostic mode session)";
  const std::pair<std::string, std::optional<std::string>> cases[] = {
      {"", std::nullopt},
      {"\n\n", std::nullopt},
      {"one\n", "one" + please},
      {"no line feed", "no line feed" + please},
      {"one\ntwo\n", "two"},
      {many, "note 25"},
      {"bad \xff byte\n", "bad \xEF\xBF\xBD byte" + please},
  };
  for (const auto& [text, told] : cases) {
    directory.write("crash.txt", text);
    EXPECT_EQ(report(), told ? std::optional("The last run ended badly: " + *told) : std::nullopt) << text;
    EXPECT_EQ(test::content(notes), "(none)") << text;
  }
}

TEST_F(CrashNotesTest, OnlyTheNewestTwentyAreKept) {
  std::string text;
  for (int i = 1; i <= 25; ++i)
    text += std::to_string(i) + "\n";
  directory.write("crash.txt", text);
  report();
  EXPECT_EQ(test::content(previous), text.substr(text.find("6\n")));
}

TEST_F(CrashNotesTest, WhatCannotBeKeptIsToldAllTheSame) {
  directory.write("crash.txt", "one\n");
  std::filesystem::create_directories(previous);
  EXPECT_TRUE(report().has_value());
  EXPECT_EQ(test::content(notes), "(none)");
}

}  // namespace
