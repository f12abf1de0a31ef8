#include <cerrno>
#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "options/session.h"
#include "support/temporary_directory.h"

namespace {

using options::Session;

// The same number in settings far apart in the file, so that a torn file would show.
const char* const numbered[] = {"callsign", "receiver.A1.antenna", "receiver.Z9.remote-note", "wav"};

std::unique_ptr<Session> make(const test::TemporaryDirectory& home) {
  return std::make_unique<Session>(options::SessionPlace{home / "config", home / "state"}, options::SessionHooks{});
}

// Saves number after number from `start` on, and tells each over the pipe once its save has ended; until killed.
[[noreturn]] void save_for_ever(const test::TemporaryDirectory& home, int start, int pipe) {
  const auto session = make(home);
  session->load_receivers();
  for (int number = start;; ++number) {
    for (const char* key : numbered)
      session->edit(key, std::to_string(number));
    session->save();
    if (::write(pipe, &number, sizeof number) != sizeof number) ::_exit(1);
  }
}

// The last number that a child saved before it was killed, `delay` after its first save.
int save_until_killed(const test::TemporaryDirectory& home, int start, std::chrono::microseconds delay) {
  int ends[2];
  if (::pipe(ends) != 0) throw std::system_error(errno, std::generic_category());
  const pid_t child = ::fork();
  if (child == 0) save_for_ever(home, start, ends[1]);
  ::close(ends[1]);
  int saved = 0;
  bool armed = true;
  for (int number = 0; ::read(ends[0], &number, sizeof number) == sizeof number; saved = number)
    if (std::exchange(armed, false)) {
      ::usleep(static_cast<useconds_t>(delay.count()));
      ::kill(child, SIGKILL);
    }
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  return saved;
}

TEST(SessionKillTest, TenKillsAtRandomMomentsLoseNothing) {
  const test::TemporaryDirectory home;
  std::mt19937 random(20261122);
  int number = 1;
  for (int kill = 0; kill < 10; ++kill) {
    const int saved = save_until_killed(home, number, std::chrono::microseconds(random() % 20000));
    ASSERT_GE(saved, number) << "kill " << kill;
    const auto session = make(home);
    session->load_receivers();
    session->restore();
    ASSERT_EQ(session->config_path(), home / "config/session.conf") << "kill " << kill;
    ASSERT_EQ(session->take_unreadable_note(), std::nullopt);
    const int restored = std::stoi(session->value("callsign"));
    EXPECT_TRUE(restored == saved || restored == saved + 1) << restored << " after " << saved;
    for (const char* key : numbered)
      EXPECT_EQ(session->value(key), std::to_string(restored)) << key;
    ASSERT_NE(session->receivers().find("A1"), nullptr);
    EXPECT_THAT(session->receivers().find("A1")->at("antenna"),
                testing::AnyOf(std::to_string(saved), std::to_string(saved + 1)));
    number = restored + 1;
  }
}

}  // namespace
