#include "receiver/meter_poller.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "engine_socket.h"
#include "support/main_loop.h"
#include "support/temporary_directory.h"

namespace receiver {
namespace {

constexpr const char* reply =
    "OK LEVELS state=ready,peak=-30,rms=-42,hold=-28,age=0.1,samples=1\nOK OVERLOAD state=clear,events=0\nOK IFGAIN "
    "state=ready,reduction=40\n";

class PollerTest : public testing::Test {
 protected:
  MeterTarget target(const std::string& name) { return {name, files_ / name}; }
  /// Ticks and lets the engine of A answer. Returns how often it was asked, and sees that so many answers arrive.
  std::size_t tick(const EngineSocket& engine) {
    poller_.tick();
    const std::size_t asked = engine.answer(reply);
    const std::size_t expected = changes_["A"] + asked;
    test::run_until([&] { return changes_["A"] >= expected; });
    return asked;
  }

  test::TemporaryDirectory files_;
  std::int64_t now_ = 1000000;
  bool shown_ = true;
  std::vector<MeterTarget> targets_{target("A")};
  std::map<std::string, std::size_t> changes_;
  MeterPoller poller_{{[this] { return targets_; }, [this] { return shown_; },
                       [this](const std::string& name) { ++changes_[name]; }, [this] { return now_; }}};
};

TEST_F(PollerTest, AsksOftenOnlyWhileSomebodyLooks) {
  const EngineSocket engine(files_ / "A");
  const auto asked_after = [&](std::int64_t microseconds) {
    now_ += microseconds;
    return tick(engine);
  };
  EXPECT_EQ(asked_after(0), 1U);
  EXPECT_EQ(asked_after(50000), 1U);
  shown_ = false;
  EXPECT_EQ(asked_after(0), 1U);
  EXPECT_EQ(asked_after(900000), 0U);
  EXPECT_EQ(asked_after(100000), 1U);
  shown_ = true;
  EXPECT_EQ(asked_after(50000), 1U);
  EXPECT_EQ(poller_.snapshot("A")->taken, now_);
}

TEST_F(PollerTest, HungReceiversHoldOnlyTheirOwnSlots) {
  const EngineSocket engine(files_ / "A"), never_answers(files_ / "hung");
  for (int i = 0; i < 12; ++i)
    targets_.push_back({"hung " + std::to_string(i), files_ / "hung"});
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(tick(engine), 1U);
  EXPECT_EQ(poller_.snapshot("A")->reading.if_reduction, 40);
  const auto all_failed = [&] {
    return std::all_of(targets_.begin() + 1, targets_.end(),
                       [&](const auto& each) { return !poller_.snapshot(each.name)->error.empty(); });
  };
  test::run_until(all_failed);
  EXPECT_EQ(poller_.snapshot("hung 11")->error, "Audio request timed out");
  EXPECT_EQ(poller_.snapshot("hung 11")->reading.level_state, "unavailable");
}

TEST_F(PollerTest, AReceiverIsAskedOnceAtATime) {
  const EngineSocket engine(files_ / "A");
  poller_.tick();
  EXPECT_EQ(tick(engine), 1U);
  EXPECT_EQ(tick(engine), 1U);
}

TEST_F(PollerTest, AnEngineThatHasGoneIsToldAtOnceAndKeepsNoReading) {
  {
    const EngineSocket engine(files_ / "A");
    tick(engine);
  }
  poller_.tick();
  EXPECT_EQ(poller_.snapshot("A")->error, "Audio receiver control is unavailable");
  EXPECT_EQ(poller_.snapshot("A")->reading.level_state, "unavailable");
  EXPECT_EQ(changes_["A"], 2U);
}

TEST_F(PollerTest, AnAnswerDoesNotCrossASession) {
  const EngineSocket engine(files_ / "A");
  poller_.tick();
  poller_.begin_session();
  EXPECT_EQ(engine.answer(reply), 1U);
  test::run_for(std::chrono::milliseconds(20));
  EXPECT_EQ(poller_.snapshot("A"), nullptr);
  EXPECT_EQ(tick(engine), 1U) << "the new session asks for itself";
}

TEST_F(PollerTest, AnAnswerThatCameInTimeCountsThoughTheLoopWasBusy) {
  const EngineSocket engine(files_ / "A");
  poller_.tick();
  engine.answer(reply);
  g_usleep(250000);
  test::run_until([this] { return !changes_.empty(); });
  EXPECT_EQ(poller_.snapshot("A")->error, "");
}

}  // namespace
}  // namespace receiver
