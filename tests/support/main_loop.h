// Turning the main loop inside a test, for as long as something takes.
#pragma once

#include <chrono>

#include <glib.h>
#include <gtest/gtest.h>

namespace test {

/// Runs the default main context until `reached()` holds; fails the test after `limit`.
template <typename Condition>
void run_until(Condition reached, std::chrono::milliseconds limit = std::chrono::seconds(10)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!reached()) {
    if (std::chrono::steady_clock::now() > end) {
      ADD_FAILURE() << "did not happen within " << limit.count() << " ms";
      return;
    }
    if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(500);
  }
}

/// Runs the default main context for that long: to see that something does not happen.
inline void run_for(std::chrono::milliseconds duration) {
  const auto end = std::chrono::steady_clock::now() + duration;
  while (std::chrono::steady_clock::now() < end)
    if (!g_main_context_iteration(nullptr, FALSE)) g_usleep(500);
}

}  // namespace test
