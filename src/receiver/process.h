// One started program: created, watched, signalled, never waited for.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/gobject_ptr.h"

namespace receiver {

/// Starts a program with standard output piped and standard error merged into it; standard input is /dev/null. It has
/// the launcher's own environment, working directory and process group. Throws std::runtime_error with GLib's words.
base::GObjectPtr<GSubprocess> spawn(const std::vector<std::string>& argv);

/// False when the process has ended, reaped or not. Looks without reaping: that is GLib's part.
bool still_running(GSubprocess* process);

/// Tells once, on the main loop, how a process ended. Destroying the watch ends it without a call.
class ExitWatch {
 public:
  /// `clean` is an exit with status 0; `error` says why the wait itself failed, and is empty otherwise.
  using Callback = std::function<void(bool clean, const std::string& error)>;

  ExitWatch() = default;
  ExitWatch(GSubprocess* process, Callback callback);
  ExitWatch(ExitWatch&& other) noexcept = default;
  ExitWatch& operator=(ExitWatch&& other) noexcept;
  ~ExitWatch();

 private:
  struct Wait;
  static void finished(GObject* process, GAsyncResult* result, gpointer data);
  void stop();
  std::shared_ptr<Wait> wait_;
};

}  // namespace receiver
