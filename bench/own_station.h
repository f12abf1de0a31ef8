// The whole launcher in process, on files of its own that go with it.
#pragma once

#include <functional>
#include <string>

#include "gui/app.h"

namespace own_station {

/// A directory below /tmp that is removed with all in it.
class Directory {
 public:
  Directory();
  ~Directory();
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string state() const { return path_ + "/state"; }
  /// A launcher that opens `profile` and whose engines are this shell script.
  [[nodiscard]] gui::App::Setup setup(const std::string& engine, const std::string& profile) const;

 private:
  std::string path_;
};

/// Turns the main loop until that holds; it is asked at least every 50 ms.
void turn_until(const std::function<bool()>& done);
void turn_for(double seconds);

/// Of this process.
double resident_megabytes();

}  // namespace own_station
