#include "options/migration.h"

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;
using Tree = std::map<std::string, std::string>;
constexpr uid_t operator_id = 1000;

// HOME in a directory of its own; the other variables as a case sets them.
struct MigrationTest : testing::Test {
  test::TemporaryDirectory home;
  std::map<std::string, std::string> variables{{"HOME", home.path()}};

  options::Environment environment() const {
    return [this](const char* name) -> std::optional<std::string> {
      const auto found = variables.find(name);
      return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
  }
  void migrate(uid_t user = operator_id) const { options::migrate_former_name(environment(), user); }
  Tree files() const { return test::tree(home.path()); }
};

TEST_F(MigrationTest, MovesEveryDirectoryAndLeavesALinkInItsPlace) {
  home.write(".config/fennel-tuner/session.conf", "a = '1'\n");
  home.write(".local/share/fennel-tuner/firmware/x.bin", "bits");
  home.write(".local/state/fennel-tuner/ALL.TXT", "line\n");
  fs::create_directories(home / ".local/state/tarnwick");  // an empty new one is in nobody's way
  const Tree moved{{".config/tarnwick/session.conf", "a = '1'\n"},   {".config/fennel-tuner", "-> tarnwick"},
                   {".local/share/tarnwick/firmware/x.bin", "bits"}, {".local/share/fennel-tuner", "-> tarnwick"},
                   {".local/state/tarnwick/ALL.TXT", "line\n"},      {".local/state/fennel-tuner", "-> tarnwick"}};
  migrate();
  EXPECT_EQ(files(), moved);
  migrate();
  EXPECT_EQ(files(), moved) << "a second run finds nothing to do";
}

TEST_F(MigrationTest, FindsTheDirectoriesThatTheEnvironmentNames) {
  variables["XDG_CONFIG_HOME"] = home / "settings";
  variables["XDG_STATE_HOME"] = "relative/is/ignored";
  home.write("settings/fennel-tuner/a.conf", "x");
  home.write(".local/state/fennel-tuner/b", "y");
  migrate();
  EXPECT_EQ(files(), (Tree{{"settings/tarnwick/a.conf", "x"},
                           {"settings/fennel-tuner", "-> tarnwick"},
                           {".local/state/tarnwick/b", "y"},
                           {".local/state/fennel-tuner", "-> tarnwick"}}));
}

TEST_F(MigrationTest, LosesNothingWhereItMayNotMove) {
  const auto stays_as_it_is = [&](const char* what) {
    const Tree before = files();
    migrate();
    EXPECT_EQ(files(), before) << what;
  };
  home.write(".config/fennel-tuner/a.conf", "old");
  home.write(".config/tarnwick/b.conf", "new");
  stays_as_it_is("an unempty new directory");

  home.write(".local/share/elsewhere/c", "data");
  fs::create_directory_symlink("elsewhere", home / ".local/share/fennel-tuner");
  stays_as_it_is("the old name is a link");

  home.write(".local/state/fennel-tuner/d", "log");
  fs::create_directories(home / ".local/state/empty");
  fs::create_directory_symlink("empty", home / ".local/state/tarnwick");
  stays_as_it_is("the new name is a link");
}

TEST_F(MigrationTest, AsRootNothingIsWritten) {
  home.write(".config/fennel-tuner/fennel-tuner.conf", home / ".config/fennel-tuner/x");
  const Tree before = files();
  migrate(0);
  EXPECT_EQ(files(), before);
}

TEST_F(MigrationTest, RenamesTheMainFileUnlessANewOneStands) {
  home.write(".config/tarnwick/fennel-tuner.conf", "old");
  migrate();
  EXPECT_EQ(files(), (Tree{{".config/tarnwick/tarnwick.conf", "old"}}));
  home.write(".config/tarnwick/fennel-tuner.conf", "older");
  migrate();
  EXPECT_EQ(files(),
            (Tree{{".config/tarnwick/tarnwick.conf", "old"}, {".config/tarnwick/fennel-tuner.conf", "older"}}));
}

TEST_F(MigrationTest, RewritesPathsInSettingsFilesOnly) {
  const std::string old_text =
      "db = '" + (home / ".local/state/fennel-tuner/h.sqlite3") + "'\nfw = " + (home / ".local/share/fennel-tuner/fw") +
      " " + (home / ".config/fennel-tuner/") + "\nkeep = " + (home / ".config/fennel-tuner") + " /else/fennel-tuner/x";
  const std::string new_text = "db = '" + (home / ".local/state/tarnwick/h.sqlite3") +
                               "'\nfw = " + (home / ".local/share/tarnwick/fw") + " " + (home / ".config/tarnwick/") +
                               "\nkeep = " + (home / ".config/fennel-tuner") + " /else/fennel-tuner/x";
  const std::string settings = home / ".config/tarnwick/";
  for (const char* name : {"session.conf", "activity.ini", "note.txt", "sub/deep.conf"})
    home.write(std::string(".config/tarnwick/") + name, old_text);
  home.write("target.conf", old_text);
  fs::create_symlink(home / "target.conf", settings + "link.conf");
  ASSERT_EQ(::chmod((settings + "session.conf").c_str(), 0640), 0);
  home.write(".config/tarnwick/other.conf.rename", "left by a killed run");
  migrate();
  EXPECT_EQ(test::content(settings + "session.conf"), new_text);
  EXPECT_EQ(test::content(settings + "activity.ini"), new_text);
  EXPECT_EQ(test::content(settings + "note.txt"), old_text);
  EXPECT_EQ(test::content(settings + "sub/deep.conf"), old_text);
  EXPECT_TRUE(fs::is_symlink(settings + "link.conf"));
  EXPECT_EQ(test::content(settings + "link.conf"), old_text) << "a link is never parted from its target";
  EXPECT_EQ(fs::status(settings + "session.conf").permissions(), static_cast<fs::perms>(0640));
  EXPECT_FALSE(fs::exists(settings + "session.conf.rename"));
}

TEST_F(MigrationTest, AFileThatCannotBeRewrittenStaysAndTheOthersGoOn) {
  const std::string text = home / ".config/fennel-tuner/x";
  home.write(".config/tarnwick/a.conf", text);
  home.write(".config/tarnwick/b.conf", text);
  fs::create_directories(home / ".config/tarnwick/a.conf.rename");
  fs::resize_file(home.write(".config/tarnwick/huge.conf", text), 17U << 20);  // sparse; nobody's settings
  migrate();
  EXPECT_EQ(fs::file_size(home / ".config/tarnwick/huge.conf"), 17U << 20);
  EXPECT_EQ(test::content(home / ".config/tarnwick/a.conf"), text);
  EXPECT_EQ(test::content(home / ".config/tarnwick/b.conf"), home / ".config/tarnwick/x");
}

}  // namespace
