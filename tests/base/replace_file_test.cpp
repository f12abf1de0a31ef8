#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/file_write.h"
#include "support/temporary_directory.h"

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::Eq;
using testing::StartsWith;

const std::string old_text = "old = 'settings'\n";
const std::string new_text = "new = 'settings, a little longer than those before'\n";

// The real calls, in small writes, with something happening around each; names each call as it is reached.
class WatchedCalls : public base::FileCalls {
 public:
  int is_reached = 0;  ///< calls so far

  int make_directories(const std::string& path, bool& created) override {
    return around<int>("make_directories", [&] { return FileCalls::make_directories(path, created); });
  }
  int chmod(const std::string& path, mode_t mode) override {
    return around<int>("chmod", [&] { return FileCalls::chmod(path, mode); });
  }
  int mkstemp(std::string& name) override {
    return around<int>("mkstemp", [&] { return FileCalls::mkstemp(name); });
  }
  ssize_t write(int descriptor, const char* data, size_t size) override {
    return around<ssize_t>("write", [&] { return FileCalls::write(descriptor, data, std::min<size_t>(size, 16)); });
  }
  int fsync(int descriptor) override {
    return around<int>("fsync", [&] { return FileCalls::fsync(descriptor); });
  }
  int close(int descriptor) override {
    return around<int>("close", [&] { return FileCalls::close(descriptor); });
  }
  int rename(const std::string& from, const std::string& to) override {
    return around<int>("rename", [&] { return FileCalls::rename(from, to); });
  }

 protected:
  virtual bool fails(const std::string& call) = 0;
  virtual void done(const std::string&) {}

 private:
  template <typename T>
  T around(const std::string& name, const std::function<T()>& call) {
    ++is_reached;
    if (fails(name)) {
      if (name == "close") call();  // a failed close has closed the descriptor all the same
      return static_cast<T>(-1);
    }
    const T result = call();
    done(name);
    return result;
  }
};

// Fails the `nth` call of that name with `code`.
class FailingCalls : public WatchedCalls {
 public:
  FailingCalls(std::string name, int code, int nth = 1) : name_(std::move(name)), code_(code), left_(nth) {}

 protected:
  bool fails(const std::string& call) override {
    if (call != name_ || --left_ != 0) return false;
    errno = code_;
    return true;
  }

 private:
  std::string name_;
  int code_;
  int left_;
};

// Ends the process without any chance to clean up, before or after the nth call.
class DeadlyCalls : public WatchedCalls {
 public:
  DeadlyCalls(int nth, bool before) : nth_(nth), before_(before) {}

 protected:
  bool fails(const std::string&) override {
    if (before_ && is_reached == nth_) ::kill(::getpid(), SIGKILL);
    return false;
  }
  void done(const std::string&) override {
    if (!before_ && is_reached == nth_) ::kill(::getpid(), SIGKILL);
  }

 private:
  int nth_;
  bool before_;
};

// Runs `work` in a child process; what waitpid says of it.
int in_child(const std::function<void()>& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    work();
    ::_exit(0);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

std::string failure_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "";
}

mode_t mode_of(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
}

struct ReplaceFileTest : testing::Test {
  test::TemporaryDirectory directory;
  std::string path = directory / "session.conf";

  int files() const { return static_cast<int>(std::distance(fs::directory_iterator(directory.path()), {})); }
};

TEST_F(ReplaceFileTest, AFailureOfAnyCallLeavesTheOldFileAndNothingElse) {
  struct Case {
    FailingCalls calls;
    std::string words;
  } cases[] = {
      {{"make_directories", EACCES}, "Cannot create configuration: Permission denied"},
      {{"mkstemp", EROFS}, "Cannot create configuration: Read-only file system"},
      {{"mkstemp", ENOSPC}, "Cannot create configuration: No space left on device"},
      {{"write", ENOSPC}, "Cannot write configuration"},
      {{"write", EDQUOT, 3}, "Cannot write configuration"},
      {{"write", 0}, "Cannot write configuration"},
      {{"fsync", EIO}, "Cannot flush configuration"},
      {{"close", EIO}, "Cannot write configuration"},
      {{"rename", EACCES}, "Cannot replace configuration: Permission denied"},
  };
  for (auto& [calls, words] : cases) {
    directory.write("session.conf", old_text);
    EXPECT_EQ(failure_of([&] { base::replace_file(path, new_text, calls); }), words);
    EXPECT_EQ(test::content(path), old_text) << words;
    EXPECT_EQ(files(), 1) << words;
  }
}

TEST_F(ReplaceFileTest, AnInterruptedWriteIsTakenUpAgain) {
  FailingCalls calls("write", EINTR, 2);
  base::replace_file(path, new_text, calls);
  EXPECT_EQ(test::content(path), new_text);
}

TEST_F(ReplaceFileTest, AProcessKilledAtAnyCallLeavesAWholeFile) {
  FailingCalls counting("none", 0);
  base::replace_file(directory / "counted.conf", new_text, counting);
  const int calls = counting.is_reached;
  ASSERT_GT(calls, 6);
  int replaced = 0;
  for (int nth = 1; nth <= calls; ++nth)
    for (const bool before : {true, false}) {
      const test::TemporaryDirectory place;
      const std::string target = place.write("session.conf", old_text);
      const int status = in_child([&] {
        DeadlyCalls deadly(nth, before);
        base::replace_file(target, new_text, deadly);
      });
      ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << nth;
      ASSERT_THAT(test::content(target), AnyOf(Eq(old_text), Eq(new_text))) << nth;
      if (test::content(target) == new_text) ++replaced;
      // A killed process cannot tidy: what it was writing may lie beside the file, never in it.
      for (const auto& entry : fs::directory_iterator(place.path()))
        EXPECT_THAT(entry.path().filename().string(), StartsWith("session.conf")) << nth;
      EXPECT_LE(std::distance(fs::directory_iterator(place.path()), {}), 2) << nth;
    }
  EXPECT_EQ(replaced, 1) << "only a process killed after the rename leaves the new file";
}

TEST_F(ReplaceFileTest, ADiskThatFillsUpDuringTheWriteLeavesTheOldFile) {
  directory.write("session.conf", old_text);
  const int status = in_child([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1000, 1000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const auto words = failure_of([&] { base::replace_file(path, std::string(5000, 'x')); });
    ::_exit(words == "Cannot write configuration" ? 7 : 1);
  });
  EXPECT_EQ(WEXITSTATUS(status), 7);
  EXPECT_EQ(test::content(path), old_text);
  EXPECT_EQ(files(), 1);
}

TEST_F(ReplaceFileTest, ADirectoryThatMayNotBeWrittenKeepsItsFile) {
  directory.write("session.conf", old_text);
  ASSERT_EQ(::chmod(directory.path().c_str(), 0555), 0);
  const int status = in_child([&] {
    if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(1);  // root may write anywhere
    const auto words = failure_of([&] { base::replace_file(path, new_text); });
    ::_exit(words == "Cannot create configuration: Permission denied" ? 7 : 1);
  });
  ASSERT_EQ(::chmod(directory.path().c_str(), 0755), 0);
  EXPECT_EQ(WEXITSTATUS(status), 7);
  EXPECT_EQ(test::content(path), old_text);
}

TEST_F(ReplaceFileTest, ALinkIsRefusedWithItsTarget) {
  directory.write("target.conf", old_text);
  for (const char* target : {"target.conf", "nowhere"}) {
    fs::remove(path);
    fs::create_symlink(target, path);
    EXPECT_EQ(failure_of([&] { base::replace_file(path, new_text); }),
              "Choose a regular configuration file, rather than a symbolic link");
    EXPECT_EQ(fs::read_symlink(path), target);
    EXPECT_EQ(test::content(directory / "target.conf"), old_text);
  }
}

TEST_F(ReplaceFileTest, FilesAndNewDirectoriesArePrivate) {
  directory.write("session.conf", old_text);
  ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
  ASSERT_EQ(::chmod(directory.path().c_str(), 0755), 0);
  const mode_t mask = ::umask(0);
  base::replace_file(path, new_text);
  base::replace_file(directory / "a/b/c.conf", new_text);
  base::make_private_directory(directory / "d/e");
  ::umask(mask);
  EXPECT_EQ(mode_of(path), 0600U);
  EXPECT_EQ(mode_of(directory / "a/b/c.conf"), 0600U);
  for (const char* made : {"a", "a/b", "d", "d/e"})
    EXPECT_EQ(mode_of(directory / made), 0700U) << made;
  EXPECT_EQ(mode_of(directory.path()), 0755U) << "a directory that stood keeps its mode";
}

TEST_F(ReplaceFileTest, ARelativePathIsTakenFromTheWorkingDirectory) {
  const auto before = fs::current_path();
  fs::current_path(directory.path());
  base::replace_file("session.conf", new_text);
  fs::current_path(before);
  EXPECT_EQ(test::content(path), new_text);
}

TEST_F(ReplaceFileTest, ReadingAFile) {
  const std::string bytes("a\0\xff\n", 4);
  directory.write("bytes", bytes);
  EXPECT_EQ(base::read_file(directory / "bytes"), bytes);
  EXPECT_EQ(base::read_file(directory / "bytes", 2), bytes.substr(0, 2));
  EXPECT_EQ(failure_of([&] { base::read_file(directory / "none"); }), "No such file or directory");
  EXPECT_EQ(failure_of([&] { base::read_file(directory.path()); }), "Is a directory");
}

}  // namespace
