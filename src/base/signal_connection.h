// GObject signal handlers that end with their owner.
#pragma once

#include <functional>
#include <utility>

#include <glib-object.h>

namespace base {

/// One handler of one signal, disconnected on destruction. Survives the instance dying first. Move-only.
class SignalConnection {
 public:
  SignalConnection() = default;
  /// `handler` has the C signature of the signal, `data` its last argument.
  SignalConnection(gpointer instance, const char* signal, GCallback handler, gpointer data);
  SignalConnection(SignalConnection&& other) noexcept;
  SignalConnection& operator=(SignalConnection&& other) noexcept;
  SignalConnection(const SignalConnection&) = delete;
  SignalConnection& operator=(const SignalConnection&) = delete;
  ~SignalConnection() { disconnect(); }

  void disconnect();

 private:
  GWeakRef* instance_ = nullptr;
  gulong id_ = 0;
};

/// Connects a callable without arguments to a signal for as long as the instance lives: for handlers that belong to the
/// widget itself ("clicked", "toggled", "changed" and all others whose handler returns nothing).
void connect_forever(gpointer instance, const char* signal, std::function<void()> handler);

}  // namespace base
