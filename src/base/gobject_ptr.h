// Owning handles for GLib's objects and memory. Ownership is named where it begins: adopt() takes the caller's
// reference, share() adds one of its own.
#pragma once

#include <memory>
#include <utility>

#include <gio/gio.h>

namespace base {

/// One strong reference to a GObject, released on destruction. Null is allowed. Not thread-safe itself; the
/// reference count underneath is.
template <typename T>
class GObjectPtr {
 public:
  GObjectPtr() = default;
  GObjectPtr(std::nullptr_t) {}
  GObjectPtr(const GObjectPtr& other) : object_(other.object_) {
    if (object_) g_object_ref(object_);
  }
  GObjectPtr(GObjectPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  GObjectPtr& operator=(GObjectPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~GObjectPtr() {
    if (object_) g_object_unref(object_);
  }

  /// Takes over a reference that the caller owns ("transfer full").
  static GObjectPtr adopt(T* object) { return GObjectPtr(object); }
  /// Adds a reference to an object that somebody else owns; sinks a floating one.
  static GObjectPtr share(T* object) {
    if (object) g_object_ref_sink(object);
    return GObjectPtr(object);
  }

  [[nodiscard]] T* get() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  void reset() { *this = GObjectPtr(); }
  /// Gives the reference away, to a function that takes "transfer full".
  [[nodiscard]] T* release() { return std::exchange(object_, nullptr); }

 private:
  explicit GObjectPtr(T* object) : object_(object) {}
  T* object_ = nullptr;
};

namespace detail {
template <auto Release>
struct Releaser {
  template <typename T>
  void operator()(T* pointer) const {
    Release(pointer);
  }
};
}  // namespace detail

using GStringPtr = std::unique_ptr<char, detail::Releaser<&g_free>>;
using GErrorPtr = std::unique_ptr<GError, detail::Releaser<&g_error_free>>;
using GKeyFilePtr = std::unique_ptr<GKeyFile, detail::Releaser<&g_key_file_unref>>;
using GStrvPtr = std::unique_ptr<char*, detail::Releaser<&g_strfreev>>;
using GBytesPtr = std::unique_ptr<GBytes, detail::Releaser<&g_bytes_unref>>;
using GMainLoopPtr = std::unique_ptr<GMainLoop, detail::Releaser<&g_main_loop_unref>>;

/// The out-parameter of GLib calls: pass `error.out()`, then ask.
class ErrorSlot {
 public:
  GError** out() {
    g_clear_error(&error_);
    return &error_;
  }
  ErrorSlot() = default;
  ErrorSlot(const ErrorSlot&) = delete;
  ErrorSlot& operator=(const ErrorSlot&) = delete;
  ~ErrorSlot() { g_clear_error(&error_); }
  explicit operator bool() const { return error_ != nullptr; }
  [[nodiscard]] const char* message() const { return error_ && error_->message ? error_->message : ""; }
  [[nodiscard]] bool matches(GQuark domain, int code) const { return g_error_matches(error_, domain, code); }

 private:
  GError* error_ = nullptr;
};

}  // namespace base
