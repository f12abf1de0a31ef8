// The one safe way to replace a configuration file: the old text or the new one is there, whole, whatever happens.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>

namespace base {

/// The system calls of a safe write, so that a test can make each of them fail. Each answers like the call it is named
/// for: -1 and errno on failure.
class FileCalls {
 public:
  virtual ~FileCalls() = default;
  virtual bool is_symlink(const std::string& path);
  /// Creates the directory and its parents; says in `created` whether any was missing.
  virtual int make_directories(const std::string& path, bool& created);
  virtual int chmod(const std::string& path, mode_t mode);
  virtual int mkstemp(std::string& name_template);
  virtual ssize_t write(int descriptor, const char* data, size_t size);
  virtual int fsync(int descriptor);
  virtual int close(int descriptor);
  virtual int rename(const std::string& from, const std::string& to);
  virtual int unlink(const std::string& path);
};

/// Replaces `path` (made absolute) with `text`, atomically; the file's mode becomes 0600. A symbolic link is refused,
/// and missing parent directories are created with mode 0700. Throws std::runtime_error with the operator's words; then
/// the old file is as it was and no temporary file remains.
void replace_file(const std::string& path, std::string_view text);
void replace_file(const std::string& path, std::string_view text, FileCalls& calls);

/// Writes `text` to `path` with exactly that mode, over what is there, and flushes it to the disk. Not atomic: for a
/// file that is renamed to its place afterwards. A symbolic link is not followed. Throws
/// std::runtime_error("{strerror}").
void write_file(const std::string& path, std::string_view text, mode_t mode);

/// A file that could not be opened, as opposed to one that could not be read to its end. The words are the system's.
struct OpenError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A file's whole content, at most `limit` bytes of it. Throws OpenError or std::runtime_error("{strerror}") when it
/// cannot be read; a pipe is refused, since it would be waited for.
std::string read_file(const std::string& path, size_t limit = 64UL << 20);

/// Creates a directory and its parents for private files (mode 0700 each); silent when it is there. Throws
/// std::runtime_error("{path}: {strerror}").
void make_private_directory(const std::string& path);

/// Unlinks a file on destruction, unless kept. Move-only.
class TemporaryPath {
 public:
  TemporaryPath() = default;
  explicit TemporaryPath(std::string path) : path_(std::move(path)) {}
  TemporaryPath(TemporaryPath&& other) noexcept : path_(std::exchange(other.path_, {})) {}
  TemporaryPath& operator=(TemporaryPath&& other) noexcept {
    std::swap(path_, other.path_);
    return *this;
  }
  TemporaryPath(const TemporaryPath&) = delete;
  TemporaryPath& operator=(const TemporaryPath&) = delete;
  ~TemporaryPath();

  [[nodiscard]] const std::string& path() const { return path_; }
  /// Gives the file up to a new owner, who unlinks it.
  [[nodiscard]] std::string keep() { return std::exchange(path_, {}); }

 private:
  std::string path_;
};

}  // namespace base
