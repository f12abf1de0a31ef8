// The one way to work off the main thread.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace base {

/// Says whether the owner of a background job is still there. The owner holds a Liveness; jobs hold its watch().
class Liveness {
 public:
  using Watch = std::weak_ptr<const int>;
  [[nodiscard]] Watch watch() const { return token_; }
  /// From now on no job that watches this calls back.
  void end() { token_.reset(); }

 private:
  std::shared_ptr<const int> token_ = std::make_shared<const int>(0);
};

/// What a job came to: its value, or the words of the exception it threw.
template <typename T>
struct Outcome {
  std::optional<T> value;
  std::string error;  ///< for the operator; empty when there is a value
};

/// The untyped core: `work` runs once on GLib's worker pool, `done` afterwards on the main context of the calling
/// thread. Both closures are destroyed on the calling thread's context, so they may hold what belongs there.
void run_job(std::function<void()> work, std::function<void()> done);

/// Runs `work()` on a worker with copies of what it needs; `done(Outcome)` follows on the main loop, and only while
/// `alive` still holds. An exception of `work` becomes Outcome::error.
template <typename Work, typename Done>
void run_in_background(Liveness::Watch alive, Work work, Done done) {
  using T = decltype(work());
  auto outcome = std::make_shared<Outcome<T>>();
  run_job(
      [outcome, work = std::move(work)]() mutable {
        try {
          outcome->value.emplace(work());
        } catch (const std::exception& error) {
          outcome->error = error.what();
        }
      },
      [outcome, alive = std::move(alive), done = std::move(done)]() mutable {
        if (!alive.expired()) done(std::move(*outcome));
      });
}

}  // namespace base
