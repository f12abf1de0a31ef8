#include "results/gui_log.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace {

constexpr auto noon = "2026-10-03 12:00:00Z";

TEST(GuiLogTest, AppendsLinesAsTheyAre) {
  const test::TemporaryDirectory directory;
  const std::string path = directory / "gui.log";
  results::GuiLog log;
  log.write(noon, "", "before it is open");
  log.open(path);
  log.write(noon, "RSPdx · 7", "a\xFF line");
  EXPECT_EQ(test::content(path), "2026-10-03 12:00:00Z [RSPdx · 7] a\xFF line\n") << "on disk at once";
  log.close();
  log.write(noon, "", "while closed");
  log.open(path);
  log.write(noon, "", "");
  EXPECT_EQ(test::content(path), "2026-10-03 12:00:00Z [RSPdx · 7] a\xFF line\n2026-10-03 12:00:00Z \n");

  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST(GuiLogTest, StaysAwayFromWhatIsNoOrdinaryFile) {
  const test::TemporaryDirectory directory;
  const std::string target = directory.write("elsewhere", "mine\n");
  std::filesystem::create_symlink(target, directory / "link");
  std::filesystem::create_directory(directory / "directory");
  ASSERT_EQ(mkfifo((directory / "pipe").c_str(), 0600), 0);
  results::GuiLog log;
  for (const std::string name : {"link", "directory", "pipe", "missing/gui.log"}) {
    log.open(directory / name);
    EXPECT_FALSE(log.healthy()) << name;
    log.write(noon, "", "line");
  }
  EXPECT_EQ(test::content(target), "mine\n");
}

TEST(GuiLogTest, StopsAtTheFirstFailedWrite) {
  const test::TemporaryDirectory directory;
  results::GuiLog log;
  log.open(directory / "gui.log");
  ASSERT_TRUE(log.healthy());
  // The kernel answers EFBIG beyond this size, as a full disk answers ENOSPC.
  struct rlimit before {};
  getrlimit(RLIMIT_FSIZE, &before);
  signal(SIGXFSZ, SIG_IGN);
  const struct rlimit small { 64, before.rlim_max };
  setrlimit(RLIMIT_FSIZE, &small);
  log.write(noon, "", std::string(100, 'x'));
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_FALSE(log.healthy());
  log.write(noon, "", "again");
  EXPECT_EQ(test::content(directory / "gui.log").size(), 64u);
}

}  // namespace
