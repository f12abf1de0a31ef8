#include "launcher/plan_change.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "launcher/planner.h"
#include "launcher/retune_plan.h"

namespace launcher {
namespace {

using options::Station;

Station running_station() {
  Station station;
  station.common = {
      {"mode", "decoder"}, {"modes", "FT8"}, {"bands", "40,30,6"}, {"callsign", "K1ABC"}, {"grid", "FN42"}};
  station.receivers = {{"DX", "RSPdx", {}, true, true},
                       {"RX", "RX-888 MKII", {{"backend", "rx888"}}, true, true},
                       {"SPARE", "RSP2", {}, true, true}};
  station.assignments = {{"6", "RX"}};
  return station;
}

struct Change {
  const char* what;
  void (*edit)(Station&);
  ChangeClass expected;
  const char* receivers;  ///< those that change, and what
};

std::string told(const PlanChange& change) {
  std::string text = base::join(change.changed, ", ");
  for (const auto& [name, receiver] : change.receivers)
    text += name + ":" + base::join(receiver.changed, ",") + " ";
  return text;
}

TEST(PlanChange, FindsTheLeastDisturbingWay) {
  const Change cases[] = {
      {"nothing", [](Station&) {}, ChangeClass::none, ""},
      {"the live set", [](Station& s) { s.common["decode-depth"] = "3"; }, ChangeClass::live,
       "DX:decode-depth RX:decode-depth "},
      {"a control of one card", [](Station& s) { s.receivers[0].settings["lna-state"] = "2"; }, ChangeClass::live,
       "DX:RF Gain "},
      {"another band on a capture", [](Station& s) { s.common["bands"] = "40,20,6"; }, ChangeClass::retune,
       "DX:bands "},
      {"other modes", [](Station& s) { s.common["modes"] = "FT8,FT4"; }, ChangeClass::retune, "DX:modes RX:modes "},
      {"a fixed centre", [](Station& s) { s.receivers[0].settings["center-frequency"] = "8.5M"; }, ChangeClass::retune,
       "DX:Capture center "},
      {"a retune with a live setting",
       [](Station& s) {
         s.common["bands"] = "40,20,6";
         s.common["decode-depth"] = "3";
       },
       ChangeClass::retune, "DX:bands,decode-depth RX:decode-depth "},
      {"a rate", [](Station& s) { s.receivers[0].settings["sample-rate"] = "8M"; }, ChangeClass::restart_some,
       "DX:Sample rate "},
      {"the RX-888's clock", [](Station& s) { s.receivers[1].settings["ppm"] = "1"; }, ChangeClass::restart_some,
       "RX:Correction (ppm) "},
      {"a wider RX-888 capture", [](Station& s) { s.common["bands"] = "40,30,10,6", s.assignments["10"] = "RX"; },
       ChangeClass::restart_some, "RX:bands "},
      {"the station", [](Station& s) { s.common["callsign"] = "K2ABC"; }, ChangeClass::restart_all, "callsign"},
      {"the mode", [](Station& s) { s.common["mode"] = "hybrid"; }, ChangeClass::restart_all, "mode"},
      {"the receivers", [](Station& s) { s.assignments["30"] = "SPARE"; }, ChangeClass::restart_all,
       "which receivers are used"},
  };
  const auto running = plan(running_station());
  for (const Change& example : cases) {
    Station station = running_station();
    example.edit(station);
    const PlanChange change = plan_change(station, running);
    EXPECT_EQ(change_class_text(change.change), change_class_text(example.expected)) << example.what;
    const std::string text = told(change);
    EXPECT_TRUE(text == example.receivers ||
                (change.change == ChangeClass::restart_all && text.starts_with(example.receivers)))
        << example.what << ": " << text;
  }
}

TEST(PlanChange, AReceiverWithoutASocketIsRestarted) {
  auto running = plan(running_station());
  running[0].control_path.clear();
  Station station = running_station();
  station.common["decode-depth"] = "3";
  const PlanChange change = plan_change(station, running);
  EXPECT_EQ(change.change, ChangeClass::restart_some);
  EXPECT_TRUE(change.receivers.at("DX").restart);
  EXPECT_FALSE(change.receivers.at("RX").restart);
  EXPECT_TRUE(change.has_live());
}

std::string refusal(const Station& station, const std::vector<ReceiverLaunch>& running) {
  try {
    (void)retune_plan(station, running);
    return "retunes";
  } catch (const RetuneRefusal& refused) {
    return refused.what();
  }
}

TEST(Retune, KeepsTheRunningRateAndTheReceivers) {
  Station wide = running_station();
  wide.common["bands"] = "40,20,15,10";
  wide.assignments = {{"40", "RX"}, {"20", "RX"}, {"15", "RX"}, {"10", "RX"}};
  const auto running = plan(wide);
  ASSERT_EQ(running.size(), 1U);
  ASSERT_EQ(running[0].capture.sample_rate, 32e6);
  wide.common["bands"] = "20";
  wide.receivers[0].enabled = wide.receivers[2].enabled = false;
  const auto launches = retune_plan(wide, running);
  EXPECT_EQ(launches[0].capture.sample_rate, 32e6);
  EXPECT_EQ(launches[0].capture.center, 14.4e6);
  EXPECT_EQ(launches[0].channels.size(), 1U);
  EXPECT_EQ(plan_change(wide, launches).change, ChangeClass::none);
}

TEST(Retune, SaysWhatWouldHelp) {
  const auto running = plan(running_station());
  const std::vector<ReceiverLaunch> only_dx{running[0]};
  Station station = running_station();
  EXPECT_EQ(refusal(station, {}), "No running receivers to retune");
  station.assignments.clear();
  EXPECT_EQ(refusal(station, only_dx),
            "RX-888 MKII · RX and RSP2 · SPARE are ticked but not running: press Stop, then Start to use them.");
  station.receivers[2].enabled = false;
  EXPECT_EQ(refusal(station, only_dx), "RX-888 MKII · RX is ticked but not running: press Stop, then Start to use it.");
  EXPECT_EQ(refusal(station, running), "retunes");

  station = running_station();
  station.assignments["40"] = "SPARE";
  EXPECT_EQ(refusal(station, running),
            "40m is assigned to RSP2 · SPARE, which is ticked but not running. Apply and Save starts it, or set 40m to "
            "Automatic.");
  station = running_station();
  station.common["mode"] = "receivers";
  EXPECT_EQ(refusal(station, running),
            "Retune works in the External Decoder modes. Apply and Save restarts the receivers to change reception "
            "mode.");
  station = running_station();
  station.common["bands"] = "40,30,10,6";
  station.assignments["10"] = "RX";
  EXPECT_EQ(refusal(station, running),
            "The ticked bands do not fit the running capture of RX-888 MKII · RX. Apply and Save restarts the "
            "receivers to resize it.");
  station = running_station();
  station.common["bands"] = "160,40,20,6,2";
  for (auto* receiver : {&station.receivers[2]})
    receiver->enabled = false;
  EXPECT_TRUE(refusal(station, running).starts_with("These bands do not fit the receivers that are running. "));

  station = running_station();
  station.common["mode"] = "hybrid";
  station.common["audio.v"] = "id=v,frequency=4.2M";
  const auto listening = plan(station);
  Station moved = station;
  moved.common["bands"] = "20,6";
  moved.common["audio.v"] = "id=v,frequency=14.2M";
  EXPECT_EQ(refusal(moved, listening),
            "The ticked bands would move the running capture of RSPdx · DX off audio receiver v. Apply and Save "
            "restarts the receivers to resize it.");
}

}  // namespace
}  // namespace launcher
