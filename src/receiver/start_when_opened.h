// Presses Start for an operator who is not there, once the launcher is ready for it.
#pragma once

#include <functional>
#include <string>

#include "base/timer.h"
#include "receiver/timing.h"

namespace receiver {

/// The wait between the opening of the window and the start of the receivers. It forces nothing: it waits for Start to
/// become sensitive, and gives up after Timing::start_tries looks. Main thread only.
class StartWhenOpened {
 public:
  /// What it needs to know of the launcher, asked anew at each look, and what it may do.
  struct Launcher {
    std::function<bool()> settled;        ///< closing, receiving, or the boot service runs the receivers
    std::function<bool()> occupied;       ///< an operation is in flight that Start would disturb, or a refresh
    std::function<bool()> can_start;      ///< "Start receivers" is sensitive
    std::function<std::string()> status;  ///< the state text, which says why it is not
    std::function<void(const std::string&)> report;
    std::function<void()> start;
  };

  explicit StartWhenOpened(Launcher launcher, const Timing& timing = {});

  /// Says so and begins to look. For when the operator has chosen it and the window is not closing.
  void arm();
  [[nodiscard]] bool armed() const { return timer_.armed(); }

 private:
  void look();
  void count_try(const std::string& last_words);

  Launcher launcher_;
  Timing timing_;
  int tries_ = 0;
  base::Timer timer_;
};

}  // namespace receiver
