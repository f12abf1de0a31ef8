#include "base/timer.h"

#include <glib.h>

namespace base {

// Shared between the handle and the GLib source: the source may be dispatching when the handle dies, so the callback
// lives until the source lets go of it.
struct Timer::State {
  struct Shared {
    Callback callback;
    bool repeats = false;
    bool armed = true;
  };
  std::shared_ptr<Shared> shared;
  GSource* source = nullptr;
};

namespace {

template <typename Shared>
gboolean dispatch(gpointer data) {
  const std::shared_ptr<Shared> shared = *static_cast<std::shared_ptr<Shared>*>(data);
  if (!shared->repeats) shared->armed = false;
  shared->callback();
  return shared->armed && shared->repeats ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
}

}  // namespace

void Timer::StateDeleter::operator()(State* state) const {
  state->shared->armed = false;
  g_source_destroy(state->source);
  g_source_unref(state->source);
  delete state;
}

namespace {

template <typename Shared>
void attach(GSource* source, const std::shared_ptr<Shared>& shared) {
  g_source_set_callback(source, dispatch<Shared>, new std::shared_ptr<Shared>(shared),
                        [](gpointer data) { delete static_cast<std::shared_ptr<Shared>*>(data); });
  g_source_attach(source, g_main_context_get_thread_default());
}

}  // namespace

Timer Timer::once(std::chrono::milliseconds delay, Callback callback) {
  Timer timer;
  timer.state_.reset(
      new State{std::make_shared<State::Shared>(), g_timeout_source_new(static_cast<guint>(delay.count()))});
  timer.state_->shared->callback = std::move(callback);
  attach(timer.state_->source, timer.state_->shared);
  return timer;
}

Timer Timer::repeating(std::chrono::milliseconds period, Callback callback) {
  Timer timer;
  timer.state_.reset(
      new State{std::make_shared<State::Shared>(), g_timeout_source_new(static_cast<guint>(period.count()))});
  timer.state_->shared->callback = std::move(callback);
  timer.state_->shared->repeats = true;
  attach(timer.state_->source, timer.state_->shared);
  return timer;
}

Timer Timer::idle(Callback callback) {
  Timer timer;
  timer.state_.reset(new State{std::make_shared<State::Shared>(), g_idle_source_new()});
  timer.state_->shared->callback = std::move(callback);
  attach(timer.state_->source, timer.state_->shared);
  return timer;
}

bool Timer::armed() const {
  return state_ && state_->shared->armed;
}

}  // namespace base
