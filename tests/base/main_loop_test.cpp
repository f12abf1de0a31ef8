#include "support/main_loop.h"

#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/background.h"
#include "base/gobject_ptr.h"
#include "base/signal_connection.h"
#include "base/timer.h"

namespace {

using namespace std::chrono_literals;
using base::Timer;
using test::run_for;
using test::run_until;

TEST(TimerTest, FiresAsOftenAsItsKindSays) {
  int once = 0, idle = 0, repeating = 0;
  const auto one = Timer::once(1ms, [&] { ++once; });
  const auto soon = Timer::idle([&] { ++idle; });
  auto many = Timer::repeating(1ms, [&] { ++repeating; });
  EXPECT_TRUE(one.armed());
  run_until([&] { return repeating >= 5; });
  EXPECT_EQ(once, 1);
  EXPECT_EQ(idle, 1);
  EXPECT_FALSE(one.armed());
  EXPECT_TRUE(many.armed());
  many.cancel();
  const int before = repeating;
  run_for(10ms);
  EXPECT_EQ(repeating, before);
}

TEST(TimerTest, ACallbackMayEndOrReplaceItsOwnTimer) {
  const auto token = std::make_shared<int>(0);  // what the callback holds must outlive its run
  int runs = 0;
  Timer timer = Timer::repeating(1ms, [&, token] {
    timer.cancel();
    ++runs;
    *token = runs;
  });
  run_for(10ms);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(token.use_count(), 1) << "the callback is gone with its timer";

  std::function<void()> again = [&] {
    if (++runs < 4) timer = Timer::once(1ms, again);
  };
  timer = Timer::once(1ms, again);
  run_until([&] { return runs >= 4; });
  run_for(5ms);
  EXPECT_EQ(runs, 4);
  EXPECT_FALSE(timer.armed());
}

TEST(TimerTest, EndsWithItsOwner) {
  int runs = 0;
  {
    Timer first = Timer::once(1ms, [&] { ++runs; });
    Timer second = std::move(first);
    first = Timer::idle([&] { runs += 10; });
    first = Timer();
  }
  run_for(10ms);
  EXPECT_EQ(runs, 0);
}

TEST(BackgroundTest, WorkIsElsewhereAndItsResultHere) {
  base::Liveness owner;
  const auto here = std::this_thread::get_id();
  std::thread::id worker, completion;
  base::Outcome<std::unique_ptr<int>> result;
  base::run_in_background(
      owner.watch(),
      [&] {
        worker = std::this_thread::get_id();
        return std::make_unique<int>(42);
      },
      [&](auto outcome) {
        completion = std::this_thread::get_id();
        result = std::move(outcome);
      });
  run_until([&] { return result.value.has_value(); });
  EXPECT_EQ(**result.value, 42);
  EXPECT_EQ(completion, here);
  EXPECT_NE(worker, here);
}

TEST(BackgroundTest, AnExceptionComesBackAsItsWords) {
  base::Liveness owner;
  std::optional<base::Outcome<int>> result;
  base::run_in_background(
      owner.watch(), []() -> int { throw std::runtime_error("the disk is gone"); },
      [&](auto outcome) { result = std::move(outcome); });
  run_until([&] { return result.has_value(); });
  EXPECT_FALSE(result->value);
  EXPECT_EQ(result->error, "the disk is gone");
}

TEST(BackgroundTest, NothingCallsBackAfterItsOwnerEnded) {
  base::Liveness ended;
  auto destroyed = std::make_unique<base::Liveness>();
  const auto here = std::this_thread::get_id();
  int calls = 0, freed = 0;
  bool freed_here = true;
  const auto count_freed = [&](int* value) {
    ++freed;
    freed_here = freed_here && std::this_thread::get_id() == here;
    delete value;
  };
  for (const auto& watch : {ended.watch(), destroyed->watch()}) {
    const std::shared_ptr<int> held(new int(0), count_freed);
    base::run_in_background(
        watch, [] { return 1; }, [&calls, held](auto) { ++calls; });
  }
  ended.end();
  destroyed.reset();
  run_until([&] { return freed == 2; });
  EXPECT_EQ(calls, 0);
  EXPECT_TRUE(freed_here) << "what a completion holds is released on its own thread";
}

base::GObjectPtr<GSimpleAction> make_action() {
  return base::GObjectPtr<GSimpleAction>::adopt(g_simple_action_new("test", nullptr));
}

void count(GSimpleAction*, GVariant*, gpointer calls) {
  ++*static_cast<int*>(calls);
}

TEST(SignalConnectionTest, EndsWithItsOwner) {
  const auto action = make_action();
  const auto fire = [&] { g_action_activate(G_ACTION(action.get()), nullptr); };
  int calls = 0;
  {
    base::SignalConnection first(action.get(), "activate", G_CALLBACK(count), &calls);
    fire();
    base::SignalConnection second = std::move(first);
    fire();
    EXPECT_EQ(calls, 2);
  }
  fire();
  EXPECT_EQ(calls, 2);
}

TEST(SignalConnectionTest, SurvivesItsInstanceInEveryState) {
  g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL | G_LOG_FATAL_MASK));
  int calls = 0;
  auto gone = make_action();
  base::SignalConnection to_gone(gone.get(), "activate", G_CALLBACK(count), &calls);
  gone.reset();
  to_gone.disconnect();

  // A destroyed widget that somebody still holds: alive, but without its handlers.
  const auto disposed = make_action();
  base::SignalConnection to_disposed(disposed.get(), "activate", G_CALLBACK(count), &calls);
  g_object_run_dispose(G_OBJECT(disposed.get()));
  to_disposed.disconnect();
}

TEST(SignalConnectionTest, AHandlerForeverGoesWithTheInstance) {
  auto action = make_action();
  const auto token = std::make_shared<int>(0);
  base::connect_forever(action.get(), "activate", [token] { ++*token; });
  g_action_activate(G_ACTION(action.get()), nullptr);
  EXPECT_EQ(*token, 1);
  action.reset();
  EXPECT_EQ(token.use_count(), 1);
}

}  // namespace
