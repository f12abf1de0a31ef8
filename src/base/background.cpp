#include "base/background.h"

#include <atomic>

#include "base/gobject_ptr.h"

namespace base {
namespace {

struct Job {
  std::function<void()> work;
  std::function<void()> done;
};

/// GTask hands a job over from thread to thread. This says so in terms that the thread sanitizer sees, which does not
/// see into GLib.
void hand_over() {
  static std::atomic<unsigned> handed_over{0};
  handed_over.fetch_add(1, std::memory_order_acq_rel);
}

void run_work(GTask* task, gpointer, gpointer data, GCancellable*) {
  hand_over();
  static_cast<Job*>(data)->work();
  hand_over();
  g_task_return_boolean(task, TRUE);
}

// A GTask may drop its last reference, and with it its data, on the worker; the job is therefore owned by the
// completion, which always runs on the main context.
void finish(GObject*, GAsyncResult*, gpointer data) {
  hand_over();
  const std::unique_ptr<Job> job(static_cast<Job*>(data));
  job->done();
}

}  // namespace

void run_job(std::function<void()> work, std::function<void()> done) {
  auto* job = new Job{std::move(work), std::move(done)};
  hand_over();
  const auto task = GObjectPtr<GTask>::adopt(g_task_new(nullptr, nullptr, finish, job));
  g_task_set_task_data(task.get(), job, nullptr);
  g_task_run_in_thread(task.get(), run_work);
}

}  // namespace base
