// What a subcommand reads: a file named on the command line, or standard input. Never written to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// A file open for reading. Every failure is a UsageError that names the file.
class Input {
 public:
  /// Standard input where no name is given.
  explicit Input(std::optional<std::string_view> path);
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input();

  /// Replaces `block` with the next bytes as they come; false at the end.
  bool read_block(std::string& block);
  /// All that is left.
  std::string read_all();

 private:
  std::string name_;
  int descriptor_;
};

}  // namespace inspect
