// Changes brought to living simulated engines: what is saved is what the hardware accepted, and nothing is disturbed
// that need not be.
#include "gui/apply_flow.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <glib.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/file_write.h"
#include "gui/config/config_view.h"
#include "launcher/planner.h"
#include "receiver/control_client.h"
#include "receiver/process.h"

namespace gui {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* dx = "1706026B40";
constexpr const char* rx = "009028E61B4A1F2C";

class ApplyFlowTest : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/apply-flow-XXXXXX";
    directory_ = g_mkdtemp(pattern);
    g_setenv("XDG_STATE_HOME", directory_.c_str(), TRUE);
  }
  void TearDown() override {
    if (supervisor_) supervisor_->stop_receivers();
    until([this] { return !supervisor_ || !supervisor_->receiving(); }, 10);
    flow_.reset();
    supervisor_.reset();
    std::filesystem::remove_all(directory_);
  }

  /// Starts both receivers; `faults` are lines for the RX-888's section of the scenario.
  void start(const std::string& faults = {}) {
    const std::string scenario = directory_ + "/scenario.ini";
    std::ofstream(scenario) << "[faults]\ncontrol-journal = " << directory_ << "/journal\n[receiver " << rx << "]\n"
                            << faults;
    g_setenv("TARNWICK_SIM_SCENARIO", scenario.c_str(), TRUE);
    make();
    launches_ = launcher::plan(session_->station());
    auto prepared = supervisor_->prepare(launches_);
    supervisor_->begin_session();
    supervisor_->launch_all(std::move(prepared), launches_);
    flow_->begin_session();
    session_->save();
    session_->store_fingerprint();
    until([this] {
      return std::all_of(launches_.begin(), launches_.end(),
                         [](const auto& launch) { return std::filesystem::exists(launch.control_path); });
    });
  }

  void make() {
    options::SessionPlace place;
    place.config_directory = place.state_directory = directory_;
    session_ = std::make_unique<options::Session>(place, options::SessionHooks{});
    options::Station station;
    station.common = {{"mode", "decoder"}, {"modes", "FT8"}, {"bands", "40,20"}, {"all-txt", directory_ + "/ALL.TXT"}};
    station.receivers = {{dx, "RSPdx", {{"lna-state", "1"}}, true, true},
                         {rx, "RX-888 MKII", {{"backend", "rx888"}}, true, true}};
    station.assignments = {{"20", rx}, {"40", dx}};
    session_->set_profile(options::render_station(station));
    session_->take_inventory(station);

    receiver::SupervisorHooks hooks;
    hooks.report = [this](const std::string& text, const std::string&) { reports_.push_back(text); };
    hooks.line = [](std::string_view, bool, const std::string&) {};
    hooks.write_profile = [](const std::string& path, const options::Profile& profile) {
      options::write_config(path, profile);
    };
    hooks.save_session = [] {};
    hooks.session_ended = [] {};
    hooks.find_launch = [this](const std::string& name) -> const launcher::ReceiverLaunch* {
      for (const auto& launch : launches_)
        if (launch.name == name) return &launch;
      return nullptr;
    };
    hooks.changed = [] {};
    hooks.start_again = [] {};
    hooks.quit = [] {};
    supervisor_ = std::make_unique<receiver::Supervisor>(hooks, receiver::SessionFiles(directory_, directory_, 1));
    supervisor_->use_engine(TARNWICK_SIMULATED_ENGINE);

    ApplySurroundings surroundings{*session_, *supervisor_, launches_, receiver::control_request};
    surroundings.report = [this](const std::string& text, const std::string&) { reports_.push_back(text); };
    surroundings.show_error = [this](const std::string& text) { errors_.push_back(text); };
    surroundings.show_status = [this](const std::string& text) { status_ = text; };
    surroundings.refresh = [] {};
    surroundings.launches_changed = [] {};
    surroundings.set_setting = [this](const std::string& serial, const std::string& key, const std::string& value) {
      session_->set_profile(options::render_station(with_setting(session_->station(), serial, key, value)));
    };
    surroundings.show_applied = [this](const std::string&, const receiver::Settings& values) { shown_ = values; };
    surroundings.other_operation = [] { return false; };
    flow_ = std::make_unique<ApplyFlow>(std::move(surroundings));
  }

  template <typename Condition>
  static bool until(const Condition& condition, double seconds = 8) {
    const gint64 end = g_get_monotonic_time() + static_cast<gint64>(seconds * 1e6);
    while (!condition() && g_get_monotonic_time() < end) {
      g_main_context_iteration(nullptr, FALSE);
      g_usleep(2000);
    }
    return condition();
  }

  void change(const std::string& key, const std::string& value) {
    options::Profile profile = session_->profile();
    profile[key] = value;
    session_->set_profile(profile);
  }
  void apply() {
    flow_->apply_and_save();
    EXPECT_TRUE(until([this] { return !flow_->busy(); }, 12));
  }
  std::vector<std::string> journal() {
    std::vector<std::string> lines;
    std::ifstream file(directory_ + "/journal");
    for (std::string line; std::getline(file, line);)
      lines.push_back(line);
    return lines;
  }
  std::map<std::string, std::string> processes() {
    std::map<std::string, std::string> ids;
    for (const auto& child : supervisor_->children())
      if (const char* id = g_subprocess_get_identifier(child->process.get())) ids[child->name] = id;
    return ids;
  }
  std::string saved() { return base::read_file(directory_ + "/session.conf"); }

  std::string directory_;
  std::unique_ptr<options::Session> session_;
  std::vector<launcher::ReceiverLaunch> launches_;
  std::unique_ptr<receiver::Supervisor> supervisor_;
  std::unique_ptr<ApplyFlow> flow_;
  std::vector<std::string> reports_, errors_;
  std::string status_;
  receiver::Settings shown_;
};

TEST_F(ApplyFlowTest, ACardsEditIsSavedOnceTheHardwareHasIt) {
  start("control-refuse = rx888-gain\n");
  flow_->edit_live(dx, "lna-state", "2");
  flow_->edit_live(dx, "lna-state", "3");
  flow_->edit_live(rx, "rx888-gain", "9");
  ASSERT_TRUE(until([this] { return !shown_.empty() && saved().find("lna-state = '3'") != std::string::npos; }));
  EXPECT_THAT(journal(),
              testing::UnorderedElementsAre("RADIO SET lna-state=3 -> OK RADIO lna-state=3",
                                            "RADIO SET rx888-gain=9 -> ERR The hardware refused rx888-gain"));
  EXPECT_THAT(reports_, Contains("Live SDR update failed: ERR The hardware refused rx888-gain"));
  EXPECT_EQ(saved().find("rx888-gain"), std::string::npos);
  EXPECT_EQ(shown_.count("rx888-gain"), 0U);
  // A crash comes back with it.
  EXPECT_THAT(base::read_file(supervisor_->children().back()->conf.path()), HasSubstr("lna-state = '3'"));
  EXPECT_FALSE(flow_->differs_from_running());
}

TEST_F(ApplyFlowTest, NothingRestartsThatNeedNot) {
  start();
  const auto before = processes();
  apply();
  EXPECT_EQ(reports_.back(), "Settings saved; the running receivers already use them.");

  change("decode-depth", "3");
  apply();
  EXPECT_EQ(status_, "Settings applied; receivers continue running.");
  change("bands", "40,30,20");
  change("decode-depth", "1");
  apply();
  ASSERT_TRUE(until([this] { return status_ == "Retuned to selected bands; receivers continue running."; }));
  EXPECT_THAT(reports_, Contains("Retuned to selected bands, capture centre 8.615000 MHz; partial decode intervals "
                                 "discarded."));
  EXPECT_THAT(journal(), ElementsAre("RADIO SETTING decode-depth=3 -> OK", "RADIO SETTING decode-depth=3 -> OK",
                                     "RADIO SETTING decode-depth=1 -> OK", "RADIO SETTING decode-depth=1 -> OK",
                                     "RADIO RETUNE CHECK 8615000 FT8:7074000 FT8:10136000 -> OK",
                                     "RADIO RETUNE APPLY 8615000 FT8:7074000 FT8:10136000 -> OK retuned"));
  EXPECT_EQ(processes(), before);
  EXPECT_TRUE(errors_.empty());
  EXPECT_FALSE(session_->differs());

  change(std::string("receiver.") + dx + ".sample-rate", "8000000");
  apply();
  ASSERT_TRUE(until([&] { return processes().count(dx) == 1 && processes()[dx] != before.at(dx); }));
  EXPECT_EQ(processes()[rx], before.at(rx));
  EXPECT_THAT(reports_, Contains("Restarting this receiver for its changed settings (changed: Sample rate); the other "
                                 "receivers keep running."));
}

TEST_F(ApplyFlowTest, ARetuneThatOneReceiverRefusesChangesNone) {
  start("control-refuse = retune\n");
  change("modes", "FT8,FT4");
  const auto before = launches_.back().channels;
  apply();
  EXPECT_EQ(errors_, std::vector<std::string>{"ERR The hardware refused a retune"});
  EXPECT_EQ(launches_.back().channels, before);
  EXPECT_TRUE(session_->differs());
  EXPECT_TRUE(flow_->differs_from_running());
  for (const std::string& line : journal())
    EXPECT_EQ(line.find("APPLY"), std::string::npos) << line;
}

TEST_F(ApplyFlowTest, AHungReceiverHoldsUpNobodyForEver) {
  start("control-hang = true\n");
  change("decode-depth", "3");
  flow_->apply_and_save();
  EXPECT_TRUE(flow_->busy());
  flow_->apply_and_save();
  EXPECT_EQ(status_, "Wait for the current receiver update to finish, then Apply and Save.");
  ASSERT_TRUE(until([this] { return !flow_->busy(); }, 7));
  EXPECT_EQ(errors_, std::vector<std::string>{"Audio request timed out"});
  EXPECT_EQ(journal(), std::vector<std::string>{"RADIO SETTING decode-depth=3 -> OK"});
  EXPECT_EQ(launches_.back().profile.at("decode-depth"), "3");
  EXPECT_TRUE(flow_->differs_from_running());
}

TEST_F(ApplyFlowTest, WhatCannotBePlannedIsNotSaved) {
  start();
  change("bands", "");
  apply();
  EXPECT_EQ(errors_, std::vector<std::string>{"Tick at least one band."});
  EXPECT_THAT(saved(), HasSubstr("bands = '40,20'"));
  change("bands", "40,20");
  change("callsign", "K1ABC");
  apply();
  EXPECT_THAT(reports_, Contains("Restarting the receivers with the new settings (changed: callsign)."));
}

}  // namespace
}  // namespace gui
