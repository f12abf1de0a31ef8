#include "inspect/input.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include <fmt/format.h>

#include "inspect/arguments.h"

namespace inspect {
namespace {

constexpr std::size_t block_size = 65536;

[[noreturn]] void fail(std::string_view name) {
  throw UsageError(fmt::format("{}: {}", name, std::strerror(errno)));
}

}  // namespace

Input::Input(std::optional<std::string_view> path) : name_(path.value_or("standard input")), descriptor_(STDIN_FILENO) {
  if (path) descriptor_ = open(name_.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor_ < 0) fail(name_);
}

Input::~Input() {
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

bool Input::read_block(std::string& block) {
  block.resize(block_size);
  ssize_t got = 0;
  do {
    got = read(descriptor_, block.data(), block.size());
  } while (got < 0 && errno == EINTR);
  if (got < 0) fail(name_);
  block.resize(static_cast<std::size_t>(got));
  return got > 0;
}

std::string Input::read_all() {
  std::string all;
  std::string block;
  while (read_block(block))
    all += block;
  return all;
}

}  // namespace inspect
