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

void judge(const std::string& path, const std::string& request, int timeout_ms) {
  if (timeout_ms < 1 || timeout_ms > longest_control_timeout) fail("Invalid audio control timeout");
  if (request.empty() || request.size() > longest_request) fail("Invalid audio request length");
  if (path.empty() || path.size() > longest_control_path) fail("Audio control path is too long");
}

}  // namespace

/// The steps of a request. None of them blocks but wait().
class ControlConnection {
 public:
  explicit ControlConnection(const std::string& path);
  ~ControlConnection() { ::close(descriptor_); }
  ControlConnection(const ControlConnection&) = delete;
  ControlConnection& operator=(const ControlConnection&) = delete;

  [[nodiscard]] int descriptor() const { return descriptor_; }
  /// Whether the event comes within the time, however often a signal interrupts the wait.
  [[nodiscard]] bool wait(short event, int timeout_ms) const;
  void send(const std::string& request) const;
  /// What came within the time that the engine had.
  [[nodiscard]] std::string receive() const;

 private:
  int descriptor_;
};

ControlConnection::ControlConnection(const std::string& path)
    : descriptor_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
  if (descriptor_ < 0) fail("Cannot open audio control client");
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the socket interface is made that way.
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  if (::connect(descriptor_, generic, sizeof address) == 0 || errno == EINPROGRESS) return;
  ::close(descriptor_);
  fail("Audio receiver control is unavailable");
}

bool ControlConnection::wait(short event, int timeout_ms) const {
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

void ControlConnection::send(const std::string& request) const {
  if (::send(descriptor_, request.data(), request.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(request.size()))
    fail("Audio request failed");
}

std::string ControlConnection::receive() const {
  std::array<char, longest_reply> reply;  // NOLINT(cppcoreguidelines-pro-type-member-init): recv fills it
  const ssize_t length = ::recv(descriptor_, reply.data(), reply.size(), 0);
  if (length < 0 && errno == EAGAIN) fail("Audio request timed out");
  if (length <= 0) fail("Audio control disconnected");
  return {reply.data(), static_cast<std::size_t>(length)};
}

std::string control_request(const std::string& path, const std::string& request, int timeout_ms) {
  constexpr int most_to_send = 500;
  judge(path, request, timeout_ms);
  const ControlConnection connection(path);
  if (!connection.wait(POLLOUT, std::min(timeout_ms, most_to_send))) fail("Audio request failed");
  connection.send(request);
  (void)connection.wait(POLLIN, timeout_ms);  // receive() tells whether anything came
  return connection.receive();
}

namespace {

std::unique_ptr<ControlConnection> sent(const std::string& path, const std::string& request, int timeout_ms) {
  judge(path, request, timeout_ms);
  auto connection = std::make_unique<ControlConnection>(path);
  connection->send(request);  // a new connection on this machine has room for one packet
  return connection;
}

base::Outcome<std::string> received(const ControlConnection& connection) {
  try {
    return {connection.receive(), {}};
  } catch (const std::exception& error) {
    return {{}, error.what()};
  }
}

}  // namespace

ControlCall::ControlCall(const std::string& path, const std::string& request, int timeout_ms, Answered answered)
    : connection_(sent(path, request, timeout_ms)),
      watch_(connection_->descriptor(), std::chrono::milliseconds(timeout_ms),
             [connection = connection_.get(), answered = std::move(answered)] { answered(received(*connection)); }) {}

ControlCall::~ControlCall() = default;

}  // namespace receiver
