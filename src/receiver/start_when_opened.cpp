#include "receiver/start_when_opened.h"

#include <utility>

#include <fmt/format.h>

namespace receiver {

StartWhenOpened::StartWhenOpened(Launcher launcher, const Timing& timing)
    : launcher_(std::move(launcher)), timing_(timing) {}

void StartWhenOpened::arm() {
  launcher_.report("Receivers start when Tarnwick opens (Settings): starting them in a few seconds.");
  tries_ = 0;
  timer_ = base::Timer::repeating(timing_.start_period, [this] { look(); });
}

void StartWhenOpened::look() {
  if (launcher_.settled()) {
    timer_.cancel();
  } else if (launcher_.occupied()) {
    count_try("Did not start the receivers on their own: the launcher stayed busy.");
  } else if (launcher_.can_start()) {
    timer_.cancel();
    launcher_.report("Starting the receivers (start when Tarnwick opens).");
    launcher_.start();
  } else {
    count_try(fmt::format("Did not start the receivers on their own: {}", launcher_.status()));
  }
}

void StartWhenOpened::count_try(const std::string& last_words) {
  if (++tries_ < timing_.start_tries) return;
  timer_.cancel();
  launcher_.report(last_words);
}

}  // namespace receiver
