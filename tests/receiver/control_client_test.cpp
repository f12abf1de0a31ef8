#include "receiver/control_client.h"

#include <chrono>
#include <functional>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

#include <glib.h>
#include <gtest/gtest.h>

#include "support/main_loop.h"

namespace receiver {
namespace {

/// An engine's socket that takes one connection and does with it what a test says.
class OneConnection {
 public:
  explicit OneConnection(std::function<void(int connection)> serve) {
    char pattern[] = "/tmp/control-XXXXXX";
    directory_ = g_mkdtemp(pattern);
    path_ = directory_ + "/s";
    listener_ = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener_, 4), 0);
    server_ = std::thread([this, serve = std::move(serve)] {
      pollfd waiting{listener_, POLLIN, 0};
      if (::poll(&waiting, 1, 2000) <= 0) return;
      const int connection = ::accept(listener_, nullptr, nullptr);
      serve(connection);
      ::close(connection);
    });
  }
  ~OneConnection() {
    server_.join();
    ::close(listener_);
    ::unlink(path_.c_str());
    ::rmdir(directory_.c_str());
  }
  OneConnection(const OneConnection&) = delete;
  OneConnection& operator=(const OneConnection&) = delete;
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string directory_, path_;
  int listener_ = -1;
  std::thread server_;
};

std::string outcome_of_request(const std::string& path, const std::string& request, int timeout) {
  try {
    return control_request(path, request, timeout);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

std::string outcome_of_call(const std::string& path, const std::string& request, int timeout) {
  std::optional<base::Outcome<std::string>> told;
  try {
    const ControlCall call(path, request, timeout, [&told](const auto& reply) { told = reply; });
    test::run_until([&told] { return told.has_value(); });
    return told->value.value_or(told->error);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

/// Both ways to ask come to the same.
class ControlClient : public testing::TestWithParam<decltype(&outcome_of_request)> {
 protected:
  static std::string outcome(const std::string& path, const std::string& request, int timeout) {
    return GetParam()(path, request, timeout);
  }
};
INSTANTIATE_TEST_SUITE_P(Blocking, ControlClient, testing::Values(&outcome_of_request));
INSTANTIATE_TEST_SUITE_P(OnTheLoop, ControlClient, testing::Values(&outcome_of_call));

std::string read_request(int connection) {
  char request[longest_request];
  const auto length = ::read(connection, request, sizeof request);
  return {request, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

TEST_P(ControlClient, RefusesBeforeAnythingIsOpened) {
  EXPECT_EQ(outcome("/x", "STATUS", 0), "Invalid audio control timeout");
  EXPECT_EQ(outcome("/x", "STATUS", 30001), "Invalid audio control timeout");
  EXPECT_EQ(outcome("/x", "", 10), "Invalid audio request length");
  EXPECT_EQ(outcome("/x", std::string(4097, 'a'), 10), "Invalid audio request length");
  EXPECT_EQ(outcome(std::string(108, 'a'), "STATUS", 10), "Audio control path is too long");
  EXPECT_EQ(outcome("/tmp/nobody-listens-here", "STATUS", 10), "Audio receiver control is unavailable");
}

TEST_P(ControlClient, TakesAnswersOfEveryKind) {
  {
    OneConnection engine([](int connection) {
      const std::string reply = "OK " + read_request(connection);
      EXPECT_GT(::send(connection, reply.data(), reply.size(), 0), 0);
    });
    EXPECT_EQ(outcome(engine.path(), std::string(4096, 'r'), 1000), "OK " + std::string(4096, 'r'));
  }
  for (const std::size_t length : {std::size_t(16384), std::size_t(20000)}) {
    OneConnection engine([length](int connection) {
      (void)read_request(connection);
      const std::string reply(length, 'x');
      EXPECT_GT(::send(connection, reply.data(), reply.size(), 0), 0);
    });
    EXPECT_EQ(outcome(engine.path(), "STATUS", 1000).size(), longest_reply);
  }
  {
    OneConnection engine([](int connection) { (void)read_request(connection); });
    EXPECT_EQ(outcome(engine.path(), "STATUS", 1000), "Audio control disconnected");
  }
  {
    OneConnection engine([](int connection) {
      (void)read_request(connection);
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
    });
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(outcome(engine.path(), "RADIO METER", 100), "Audio request timed out");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(290));
  }
}

}  // namespace
}  // namespace receiver
