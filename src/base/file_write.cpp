#include "base/file_write.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

namespace base {

namespace {

int make_directory(const std::filesystem::path& path, bool& created) {
  std::error_code error;
  if (path.empty() || std::filesystem::is_directory(path, error)) return 0;
  if (path.has_parent_path() && path.parent_path() != path && make_directory(path.parent_path(), created) != 0)
    return -1;
  if (::mkdir(path.c_str(), 0700) == 0) {
    created = true;
    return 0;
  }
  // Another process may have made it meanwhile.
  return errno == EEXIST && std::filesystem::is_directory(path, error) ? 0 : -1;
}

}  // namespace

bool FileCalls::is_symlink(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

int FileCalls::make_directories(const std::string& path, bool& created) {
  created = false;
  return make_directory(path, created);
}

int FileCalls::chmod(const std::string& path, mode_t mode) {
  return ::chmod(path.c_str(), mode);
}
int FileCalls::mkstemp(std::string& name_template) {
  return ::mkstemp(name_template.data());
}
ssize_t FileCalls::write(int descriptor, const char* data, size_t size) {
  return ::write(descriptor, data, size);
}
int FileCalls::fsync(int descriptor) {
  return ::fsync(descriptor);
}
int FileCalls::close(int descriptor) {
  return ::close(descriptor);
}
int FileCalls::rename(const std::string& from, const std::string& to) {
  return ::rename(from.c_str(), to.c_str());
}
int FileCalls::unlink(const std::string& path) {
  return ::unlink(path.c_str());
}

namespace {

[[noreturn]] void fail(const char* what) {
  throw std::runtime_error(what);
}
[[noreturn]] void fail_with_errno(const char* what) {
  throw std::runtime_error(fmt::format("{}: {}", what, std::strerror(errno)));
}

// The temporary file of one replacement: closed and unlinked unless it became the target.
class Replacement {
 public:
  Replacement(const std::string& target, FileCalls& calls) : calls_(calls), name_(target + ".XXXXXX") {
    descriptor_ = calls_.mkstemp(name_);
    if (descriptor_ < 0) fail_with_errno("Cannot create configuration");
  }
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;
  ~Replacement() {
    if (descriptor_ >= 0) calls_.close(descriptor_);
    if (!name_.empty()) calls_.unlink(name_);
  }

  void write(std::string_view text) {
    while (!text.empty()) {
      const ssize_t count = calls_.write(descriptor_, text.data(), text.size());
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) fail("Cannot write configuration");
      text.remove_prefix(static_cast<size_t>(count));
    }
    if (calls_.fsync(descriptor_) != 0) fail("Cannot flush configuration");
  }

  void become(const std::string& target) {
    if (calls_.close(std::exchange(descriptor_, -1)) != 0) fail("Cannot write configuration");
    if (calls_.rename(name_, target) != 0) fail_with_errno("Cannot replace configuration");
    name_.clear();
  }

 private:
  FileCalls& calls_;
  std::string name_;
  int descriptor_ = -1;
};

void create_parent(const std::string& path, FileCalls& calls) {
  const std::string parent = std::filesystem::path(path).parent_path();
  bool created = false;
  if (calls.make_directories(parent, created) != 0) fail_with_errno("Cannot create configuration");
  if (created && calls.chmod(parent, 0700) != 0) fail_with_errno("Cannot create configuration");
}

}  // namespace

void replace_file(const std::string& path, std::string_view text, FileCalls& calls) {
  const std::string target = std::filesystem::absolute(path);
  if (calls.is_symlink(target)) fail("Choose a regular configuration file, rather than a symbolic link");
  create_parent(target, calls);
  Replacement replacement(target, calls);
  replacement.write(text);
  replacement.become(target);
}

void replace_file(const std::string& path, std::string_view text) {
  FileCalls calls;
  replace_file(path, text, calls);
}

void write_file(const std::string& path, std::string_view text, mode_t mode) {
  const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (descriptor < 0) throw std::runtime_error(std::strerror(errno));
  bool good = ::fchmod(descriptor, mode) == 0;
  while (good && !text.empty()) {
    const ssize_t count = ::write(descriptor, text.data(), text.size());
    if (count > 0) text.remove_prefix(static_cast<size_t>(count));
    good = count > 0 || (count < 0 && errno == EINTR);
  }
  good = good && ::fsync(descriptor) == 0;
  const int reason = errno;
  if (::close(descriptor) != 0 || !good) throw std::runtime_error(std::strerror(good ? errno : reason));
}

namespace {

int open_for_reading(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) throw OpenError(std::strerror(errno));
  struct stat info {};
  if (::fstat(descriptor, &info) != 0 || S_ISFIFO(info.st_mode)) {
    ::close(descriptor);
    throw OpenError("A pipe is no file");
  }
  return descriptor;
}

}  // namespace

std::string read_file(const std::string& path, size_t limit) {
  const int descriptor = open_for_reading(path);
  std::string text;
  char block[16384];
  ssize_t count = 0;
  while (text.size() < limit) {
    count = ::read(descriptor, block, std::min(sizeof block, limit - text.size()));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    text.append(block, static_cast<size_t>(count));
  }
  const int reason = errno;
  ::close(descriptor);
  if (count < 0) throw std::runtime_error(std::strerror(reason));
  return text;
}

void make_private_directory(const std::string& path) {
  bool created = false;
  if (make_directory(path, created) != 0) throw std::runtime_error(fmt::format("{}: {}", path, std::strerror(errno)));
}

TemporaryPath::~TemporaryPath() {
  if (!path_.empty()) ::unlink(path_.c_str());
}

}  // namespace base
