#include "sim/control_socket.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <fmt/format.h>

#include "base/time_text.h"

namespace sim {
namespace {

constexpr std::size_t longest_request = 4096;
constexpr std::size_t longest_reply = 16384;

int listen_at(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) throw std::runtime_error("Control socket path is too long");
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  const int listener = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
  ::unlink(path.c_str());  // of an engine that ended badly
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the socket interface is made that way.
  if (listener < 0 || ::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener, 16) != 0)
    throw std::runtime_error(fmt::format("Control socket {}: {}", path, std::strerror(errno)));
  return listener;
}

}  // namespace

ControlSocket::ControlSocket(const options::ReceiverOptions& options, const ControlFaults& faults)
    : faults_(faults), path_(options.reception.audio_control), desk_(options, faults.refuse) {
  if (path_.empty()) return;
  wake_ = ::eventfd(0, EFD_CLOEXEC);
  listener_ = listen_at(path_);
  server_ = std::thread([this] { serve(); });
}

ControlSocket::~ControlSocket() {
  if (listener_ < 0) return;
  ::eventfd_write(wake_, 1);
  server_.join();
  ::close(listener_);
  ::close(wake_);
  ::unlink(path_.c_str());
}

std::optional<std::vector<Channel>> ControlSocket::take_retune() {
  const std::lock_guard guard(lock_);
  return desk_.take_retune();
}

void ControlSocket::wait(double seconds) const {
  pollfd ending{wake_, POLLIN, 0};
  ::poll(&ending, 1, static_cast<int>(seconds * 1000));
}

void ControlSocket::serve() {
  const double begin = base::system_clock()();
  for (;;) {
    std::array<pollfd, 2> waiting{{{wake_, POLLIN, 0}, {listener_, POLLIN, 0}}};
    const double gone = faults_.disappear_after ? *faults_.disappear_after + begin - base::system_clock()() : 3600;
    const int ready = ::poll(waiting.data(), waiting.size(), static_cast<int>(std::max(gone, 0.0) * 1000));
    if (waiting[0].revents != 0) return;
    if (ready == 0 && faults_.disappear_after) {
      ::unlink(path_.c_str());
      return;
    }
    if (ready <= 0) continue;
    const int connection = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) continue;
    serve(connection);
    ::close(connection);
  }
}

void ControlSocket::serve(int connection) {
  std::array<char, longest_request> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): recv fills it
  pollfd waiting{connection, POLLIN, 0};
  if (::poll(&waiting, 1, 1000) <= 0) return;
  const ssize_t length = ::recv(connection, buffer.data(), buffer.size(), 0);
  if (length <= 0 || faults_.close_at_once) return;
  const std::string request(buffer.data(), static_cast<std::size_t>(length));
  if (faults_.hang) return wait(3600);
  if (faults_.late > 0) wait(faults_.late);
  const std::string reply = reply_to(request);
  write_journal(request, reply);
  (void)::send(connection, reply.data(), reply.size(), MSG_NOSIGNAL);
}

std::string ControlSocket::reply_to(const std::string& request) {
  if (faults_.rubbish) return "\x01\xff rubbish, and not a word of sense";
  const std::lock_guard guard(lock_);
  std::string reply = desk_.answer(request, base::system_clock()());
  if (faults_.long_replies) reply.resize(longest_reply, ' ');
  return reply;
}

void ControlSocket::write_journal(const std::string& request, const std::string& reply) const {
  if (faults_.journal.empty() || request == "RADIO METER" || request == "RADIO STATUS") return;
  std::FILE* file = std::fopen(faults_.journal.c_str(), "ae");
  if (file == nullptr) return;
  fmt::print(file, "{} -> {}\n", request, reply.substr(0, reply.find('\n')));
  std::fclose(file);
}

}  // namespace sim
