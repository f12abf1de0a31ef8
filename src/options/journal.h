// The journal that tells later what was changed in the settings, and when.
#pragma once

#include <string>

#include "base/time_text.h"

namespace options {

/// Appends to a text file. Main thread only.
class Journal {
 public:
  Journal(std::string path, base::Clock clock) : path_(std::move(path)), clock_(std::move(clock)) {}

  /// Appends "{UTC time} {text}"; makes the directories first. A failure is ignored: it must never stop a save.
  void add(const std::string& text) const noexcept;

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
  base::Clock clock_;
};

}  // namespace options
