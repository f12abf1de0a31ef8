// Real off-air signals: a folder of FT8 recordings, decoded by jt9 one after the other.
#pragma once

#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/gobject_ptr.h"
#include "sim/traffic.h"

namespace sim {

/// The decodes in what jt9 prints; its other lines are passed over.
std::vector<Decode> parse_jt9(std::string_view output);

class Recordings {
 public:
  /// Throws std::runtime_error with the reason when jt9 is not installed or the folder holds no recording.
  explicit Recordings(const std::string& folder);
  Recordings(const Recordings&) = delete;
  Recordings& operator=(const Recordings&) = delete;
  /// Ends a decoder that still runs.
  ~Recordings();

  /// The decodes of the next recording; empty while jt9 is at work on it. The one after it is begun at once.
  std::optional<std::vector<Decode>> next();

 private:
  void begin();

  std::vector<std::string> files_;
  std::size_t position_ = 0;
  base::GObjectPtr<GSubprocess> decoder_;
  std::future<std::vector<Decode>> decodes_;
};

}  // namespace sim
