#include "base/descriptor_watch.h"

#include <glib-unix.h>

namespace base {
namespace {

// GLib keeps `ready` until this has returned, whatever becomes of the watch meanwhile.
gboolean dispatch(gint, GIOCondition, gpointer ready) {
  (*static_cast<std::function<void()>*>(ready))();
  return G_SOURCE_REMOVE;
}

}  // namespace

DescriptorWatch::DescriptorWatch(int descriptor, std::chrono::milliseconds at_most, std::function<void()> ready)
    : source_(g_unix_fd_source_new(descriptor, G_IO_IN)) {
  g_source_set_ready_time(source_.get(), g_get_monotonic_time() + std::chrono::microseconds(at_most).count());
  g_source_set_callback(source_.get(), G_SOURCE_FUNC(&dispatch), new std::function<void()>(std::move(ready)),
                        [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
  g_source_attach(source_.get(), g_main_context_get_thread_default());
}

void DescriptorWatch::end(GSource* source) {
  g_source_destroy(source);
  g_source_unref(source);
}

}  // namespace base
