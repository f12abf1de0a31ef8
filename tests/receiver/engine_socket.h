// The control socket of an engine that answers when the test says so, on the test's own thread.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace receiver {

class EngineSocket {
 public:
  explicit EngineSocket(const std::string& path)
      : listener_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener_, 64), 0);
  }
  ~EngineSocket() { ::close(listener_); }
  EngineSocket(const EngineSocket&) = delete;
  EngineSocket& operator=(const EngineSocket&) = delete;

  /// Answers every request that has come since the last call; an empty reply hangs up. Returns how many there were.
  std::size_t answer(const std::string& reply) const {
    std::size_t count = 0;
    for (int connection = 0; (connection = ::accept(listener_, nullptr, nullptr)) >= 0; ++count) {
      std::array<char, 4096> request;
      EXPECT_GT(::recv(connection, request.data(), request.size(), 0), 0);
      if (!reply.empty()) ::send(connection, reply.data(), reply.size(), MSG_NOSIGNAL);
      ::close(connection);
    }
    return count;
  }

 private:
  int listener_;
};

}  // namespace receiver
