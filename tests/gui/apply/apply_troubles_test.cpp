// What can be in the way of a change, one trouble at a time.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/file_write.h"
#include "gui/apply/small_launcher.h"
#include "support/main_loop.h"

namespace gui::testing_apply {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ApplyTroubles : public testing::Test {
 protected:
  void start() {
    launcher_.start();
    settle();
  }
  /// Every request is answered, and everything has been heard.
  void settle() {
    test::run_until([this] {
      for (const Request& request : take_requests())
        launcher_.engines.finish(request.id, Fate::answered);
      return launcher_.at_rest() && launcher_.jobs() == 0 && !launcher_.flow().live().pending(dx) && !launcher_.turn();
    });
  }
  /// Until a request is out; it is not answered.
  Request request() {
    test::run_until([this] { return !launcher_.engines.held().empty(); });
    const auto held = take_requests();
    return held.empty() ? Request{} : held.front();
  }
  std::vector<Request> take_requests() {
    for (const Request& request : launcher_.engines.take_arrivals())
      sent_.push_back(request.text);
    return launcher_.engines.held();
  }
  std::string setting(const std::string& key) { return launcher_.session().value("receiver." + dx + "." + key); }
  options::Profile engine(const std::string& name) {
    const auto view = launcher_.engines.engine(name);
    return view ? view->settings : options::Profile{};
  }
  void wait_for_restart(const std::string& name) {
    launcher_.kill(name, SIGUSR1);
    test::run_until([&] { return launcher_.supervisor().pending_restarts().contains(name); });
  }

  SmallLauncher launcher_{test_station(false, "/nowhere")};
  std::vector<std::string> sent_;
};

TEST_F(ApplyTroubles, NothingEditedIsSavedAgainAndTellsNobody) {
  start();
  std::filesystem::remove(launcher_.session_file());
  launcher_.apply();
  EXPECT_EQ(launcher_.reports.back(), "Settings saved; the running receivers already use them.");
  EXPECT_EQ(options::read_profile(launcher_.session_file()), launcher_.session().profile());
  settle();
  EXPECT_THAT(sent_, IsEmpty());
}

TEST_F(ApplyTroubles, AReceiverWithoutASocketSaysWhatWouldHelp) {
  start();
  launcher_.launches().back().control_path.clear();
  launcher_.launches().front().control_path.clear();
  launcher_.flow().edit_live(dx, "lna-state", "3");
  settle();
  EXPECT_EQ(launcher_.reports.back(), "Live SDR update failed: Restart this receiver to enable live SDR control");
  EXPECT_EQ(launcher_.shown.at(dx).at("lna-state"), "1");
  EXPECT_EQ(setting("lna-state"), "1");
}

TEST_F(ApplyTroubles, AWaitingRestartTakesTheNewProfile) {
  start();
  wait_for_restart(dx);
  launcher_.edit("receiver." + dx + ".sample-rate", "8000000");
  launcher_.apply();
  settle();
  EXPECT_EQ(engine(dx).at("sample-rate"), "8000000");
  EXPECT_EQ(launcher_.starts, (std::map<std::string, int>{{dx, 2}, {rx, 1}}));
  EXPECT_FALSE(launcher_.flow().differs_from_running());

  launcher_.unwritable = {dx};
  wait_for_restart(dx);
  launcher_.edit("receiver." + dx + ".sample-rate", "6000000");
  launcher_.apply();
  EXPECT_THAT(launcher_.reports, Contains("Could not update the receiver's restart settings: No space left on device"));
  settle();
  EXPECT_EQ(engine(dx).at("sample-rate"), "8000000");
  EXPECT_TRUE(launcher_.flow().differs_from_running());
}

TEST_F(ApplyTroubles, AllStartAgainAfterTheLastHasStopped) {
  start();
  launcher_.flow().edit_live(dx, "lna-state", "4");  // not sent yet
  launcher_.edit("callsign", "W9XYZ");
  launcher_.apply();
  EXPECT_THAT(launcher_.reports, Contains("Restarting the receivers with the new settings (changed: callsign)."));
  launcher_.apply();
  EXPECT_EQ(launcher_.status, "Wait for the current receiver update to finish, then Apply and Save.");
  settle();
  EXPECT_EQ(launcher_.starts, (std::map<std::string, int>{{dx, 2}, {rx, 2}}));
  EXPECT_EQ(engine(rx).at("callsign"), "W9XYZ");
  EXPECT_EQ(engine(dx).at("lna-state"), "4");
  EXPECT_THAT(sent_, IsEmpty());

  launcher_.edit("callsign", "K1ABC");
  launcher_.apply();
  launcher_.stop();
  settle();
  EXPECT_FALSE(launcher_.supervisor().receiving()) << "Stop is the later wish";
}

TEST_F(ApplyTroubles, ApplyAfterStopOnlySaves) {
  start();
  launcher_.stop();
  launcher_.edit("callsign", "W9XYZ");
  launcher_.apply();
  EXPECT_EQ(launcher_.reports.back(), "Settings saved. The receivers use them when they start.");
  settle();
  EXPECT_FALSE(launcher_.supervisor().receiving());
}

TEST_F(ApplyTroubles, WhatCannotBeSavedIsSaidAndNotForgotten) {
  start();
  launcher_.let_saving_fail(true);
  launcher_.flow().edit_live(dx, "lna-state", "5");
  settle();
  EXPECT_THAT(launcher_.reports, Contains(HasSubstr("Could not save session settings: ")));
  EXPECT_EQ(engine(dx).at("lna-state"), "5");
  launcher_.let_saving_fail(false);
  launcher_.stop();
  EXPECT_THAT(base::read_file(launcher_.session_file()), HasSubstr("lna-state = '5'"));
}

TEST_F(ApplyTroubles, ARestartProfileThatCannotBeWrittenIsSaid) {
  start();
  launcher_.unwritable = {dx};
  launcher_.flow().edit_live(dx, "lna-state", "6");
  settle();
  EXPECT_THAT(launcher_.reports, Contains("Could not update the receiver's restart settings: No space left on device"));
  EXPECT_EQ(setting("lna-state"), "6");
  // The crash brings the old value back, and nobody is told otherwise.
  wait_for_restart(dx);
  settle();
  EXPECT_EQ(engine(dx).at("lna-state"), "1");
  EXPECT_EQ(launcher_.flow().live().applied(dx).at("lna-state"), "1");
  EXPECT_TRUE(launcher_.flow().differs_from_running());
}

TEST_F(ApplyTroubles, AnOldAnswerDoesNotUndoANewerEdit) {
  const struct {
    const char* newer;  ///< the edit while the first is out
    bool stops;
    const char* kept;
  } cases[] = {{"8", true, "8"}, {"", false, ""}};
  for (const auto& example : cases) {
    start();
    launcher_.flow().edit_live(dx, "lna-state", "7");
    const Request out = request();
    launcher_.flow().edit_live(dx, "lna-state", example.newer);
    if (example.stops) launcher_.stop();
    launcher_.engines.finish(out.id, Fate::answered);
    test::run_until([&] { return launcher_.jobs() == 0; });
    EXPECT_EQ(setting("lna-state"), example.kept) << example.newer << example.stops;
    launcher_.stop();
    settle();
    launcher_.edit("receiver." + dx + ".lna-state", "1");
  }
}

TEST_F(ApplyTroubles, ACardWaitsForARetuneAndLosesNothingByIt) {
  start();
  launcher_.edit("bands", "40,30,20");
  launcher_.apply();
  const Request check = request();
  launcher_.flow().edit_live(dx, "lna-state", "3");
  launcher_.edit("decode-depth", "3");  // newer than the change that is under way
  launcher_.flow().apply_live_sdr(dx);
  test::run_for(std::chrono::milliseconds(5));
  EXPECT_EQ(take_requests().size(), 1U);
  launcher_.engines.finish(check.id, Fate::answered);
  settle();
  EXPECT_EQ(sent_.back(), "RADIO SET lna-state=3");
  const options::Profile restart = options::read_profile(launcher_.conf_of(dx));
  EXPECT_EQ(restart.at("lna-state"), "3");
  EXPECT_EQ(restart.count("decode-depth"), 0U) << "no engine was told";
  EXPECT_TRUE(launcher_.flow().differs_from_running());
}

TEST_F(ApplyTroubles, WhatARefusalLeftIsNotToldAgain) {
  start();
  wait_for_restart(dx);
  launcher_.flow().edit_live(dx, "lna-state", "3");
  settle();
  launcher_.edit("decode-depth", "3");
  launcher_.engines.refuse(dx, {"lna-state"});
  launcher_.apply();
  settle();
  EXPECT_EQ(launcher_.errors, std::vector<std::string>{"ERR The hardware refused lna-state"});
  launcher_.engines.refuse(dx, {});
  sent_.clear();
  launcher_.apply();
  settle();
  EXPECT_THAT(sent_, ElementsAre("RADIO SET lna-state=3"));
  EXPECT_FALSE(launcher_.flow().differs_from_running());
}

TEST_F(ApplyTroubles, ACrashUndoesWhatARetuneLeftOfTheCapture) {
  start();
  const double narrow = launcher_.find_launch(rx)->capture.sample_rate;
  launcher_.edit("bands", "160,40,20");
  launcher_.apply();
  settle();
  const double wide = launcher_.find_launch(rx)->capture.sample_rate;
  ASSERT_GT(wide, narrow);
  launcher_.edit("bands", "40,20");
  launcher_.apply();
  settle();
  ASSERT_EQ(launcher_.find_launch(rx)->capture.sample_rate, wide) << "a retune keeps the rate";
  wait_for_restart(rx);
  settle();
  EXPECT_EQ(launcher_.find_launch(rx)->capture.sample_rate, narrow);
}

}  // namespace
}  // namespace gui::testing_apply
