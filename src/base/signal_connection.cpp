#include "base/signal_connection.h"

namespace base {

SignalConnection::SignalConnection(gpointer instance, const char* signal, GCallback handler, gpointer data)
    : instance_(new GWeakRef), id_(g_signal_connect(instance, signal, handler, data)) {
  g_weak_ref_init(instance_, instance);
}

SignalConnection::SignalConnection(SignalConnection&& other) noexcept
    : instance_(std::exchange(other.instance_, nullptr)), id_(std::exchange(other.id_, 0)) {}

SignalConnection& SignalConnection::operator=(SignalConnection&& other) noexcept {
  std::swap(instance_, other.instance_);
  std::swap(id_, other.id_);
  return *this;
}

void SignalConnection::disconnect() {
  if (!instance_) return;
  if (gpointer object = g_weak_ref_get(instance_)) {
    g_signal_handler_disconnect(object, id_);
    g_object_unref(object);
  }
  g_weak_ref_clear(instance_);
  delete std::exchange(instance_, nullptr);
}

namespace {

class Closure {
 public:
  static GClosure* make(std::function<void()> handler) {
    GClosure* closure = g_closure_new_simple(sizeof(GClosure), new std::function<void()>(std::move(handler)));
    g_closure_set_marshal(closure, [](GClosure* self, GValue*, guint, const GValue*, gpointer, gpointer) {
      (*static_cast<std::function<void()>*>(self->data))();
    });
    g_closure_add_finalize_notifier(closure, closure->data,
                                    [](gpointer data, GClosure*) { delete static_cast<std::function<void()>*>(data); });
    return closure;
  }
};

}  // namespace

void connect_forever(gpointer instance, const char* signal, std::function<void()> handler) {
  g_signal_connect_closure(instance, signal, Closure::make(std::move(handler)), FALSE);
}

}  // namespace base
