#include "receiver/live_settings.h"

#include <algorithm>
#include <mutex>
#include <random>

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "receiver/apply_plan.h"

namespace receiver {
namespace {

using std::chrono::milliseconds;

/// An engine with a journal, answering on whichever thread asks.
class FakeEngine {
 public:
  Settings take(const Settings& settings) {
    const std::lock_guard guard(lock_);
    journal_.push_back(settings);
    if (std::includes(hardware_.begin(), hardware_.end(), settings.begin(), settings.end())) ++repeats_;
    if (refuses_) throw std::runtime_error("ERR refused");
    for (const auto& [key, value] : settings)
      hardware_[key] = value;
    return settings;
  }
  void refuse(bool refuses) {
    const std::lock_guard guard(lock_);
    refuses_ = refuses;
  }
  [[nodiscard]] std::vector<Settings> journal() const {
    const std::lock_guard guard(lock_);
    return journal_;
  }
  /// How often it was told nothing that it had not.
  [[nodiscard]] int repeats() const {
    const std::lock_guard guard(lock_);
    return repeats_;
  }
  [[nodiscard]] Settings hardware() const {
    const std::lock_guard guard(lock_);
    return hardware_;
  }

 private:
  mutable std::mutex lock_;
  bool refuses_ = false;
  int repeats_ = 0;
  std::vector<Settings> journal_;
  Settings hardware_{{"lna-state", "0"}, {"gain-reduction", "50"}, {"agc", "on"}};
};

class LiveSettingsTest : public testing::Test {
 protected:
  LiveSettingsTest() { start(); }

  void start() {
    launch_.name = "A";
    launch_.control_path = "/nowhere";
    launch_.profile = engine_.hardware();
    launch_.profile["backend"] = "sdrplay";
    settings_.begin_session({launch_});
    running_ = true;
  }
  void save(const Settings& settings) {
    for (const auto& [key, value] : settings)
      saved_[key] = value;
  }
  void settle() {
    while (settings_.pending("A"))
      g_main_context_iteration(nullptr, TRUE);
  }

  FakeEngine engine_;
  launcher::ReceiverLaunch launch_;
  bool running_ = false;
  Settings saved_{{"lna-state", "0"}, {"gain-reduction", "50"}, {"agc", "on"}};
  std::vector<std::string> refusals_;
  Settings shown_;
  LiveSettings settings_{{[this](const std::string&, const Settings& settings) { return engine_.take(settings); },
                          [this](const std::string&) { return running_ ? &launch_ : nullptr; },
                          [this](const std::string&, const Settings&, const Settings& to_save) { save(to_save); },
                          [this](const std::string&, const Settings& settings) { save(settings); },
                          [this](const std::string&, const std::string& reason, const Settings& shown) {
                            refusals_.push_back(reason);
                            shown_ = shown;
                          }},
                         milliseconds(1)};
};

TEST_F(LiveSettingsTest, ADraggedSliderIsOneRequest) {
  for (const char* state : {"1", "2", "3", "4"})
    settings_.edit("A", "lna-state", state);
  settings_.edit("A", "agc", "off");
  settle();
  EXPECT_EQ(engine_.journal(), (std::vector<Settings>{{{"agc", "off"}, {"lna-state", "4"}}}));
  EXPECT_EQ(saved_.at("lna-state"), "4");
  settings_.edit("A", "lna-state", "4");
  settings_.apply_live_sdr("A");
  settle();
  EXPECT_EQ(engine_.journal().size(), 1U);
}

TEST_F(LiveSettingsTest, ARefusedValueIsNeverSavedAndTheControlReturns) {
  engine_.refuse(true);
  settings_.edit("A", "lna-state", "9");
  settings_.apply_live_sdr("A");
  running_ = false;  // Stop comes before the answer
  settle();
  EXPECT_EQ(refusals_, std::vector<std::string>{"ERR refused"});
  EXPECT_EQ(saved_.at("lna-state"), "0");
  EXPECT_EQ(shown_.at("lna-state"), "0");
}

TEST_F(LiveSettingsTest, WhatCannotBeSentIsRefusedAtOnce) {
  const struct {
    const char *key, *value, *reason;
  } cases[] = {{"", "1", "No setting to change"},
               {"sample-rate", "2M", "sample-rate cannot change while the receiver runs"},
               {"bandwidth", "3k", "bandwidth cannot change while the receiver runs"},
               {"lna-state", "loud", "Invalid value for lna-state"},
               {"agc", "maybe", "Invalid value for agc"},
               {"antenna", "", "Invalid value for antenna"}};
  for (const auto& example : cases) {
    refusals_.clear();
    settings_.edit("A", example.key, example.value);
    EXPECT_EQ(refusals_, std::vector<std::string>{example.reason});
  }
  launch_.control_path.clear();
  refusals_.clear();
  settings_.edit("A", "lna-state", "1");
  settle();
  EXPECT_EQ(refusals_, std::vector<std::string>{"Restart this receiver to enable live SDR control"});
  EXPECT_TRUE(engine_.journal().empty());
}

TEST_F(LiveSettingsTest, AnAnswerOfAnEarlierSessionIsDropped) {
  settings_.edit("A", "lna-state", "2");
  settings_.apply_live_sdr("A");
  start();
  settings_.edit("A", "agc", "off");
  settle();
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  EXPECT_EQ(saved_.at("lna-state"), "0");
  EXPECT_EQ(saved_.at("agc"), "off");
}

/// Whatever the operator and the engine do: what is saved is what the hardware last accepted, nothing is sent that the
/// hardware has already, and no request stays out for ever.
TEST_F(LiveSettingsTest, WhatIsSavedIsWhatTheHardwareAccepted) {
  std::mt19937 random(3);
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  for (int sequence = 0; sequence < 2000; ++sequence) {
    for (unsigned step = 0, steps = 1 + below(8); step < steps; ++step) {
      switch (below(6)) {
        case 0:
        case 1:
          settings_.edit("A", "lna-state", std::to_string(below(4)));
          break;
        case 2:
          settings_.edit("A", "gain-reduction", std::to_string(20 + below(3)));
          break;
        case 3:
          settings_.apply_live_sdr("A");
          break;
        case 4:
          engine_.refuse(below(2) == 0);
          break;
        default:
          g_main_context_iteration(nullptr, FALSE);
      }
    }
    settle();
    ASSERT_EQ(saved_, engine_.hardware()) << sequence;
  }
  EXPECT_EQ(engine_.repeats(), 0);
  EXPECT_GT(engine_.journal().size(), 500U);
  EXPECT_FALSE(refusals_.empty());
}

TEST(ApplyPlan, AFailureStopsARetuneBeforeAnythingChangedButNoWalkOfSettings) {
  std::vector<std::string> sent;
  const Transport transport = [&](const std::string& path, const std::string& request, int timeout) {
    sent.push_back(fmt::format("{} {} {}", path, request, timeout));
    if (path == "deaf") throw std::runtime_error("Audio request timed out");
    return std::string(path == "stubborn" || (path == "late" && request == "A") ? "ERR no room" : "OK");
  };
  const Settings depth{{"decode-depth", "3"}};
  const SettingsOutcome settings =
      apply_settings({{"A", "stubborn", depth, {}}, {"B", "deaf", depth, {}}, {"C", "fine", depth, {}}}, transport);
  EXPECT_EQ(settings.confirmed, (std::map<std::string, Settings>{{"C", depth}}));
  EXPECT_EQ(settings.failure, "ERR no room");
  sent.clear();
  const RetuneOutcome refused = retune_receivers({{"A", "fine", "C", "A"}, {"B", "stubborn", "C", "A"}}, transport);
  EXPECT_TRUE(refused.succeeded.empty());
  EXPECT_EQ(sent, (std::vector<std::string>{"fine C 15000", "stubborn C 15000"}));
  sent.clear();
  EXPECT_EQ(retune_receivers({{"A", "fine", "C", "A"}, {"B", "fine", "C", "A"}}, transport).succeeded.size(), 2U);
  EXPECT_EQ(sent.back(), "fine A 30000");
  const RetuneOutcome half = retune_receivers({{"A", "fine", "C", "A"}, {"B", "late", "C", "A"}}, transport);
  EXPECT_EQ(half.succeeded, std::vector<std::string>{"A"});
  EXPECT_EQ(half.failure, "ERR no room");
}

}  // namespace
}  // namespace receiver
