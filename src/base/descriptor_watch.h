// Waiting on the main loop for a descriptor that can be read.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "base/gobject_ptr.h"

namespace base {

/// Tells once, on the thread's default main context, when a descriptor can be read, when its other end has gone, or
/// when `at_most` has passed; a read that does not block then says which. Destroying it ends the waiting; the callback
/// may do so. The descriptor must stay open meanwhile. Move-only; main thread only.
class DescriptorWatch {
 public:
  DescriptorWatch(int descriptor, std::chrono::milliseconds at_most, std::function<void()> ready);

 private:
  static void end(GSource* source);
  std::unique_ptr<GSource, detail::Releaser<&end>> source_;
};

}  // namespace base
