// Appends to ALL.TXT.
#pragma once

#include <string>
#include <string_view>

namespace sim {

/// Opened anew for each cycle, so that a log that was trimmed or moved away goes on under its name.
class DecodeLog {
 public:
  /// An empty path writes nothing.
  explicit DecodeLog(std::string path) : path_(std::move(path)) {}

  /// Appends whole lines with one write, which keeps the lines of several engines apart. Returns the reason when that
  /// was impossible, but once only until it works again; empty otherwise.
  std::string append(std::string_view lines);

 private:
  std::string path_;
  bool broken_ = false;
};

}  // namespace sim
