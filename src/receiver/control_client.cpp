#include "receiver/control_client.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace receiver {
namespace {

[[noreturn]] void fail(const char* words) {
  throw std::runtime_error(words);
}

class Socket {
 public:
  Socket() : descriptor_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    if (descriptor_ < 0) fail("Cannot open audio control client");
  }
  ~Socket() { ::close(descriptor_); }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  [[nodiscard]] int descriptor() const { return descriptor_; }

  /// Whether the event comes within the time, however often a signal interrupts the wait.
  [[nodiscard]] bool wait(short event, int timeout_ms) const {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(timeout_ms);
    for (;;) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
      pollfd wanted{descriptor_, event, 0};
      const int ready = ::poll(&wanted, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
      if (ready > 0) return true;
      if (ready == 0 || errno != EINTR) return false;
    }
  }

 private:
  int descriptor_;
};

void judge(const std::string& path, const std::string& request, int timeout_ms) {
  if (timeout_ms < 1 || timeout_ms > longest_control_timeout) fail("Invalid audio control timeout");
  if (request.empty() || request.size() > longest_request) fail("Invalid audio request length");
  if (path.empty() || path.size() > longest_control_path) fail("Audio control path is too long");
}

void connect(const Socket& socket, const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the socket interface is made that way.
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  if (::connect(socket.descriptor(), generic, sizeof address) != 0 && errno != EINPROGRESS)
    fail("Audio receiver control is unavailable");
}

}  // namespace

std::string control_request(const std::string& path, const std::string& request, int timeout_ms) {
  constexpr int most_to_send = 500;
  judge(path, request, timeout_ms);
  const Socket socket;
  connect(socket, path);
  if (!socket.wait(POLLOUT, std::min(timeout_ms, most_to_send)) ||
      ::send(socket.descriptor(), request.data(), request.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(request.size()))
    fail("Audio request failed");
  if (!socket.wait(POLLIN, timeout_ms)) fail("Audio request timed out");
  std::array<char, longest_reply> reply;  // NOLINT(cppcoreguidelines-pro-type-member-init): recv fills it
  const ssize_t length = ::recv(socket.descriptor(), reply.data(), reply.size(), 0);
  if (length <= 0) fail("Audio control disconnected");
  return {reply.data(), static_cast<std::size_t>(length)};
}

}  // namespace receiver
