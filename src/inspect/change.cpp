// `change`: how running receivers would be brought from one profile to another.
#include <algorithm>
#include <stdexcept>

#include "inspect/answer.h"
#include "inspect/plan_refusal.h"
#include "inspect/profile_input.h"
#include "inspect/subcommand.h"
#include "launcher/plan_change.h"
#include "launcher/planner.h"
#include "launcher/retune_plan.h"
#include "receiver/control_requests.h"

namespace inspect {
namespace {

namespace json = boost::json;

/// Every ticked receiver counts as attached.
options::Station station_of(const options::Profile& profile) {
  options::Station station = options::parse_station(profile);
  for (options::ReceiverProfile& receiver : station.receivers)
    receiver.available = true;
  return station;
}

/// What would be sent first; nothing for a restart.
json::value request_text(const launcher::ReceiverChange& change, const launcher::ReceiverLaunch& launch) {
  if (change.restart) return nullptr;
  if (!change.settings.empty()) return json::value(json_text(receiver::setting_request(change.settings)));
  if (!change.hardware.empty()) return json::value(json_text(receiver::radio_set_request(change.hardware)));
  return json::value(json_text(receiver::retune_request(receiver::RetuneStep::check, launch.capture.center,
                                                        launch.channels, launcher::known_selection_text(launch))));
}

json::object answer_of(const launcher::PlanChange& change) {
  json::object receivers;
  for (const auto& [name, receiver] : change.receivers) {
    const auto launch = std::find_if(change.launches.begin(), change.launches.end(),
                                     [&name = name](const auto& each) { return each.name == name; });
    json::array changed;
    for (const std::string& label : receiver.changed)
      changed.push_back(json::value(json_text(label)));
    const bool all = change.change == launcher::ChangeClass::restart_all;
    receivers[json_text(name)] = {{"changed", std::move(changed)},
                                  {"request", all ? json::value(nullptr) : request_text(receiver, *launch)}};
  }
  return {{"class", launcher::change_class_text(change.change)}, {"receivers", std::move(receivers)}};
}

void run(const Arguments& arguments) {
  const options::Profile from = read_profile_operand(arguments, true, 0);
  const options::Profile to = read_profile_operand(arguments, true, 1);
  try {
    print_answer(answer_of(launcher::plan_change(station_of(to), launcher::plan(station_of(from)))));
  } catch (const launcher::PlanError& error) {
    throw plan_refusal(error);
  } catch (const std::runtime_error& error) {
    throw Refusal("settings", error.what());
  }
}

}  // namespace

extern const Subcommand change_subcommand{
    "change",
    "FROM TO",
    "How receivers that run with one profile would be brought to another: not at all, live, by a retune, by\n"
    "restarting some or all; with what changes on each and the first request to it.",
    {},
    2,
    run};

}  // namespace inspect
