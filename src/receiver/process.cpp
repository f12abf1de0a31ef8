#include "receiver/process.h"

#include <stdexcept>
#include <sys/wait.h>
#include <utility>

#include "base/numbers.h"

namespace receiver {

base::GObjectPtr<GSubprocess> spawn(const std::vector<std::string>& argv) {
  std::vector<const char*> words;
  for (const std::string& word : argv)
    words.push_back(word.c_str());
  words.push_back(nullptr);
  base::ErrorSlot error;
  const auto flags = static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_MERGE);
  auto process = base::GObjectPtr<GSubprocess>::adopt(g_subprocess_newv(words.data(), flags, error.out()));
  if (!process) throw std::runtime_error(error.message());
  return process;
}

bool still_running(GSubprocess* process) {
  const char* identifier = g_subprocess_get_identifier(process);
  if (!identifier) return false;
  siginfo_t info{};
  const auto pid = static_cast<id_t>(base::parse_unsigned(identifier).value());
  return waitid(P_PID, pid, &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid == 0;
}

// Shared by the watch and GLib's pending call, which may outlive it.
struct ExitWatch::Wait {
  Callback callback;
  base::GObjectPtr<GCancellable> cancellable = base::GObjectPtr<GCancellable>::adopt(g_cancellable_new());
  bool wanted = true;
};

ExitWatch::ExitWatch(GSubprocess* process, Callback callback) : wait_(std::make_shared<Wait>()) {
  wait_->callback = std::move(callback);
  g_subprocess_wait_async(process, wait_->cancellable.get(), finished, new std::shared_ptr<Wait>(wait_));
}

ExitWatch& ExitWatch::operator=(ExitWatch&& other) noexcept {
  stop();
  wait_ = std::move(other.wait_);
  return *this;
}

ExitWatch::~ExitWatch() {
  stop();
}

void ExitWatch::stop() {
  if (!wait_) return;
  wait_->wanted = false;
  g_cancellable_cancel(wait_->cancellable.get());
  wait_.reset();
}

void ExitWatch::finished(GObject* process, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<Wait>> wait(static_cast<std::shared_ptr<Wait>*>(data));
  base::ErrorSlot error;
  const bool known = g_subprocess_wait_finish(G_SUBPROCESS(process), result, error.out());
  if (!(*wait)->wanted) return;
  (*wait)->wanted = false;
  (*wait)->callback(known && g_subprocess_get_successful(G_SUBPROCESS(process)), known ? "" : error.message());
}

}  // namespace receiver
