// Control sockets of engines, served by a process of their own, so that the processor time of the measuring process is
// the launcher's alone.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace stand_in {

class Engines {
 public:
  /// What both processes see. Times are of CLOCK_MONOTONIC in microseconds.
  struct Shared {
    std::atomic<bool> refuses{false};    ///< changes of settings
    std::atomic<std::int64_t> asked{0};  ///< when the last change of settings came
    std::atomic<std::int64_t> told{0};   ///< when it was answered
    std::atomic<int> changes{0};         ///< how many have come
    std::atomic<unsigned> polls{0};      ///< of levels, of all engines together
  };

  /// Listens at these paths; requests to the first `hung` are never answered. The levels differ from answer to answer,
  /// the gains once a second at twenty polls a second. Forks: to be made before there are threads.
  explicit Engines(std::vector<std::string> paths, std::size_t hung = 0);
  ~Engines();
  Engines(const Engines&) = delete;
  Engines& operator=(const Engines&) = delete;

  [[nodiscard]] Shared& shared() { return *shared_; }

 private:
  std::vector<std::string> paths_;
  Shared* shared_;
  pid_t process_ = -1;
};

/// The processor time of this process so far, all threads, in seconds.
double processor_seconds();

}  // namespace stand_in
