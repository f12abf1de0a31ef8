#include "gui/apply/apply_model.h"

#include <algorithm>
#include <csignal>
#include <tuple>

#include <fmt/format.h>
#include <glib.h>

#include "base/text.h"
#include "launcher/planner.h"

namespace gui::testing_apply {
namespace {

constexpr std::array told_keys{"lna-state",
                               "gain-reduction",
                               "agc",
                               "antenna",
                               "ppm",
                               "rf-notch",
                               "rx888-attenuation",
                               "rx888-gain",
                               "rtl-gain",
                               "center-frequency",
                               "online-callsign-check",
                               "decode-depth",
                               "pskreporter",
                               "wsprnet",
                               "known-channels-report"};
constexpr const char* refused_start = "Live SDR update failed: ";
constexpr gint64 patience = 60L * G_USEC_PER_SEC;

std::string value_of(const options::Profile& profile, const std::string& key) {
  const auto found = profile.find(key);
  return found == profile.end() ? "(none)" : found->second;
}

options::Profile settings_of(const options::Station& station, const std::string& name) {
  for (const auto& receiver : station.receivers)
    if (receiver.serial == name) return receiver.settings;
  return {};
}

std::vector<std::string> channels_of(const launcher::ReceiverLaunch& launch) {
  std::vector<std::string> channels;
  for (const auto& channel : launch.channels)
    channels.push_back(fmt::format("{}:{:.17g}", channel.mode, channel.frequency));
  std::sort(channels.begin(), channels.end());
  return channels;
}

}  // namespace

const std::vector<ApplyModel::Choice> ApplyModel::choices{
    {4, &ApplyModel::start},
    {2, &ApplyModel::stop},
    {3, &ApplyModel::end_process},
    {3, &ApplyModel::crash_and_return},
    {14, &ApplyModel::edit_card},
    {1, &ApplyModel::edit_card_wrongly},
    {2, &ApplyModel::choose_automatic},
    {4, &ApplyModel::send_at_once},
    {4, &ApplyModel::edit_live_set},
    {4, &ApplyModel::edit_selection},
    {2, &ApplyModel::edit_restart_only},
    {1, &ApplyModel::edit_station_wide},
    {1, &ApplyModel::tick_receiver},
    {9, &ApplyModel::apply},
    {16, &ApplyModel::serve},
    {4, &ApplyModel::change_fault},
    {1, &ApplyModel::change_disk},
    {14, &ApplyModel::turn},
    {2, &ApplyModel::settle},
};

ApplyModel::ApplyModel(unsigned seed)
    : random_(seed),
      with_dongle_(one_in(2)),
      names_(with_dongle_ ? std::vector{dongle, rx, dx} : std::vector{rx, dx}),
      launcher_(test_station(with_dongle_, "/nowhere")) {
  ever_[{dx, "lna-state"}].insert("1");
  saved_[{dx, "lna-state"}].value = "1";
}

std::string ApplyModel::run() {
  // Some of what can happen is left out of each sequence, so that the rest of it comes together more often.
  std::vector<Choice> possible;
  unsigned weights = 0;
  for (const Choice& choice : choices) {
    if (choice.weight < 5 && one_in(3)) continue;
    possible.push_back(choice);
    weights += choice.weight;
  }
  if (!one_in(8)) start();
  if (one_in(2)) settle();
  for (unsigned steps = 5 + below(40); steps > 0 && wrong_.empty(); --steps) {
    unsigned at = below(weights);
    auto choice = possible.begin();
    for (; at >= choice->weight; ++choice)
      at -= choice->weight;
    (this->*choice->step)();
    check_step();
  }
  constexpr std::array endings{&ApplyModel::end_settled, &ApplyModel::end_settled, &ApplyModel::end_closing,
                               &ApplyModel::end_without_flow};
  if (wrong_.empty()) (this->*endings.at(below(endings.size())))();
  return wrong_.empty() ? wrong_ : fmt::format("{}\n  {}", wrong_, base::join(trace_, "\n  "));
}

void ApplyModel::wrong(const std::string& words) {
  if (!wrong_.empty()) return;
  wrong_ = words;
  note("--- reports:");
  for (const std::string& report : launcher_.reports)
    note("    " + report);
  for (const std::string& error : launcher_.errors)
    note("    error: " + error);
}

bool ApplyModel::can_plan() {
  try {
    return !launcher::plan(launcher_.session().station()).empty();
  } catch (const std::exception&) {
    return false;
  }
}

// --- The buttons ---

void ApplyModel::start() {
  note("start");
  drain();
  stopped_ = false;
  const bool receiving = launcher_.supervisor().receiving();
  launcher_.start();
  if (receiving || launcher_.flow().busy() || launcher_.start_failed) return;
  for (const auto& launch : launcher_.launches())
    ++allowed_starts_[launch.name];
}

void ApplyModel::stop() {
  note("stop");
  notice_arrivals();
  launcher_.stop();
  commit_waiting();
  starts_again_ = false;
  stopped_ = true;
}

void ApplyModel::end_process() {
  constexpr std::array signals{SIGUSR1, SIGUSR1, SIGKILL, SIGUSR2};
  end_process(some_receiver(), signals.at(below(signals.size())));
}

void ApplyModel::crash_and_return() {
  const std::string name = some_receiver();
  if (!launcher_.is_running(name) || engine_missing_) return;
  end_process(name, SIGUSR1);
  until([&] { return !launcher_.supervisor().receiving() || launcher_.at_rest() || launcher_.engines.engine(name); });
}

void ApplyModel::end_process(const std::string& name, int signal) {
  std::vector<unsigned> ended;
  for (const Request& request : launcher_.engines.held())
    if (request.name == name) ended.push_back(request.id);
  notice_arrivals();
  if (!launcher_.kill(name, signal)) return;
  note(fmt::format("{} gets signal {}", name, signal));
  for (const auto& [key, edit] : waiting_)
    if (key.first == name) ever_[key].insert(edit.value);
  for (const unsigned id : ended)
    fail_edits(id);
  if (signal == SIGUSR2) starts_again_ = false;  // it may have been the one that did
  if (signal == SIGUSR2) return;
  ++allowed_starts_[name];
}

void ApplyModel::apply() {
  notice_arrivals();
  const bool receiving = launcher_.supervisor().receiving();
  std::optional<launcher::PlanChange> change;
  try {
    if (receiving) change = launcher::plan_change(launcher_.session().station(), launcher_.launches());
    const auto& launches = launcher_.launches();
    // An engine that waits to start again cannot be retuned.
    if (change && !std::all_of(launches.begin(), launches.end(),
                               [this](const auto& launch) { return launcher_.is_running(launch.name); }))
      change = launcher::without_retune(std::move(*change));
  } catch (const std::exception&) {
  }
  launcher_.status.clear();
  const size_t errors = launcher_.errors.size(), reports = launcher_.reports.size();
  if (!launcher_.flow().busy()) starts_at_apply_ = launcher_.starts;
  launcher_.apply();
  const bool waits = launcher_.status.starts_with("Wait for");
  note(fmt::format("apply: {}{}", change ? launcher::change_class_text(change->change) : "no change to plan",
                   waits ? ", has to wait" : ""));
  const bool saved_only =
      launcher_.reports.size() > reports && launcher_.reports.back().starts_with("Settings saved. ");
  const bool failed = launcher_.errors.size() > errors;
  if (!waits && !saved_only && change && !failed) check_restarts(*change);
  if (one_in(3)) settle();
}

void ApplyModel::check_restarts(const launcher::PlanChange& change) {
  if (change.change == launcher::ChangeClass::restart_all) {
    commit_waiting();
    starts_again_ = true;
    if (restart_causes_.empty()) wrong("all restart for nothing");
    for (const std::string& name : names_)
      ++allowed_starts_[name];
  }
  for (const auto& [name, receiver] : change.receivers) {
    if (!receiver.restart || change.change != launcher::ChangeClass::restart_some) continue;
    ++allowed_starts_[name];
    for (const auto& [key, edit] : waiting_)
      if (key.first == name) ever_[key].insert(edit.value);
    if (!receiver.retune && !restart_causes_.contains(name) && !restart_causes_.contains("*"))
      wrong(name + " restarts for nothing");
  }
}

// --- Edits ---

std::pair<std::string, std::string> ApplyModel::some_setting(const std::string& name) {
  if (name == rx)
    return one_in(2) ? std::pair{"rx888-attenuation", fmt::format("{}", below(32))}
                     : std::pair{"rx888-gain", fmt::format("{}.{}", below(20), below(2) * 6)};
  if (name == dongle)
    return one_in(2) ? std::pair{"rtl-gain", std::to_string(below(40))} : std::pair{"ppm", std::to_string(below(9))};
  switch (below(7)) {
    case 0:
      return {"gain-reduction", std::to_string(20 + below(40))};
    case 1:
      return {"agc", one_in(2) ? "on" : "off"};
    case 2:
      return {"antenna", one_in(2) ? "A" : "B"};
    case 3:
      return {"ppm", fmt::format("{}.{}", below(5), below(2) * 6)};
    case 4:
      return {"center-frequency", one_in(2) ? "7200000" : "7500000"};
    default:
      return {"lna-state", std::to_string(below(10))};
  }
}

void ApplyModel::edit_card() {
  drain();
  std::string name = some_receiver();
  auto [key, value] = some_setting(name);
  if (one_in(3) && !last_edited_.second.empty()) {  // the same one again, often back to what the engine has
    std::tie(name, key) = last_edited_;
    const auto* const launch = launcher_.find_launch(name);
    value = launch != nullptr && launch->profile.contains(key) ? launch->profile.at(key) : std::string();
    while (value.empty())
      if (const auto other = some_setting(name); other.first == key) value = other.second;
  }
  last_edited_ = {name, key};
  const bool running = launcher_.is_running(name);
  note(fmt::format("card of {} {}: {}={}", name, running ? "runs" : "does not run", key, value));
  const Edit edit{++edits_, value};
  if (running && !launcher_.engines.engine(name)) ever_[{name, key}].insert(value);  // it may have ended
  keep_saved({name, key});
  if (running)
    waiting_[{name, key}] = edit;
  else
    commit({name, key}, edit);
  if (key == "center-frequency") restart_causes_.insert("*");
  launcher_.flow().edit_live(name, key, value);
}

void ApplyModel::edit_card_wrongly() {
  const std::string& name = some_receiver();
  if (!launcher_.is_running(name)) return;
  constexpr std::array wrong_edits{std::pair{"", "1"}, std::pair{"sample-rate", "6M"}, std::pair{"ppm", "loud"},
                                   std::pair{"bias-t", "on"}};
  const auto [key, value] = wrong_edits.at(below(wrong_edits.size()));
  note(fmt::format("card of {}: {}={}, which cannot be", name, key, value));
  const size_t before = launcher_.reports.size();
  launcher_.flow().edit_live(name, key, value);
  if (launcher_.reports.size() == before || !launcher_.reports.back().starts_with(refused_start))
    wrong("a wrong edit was not refused");
}

void ApplyModel::choose_automatic() {
  drain();
  const std::string& name = some_receiver();
  const std::string key = name == rx ? "rx888-gain" : name == dongle ? "rtl-gain" : "gain-reduction";
  note(fmt::format("card of {}: {} is Automatic", name, key));
  commit({name, key}, {++edits_, ""});
  waiting_.erase({name, key});
  restart_causes_.insert(name);
  launcher_.flow().edit_live(name, key, "");
}

void ApplyModel::send_at_once() {
  drain();
  const std::string& name = some_receiver();
  note("send at once: " + name);
  launcher_.flow().apply_live_sdr(name);
  await_arrivals();
}

void ApplyModel::edit_live_set() {
  const bool depth = one_in(2);
  const std::string value = depth ? std::to_string(1 + below(3)) : one_in(2) ? "true" : "false";
  note(fmt::format("live set: {}", value));
  launcher_.edit(depth ? "decode-depth" : "online-callsign-check", value);
}

void ApplyModel::edit_selection() {
  constexpr std::array bands{"40,20", "40,30,20", "40,20,17", "160,40,20", ""};
  std::string value = bands.at(one_in(6) ? bands.size() - 1 : below(bands.size() - 1));
  if (with_dongle_ && !value.empty()) value += ",10";
  if (one_in(3)) {
    const std::string modes = one_in(2) ? "FT8" : "FT8,FT4";
    note("modes " + modes);
    launcher_.edit("modes", modes);
  } else {
    note("bands " + value);
    launcher_.edit("bands", value);
  }
  restart_causes_.insert("*");
}

void ApplyModel::edit_restart_only() {
  const std::string& name = some_receiver();
  const auto [key, value] = name == rx       ? std::pair{"rx888-bias-t", one_in(2) ? "on" : "off"}
                            : name == dongle ? std::pair{"rtl-bias-t", one_in(2) ? "on" : "off"}
                                             : std::pair{"sample-rate", one_in(2) ? "8000000" : "10000000"};
  note(fmt::format("{} needs a restart: {}={}", name, key, value));
  launcher_.edit(fmt::format("receiver.{}.{}", name, key), value);
  restart_causes_.insert(name);
}

void ApplyModel::edit_station_wide() {
  note("callsign");
  launcher_.edit("callsign", one_in(2) ? "K1ABC" : "W9XYZ");
  restart_causes_.insert("*");
}

void ApplyModel::tick_receiver() {
  options::Station station = launcher_.session().station();
  auto& receiver = station.receivers[below(static_cast<unsigned>(station.receivers.size()))];
  receiver.enabled = !receiver.enabled;
  note(fmt::format("{} ticked: {}", receiver.serial, receiver.enabled));
  launcher_.change(station);
  restart_causes_.insert("*");
}

// --- Engines and disk ---

void ApplyModel::serve() {
  await_arrivals();
  const auto held = launcher_.engines.held();
  if (held.empty()) return;
  const Request& request = held[below(static_cast<unsigned>(held.size()))];
  if (one_in(3)) {
    note("taken: " + request.text);
    return launcher_.engines.take(request.id);
  }
  finish(request, fate_of(request.name));
  if (!one_in(3)) drain();
}

/// What the engine's fault makes of a request; now and then it is another one.
Fate ApplyModel::fate_of(const std::string& name) {
  constexpr std::array fates{Fate::answered, Fate::lost, Fate::timed_out, Fate::closed, Fate::rubbish};
  const auto fate = fates_.find(name);
  if (!repaired_ && one_in(6)) return fates.at(below(fates.size()));
  return fate == fates_.end() ? Fate::answered : fate->second;
}

void ApplyModel::finish(const Request& request, Fate fate) {
  notice_arrivals();
  ++ended_calls_;
  const Ending ending = launcher_.engines.finish(request.id, fate);
  note(fmt::format("{} to {}: {} ({})", ending.accepted ? "accepted" : "failed", request.name, request.text,
                   static_cast<int>(fate)));
  if (!ending.accepted) return fail_edits(request.id);
  const auto sent = sent_.find(request.id);
  // The launcher cannot know whether the engine that was to be told or the one after it has confirmed.
  if (sent == sent_.end() && launcher_.starts[request.name] != starts_at_apply_[request.name])
    return launcher_.engines.make_unsure(request.name);
  for (const auto& [key, value] : ending.echo) {
    const Key setting{request.name, key};
    if (sent != sent_.end() && sent->second.contains(setting))
      commit(setting, {sent->second.at(setting).number, value});
    else if (request.hardware && saved_[setting].value == request.pairs.at(key))
      commit(setting, {saved_[setting].number, value});
  }
  if (sent != sent_.end()) sent_.erase(sent);
}

/// What comes to nothing takes with it the same edit made again meanwhile.
void ApplyModel::fail_edits(unsigned id) {
  const auto sent = sent_.find(id);
  if (sent == sent_.end()) return;
  for (const auto& [key, edit] : sent->second)
    if (const auto again = waiting_.find(key); again != waiting_.end() && again->second.value == edit.value)
      waiting_.erase(again);
  sent_.erase(sent);
}

void ApplyModel::commit(const Key& key, const Edit& edit) {
  Edit& now = saved_[key];
  ever_[key].insert(edit.value);
  if (edit.number >= now.number) now = edit;
}

/// An edit that was not sent in its time is in the settings already. One that waits for an answer has its time yet.
void ApplyModel::keep_saved(const Key& key) {
  const auto waiting = waiting_.find(key);
  const bool older_is_out =
      std::any_of(sent_.begin(), sent_.end(), [&](const auto& entry) { return entry.second.contains(key); });
  if (waiting != waiting_.end() && !older_is_out &&
      value_of(settings_of(launcher_.session().station(), key.first), key.second) == waiting->second.value)
    commit(key, waiting->second);
}

void ApplyModel::commit_waiting() {
  for (const auto& [key, edit] : std::exchange(waiting_, {}))
    commit(key, edit);
}

void ApplyModel::change_fault() {
  const std::string& name = some_receiver();
  constexpr std::array fates{Fate::answered, Fate::answered, Fate::lost, Fate::timed_out, Fate::closed, Fate::rubbish};
  switch (below(4)) {
    case 0:
      note(name + " refuses some keys");
      return launcher_.engines.refuse(name, {"lna-state", "rx888-gain", "rtl-gain", "decode-depth"});
    case 1:
      note(name + " refuses a retune");
      return launcher_.engines.refuse(name, {"retune"});
    case 2: {
      const bool hidden = one_in(3);
      note(fmt::format("{} hidden: {}", name, hidden));
      launcher_.engines.refuse(name, {});
      return launcher_.engines.hide(name, hidden);
    }
    default:
      fates_[name] = fates.at(below(fates.size()));
      note(fmt::format("fate at {}: {}", name, static_cast<int>(fates_[name])));
  }
}

void ApplyModel::change_disk() {
  if (one_in(3)) {
    engine_missing_ = !engine_missing_;
    note(fmt::format("the engine is missing: {}", engine_missing_));
    launcher_.let_engine_be_missing(engine_missing_);
    starts_uncounted_ = true;
  } else if (one_in(2)) {
    const std::string& name = some_receiver();
    note("profile that cannot be written: " + name);
    restart_causes_.insert(name);  // after a crash it is behind
    if (launcher_.unwritable.erase(name) == 0) launcher_.unwritable.insert(name);
  } else {
    const bool fails = !file_behind_ && one_in(2);
    note(fmt::format("saving fails: {}", fails));
    launcher_.let_saving_fail(fails);
    file_behind_ = file_behind_ || fails;
  }
}

void ApplyModel::turn() {
  notice_arrivals();
  const gint64 end = g_get_monotonic_time() + (one_in(3) ? 1000 * (1 + below(8)) : 0);
  note("turn");
  for (unsigned turns = 1 + below(6); turns > 0 || g_get_monotonic_time() < end; turns -= turns > 0 ? 1 : 0)
    SmallLauncher::turn();
  await_arrivals();
}

// --- The order of things ---

bool ApplyModel::until(const std::function<bool()>& reached) {
  const gint64 end = g_get_monotonic_time() + patience;
  while (!reached()) {
    if (g_get_monotonic_time() > end) return false;
    SmallLauncher::turn();
  }
  return true;
}

/// An edit is sent as it is when its request comes.
void ApplyModel::notice_arrivals() {
  for (const Request& request : launcher_.engines.take_arrivals()) {
    if (request.unreachable) ++ended_calls_;
    if (!request.hardware) continue;
    std::map<Key, Edit> edits;
    for (const auto& [key, value] : request.pairs) {
      // A receiver whose socket is gone is known by what was sent to it alone.
      for (const std::string& name : names_)
        if (const auto waiting = waiting_.find({name, key}); (request.name.empty() || request.name == name) &&
                                                             waiting != waiting_.end() &&
                                                             waiting->second.value == value)
          edits[waiting->first] = waiting->second;
    }
    if (launcher_.flow().busy()) commit_told_later(edits);
    if (edits.empty() || edits.size() != request.pairs.size()) continue;
    for (const auto& [key, edit] : edits)
      waiting_.erase(key);
    sent_[request.id] = edits;
    if (request.unreachable) fail_edits(request.id);
  }
}

/// What the settings have already was not sent in its time, and "Apply and Save" tells it now.
void ApplyModel::commit_told_later(std::map<Key, Edit>& edits) {
  const options::Station station = launcher_.session().station();
  std::erase_if(edits, [&](const auto& entry) {
    const auto& [key, edit] = entry;
    const bool told_later = value_of(settings_of(station, key.first), key.second) == edit.value;
    if (told_later) {
      commit(key, edit);
      waiting_.erase(key);
    }
    return told_later;
  });
}

/// Gives requests that are on their way the time to come, without anything else happening.
void ApplyModel::await_arrivals() {
  constexpr gint64 while_waiting = 20000;
  const gint64 end = g_get_monotonic_time() + while_waiting;
  while (launcher_.jobs() > static_cast<long>(launcher_.engines.held().size() + ended_calls_) &&
         g_get_monotonic_time() < end) {
    g_usleep(50);
    notice_arrivals();
  }
  notice_arrivals();
}

/// Until what has been answered has been heard.
void ApplyModel::drain() {
  const bool drained = until([this] {
    notice_arrivals();
    return launcher_.jobs() == static_cast<long>(launcher_.engines.held().size());
  });
  if (!drained) wrong("an answer was never heard");
  ended_calls_ = 0;
}

void ApplyModel::settle() {
  note("settle");
  launcher_.let_engine_be_missing(engine_missing_ = false);
  const bool settled = until([this] {
    notice_arrivals();
    for (const Request& request : launcher_.engines.held())
      finish(request, fate_of(request.name));
    ApplyFlow& flow = launcher_.flow();
    return launcher_.jobs() == 0 && !flow.busy() && launcher_.at_rest() &&
           std::none_of(names_.begin(), names_.end(), [&](const auto& name) { return flow.live().pending(name); }) &&
           (file_behind_ || options::read_profile(launcher_.session_file()) == launcher_.session().profile()) &&
           !SmallLauncher::turn();
  });
  ended_calls_ = 0;
  notice_arrivals();
  if (!settled)
    return wrong(fmt::format("it never settles: {} jobs, busy {}, at rest {}", launcher_.jobs(),
                             launcher_.flow().busy(), launcher_.at_rest()));
  commit_waiting();
  check_settled();
}

// --- What has to hold ---

void ApplyModel::check_step() {
  for (const std::string& fault : launcher_.engines.take_faults())
    wrong(fault);
  for (const auto& [name, starts] : launcher_.starts)
    if (starts > allowed_starts_[name] && !starts_uncounted_)
      wrong(name + " was started although nothing asked for it");
  check_file();
}

/// No step leaves a value in the file that the hardware did not take and the operator did not decide on.
void ApplyModel::check_file() {
  const auto station = options::parse_station(options::read_profile(launcher_.session_file()));
  for (const auto& [key, values] : ever_) {
    const auto settings = settings_of(station, key.first);
    const std::string value = settings.contains(key.second) ? settings.at(key.second) : "";
    if (!value.empty() && !values.contains(value))
      wrong(fmt::format("{} {}={} was saved", key.first, key.second, value));
  }
}

void ApplyModel::check_settled() {
  check_step();
  for (const auto& child : launcher_.supervisor().children())
    check_engine(child->name);
  check_settings();
  if (starts_again_ && !launcher_.supervisor().receiving() && !launcher_.start_failed)
    wrong("all were to restart, and none did");
  starts_again_ = false;
  if (stopped_ && launcher_.supervisor().receiving()) wrong("receivers run after Stop");
  allowed_starts_ = launcher_.starts;
  starts_uncounted_ = false;
  const bool all_run = launcher_.supervisor().children().size() == launcher_.launches().size();
  if (all_run && launcher_.stale.empty() && !launcher_.flow().differs_from_running()) restart_causes_.clear();
}

void ApplyModel::check_settings() {
  const options::Station station = launcher_.session().station();
  for (const auto& [key, edit] : saved_) {
    const auto settings = settings_of(station, key.first);
    const std::string value = settings.contains(key.second) ? settings.at(key.second) : "";
    if (value != edit.value)
      wrong(fmt::format("the settings say {} {}={}, and not {}", key.first, key.second, value, edit.value));
  }
}

/// What the launcher takes an engine to run with is what it runs with, and would after a crash.
void ApplyModel::check_engine(const std::string& name) {
  const auto engine = launcher_.engines.engine(name);
  const auto* const launch = launcher_.find_launch(name);
  if (!engine || launch == nullptr) return wrong(name + " runs and is not known");
  const options::Profile restart = options::read_profile(launcher_.conf_of(name));
  for (const char* key : told_keys) {
    const std::string known = value_of(launch->profile, key);
    const bool moved = engine->retuned && std::string_view(key) == "center-frequency";
    if (!moved && !engine->unsure.contains(key) && value_of(engine->settings, key) != known)
      wrong(fmt::format("{} runs with {}={}, and the launcher says {}", name, key, value_of(engine->settings, key),
                        known));
    if (!launcher_.stale.contains(name) && value_of(restart, key) != known)
      wrong(fmt::format("{} would restart with {}={} instead of {}", name, key, value_of(restart, key), known));
    if (value_of(launcher_.flow().live().applied(name), key) != known)
      wrong(fmt::format("{}: {}={} is not what the card takes for applied", name, key, known));
  }
  if (!engine->unsure.contains("center-frequency") && !engine->retune_unsure &&
      engine->capture !=
          fmt::format("capture={:.17g} span={:.17g}", launch->capture.center, launch->capture.usable_span()))
    wrong(fmt::format("{} receives {}, and the launcher says {:.17g} {:.17g}", name, engine->capture,
                      launch->capture.center, launch->capture.usable_span()));
  if (!engine->retune_unsure && engine->channels != channels_of(*launch))
    wrong(fmt::format("{} decodes {}, and the launcher says {}", name, base::join(engine->channels, " "),
                      base::join(channels_of(*launch), " ")));
}

// --- Endings ---

/// The faults go, and what cannot be planned is put right.
void ApplyModel::repair() {
  note("repair");
  repaired_ = true;
  fates_.clear();
  launcher_.unwritable.clear();
  launcher_.let_saving_fail(false);
  for (const std::string& name : names_) {
    launcher_.engines.refuse(name, {});
    launcher_.engines.hide(name, false);
  }
  if (can_plan()) return;
  const Key center{dx, "center-frequency"};
  drain();
  launcher_.flow().edit_live(dx, center.second, "");
  commit(center, {++edits_, ""});
  waiting_.erase(center);
  options::Station station = launcher_.session().station();
  for (auto& receiver : station.receivers)
    receiver.enabled = true;
  launcher_.change(station);
  launcher_.edit("bands", with_dongle_ ? "40,20,10" : "40,20");
  restart_causes_.insert("*");
}

void ApplyModel::end_settled() {
  repair();
  settle();
  if (wrong_.empty()) converge();
  if (!wrong_.empty()) return;
  stop();
  settle();
  if (!launcher_.profiles().empty()) wrong("profiles are left: " + base::join(launcher_.profiles(), " "));
  if (options::read_profile(launcher_.session_file()) != launcher_.session().profile())
    wrong("the settings are not saved at the end");
}

/// "Apply and Save" brings every difference to the receivers, once nothing is in its way.
void ApplyModel::converge() {
  constexpr int presses = 3;
  const auto all_run = [this] { return launcher_.supervisor().children().size() == launcher_.launches().size(); };
  if (!all_run() || !launcher_.supervisor().receiving()) {
    stop();
    settle();
    start();
    settle();
  }
  if (!wrong_.empty() || !can_plan() || !all_run()) return;
  for (int press = 0; press < presses && wrong_.empty() && launcher_.flow().differs_from_running(); ++press) {
    apply();
    settle();
  }
  if (!wrong_.empty()) return;
  if (launcher_.flow().differs_from_running())
    return wrong("Apply and Save does not bring the settings to the receivers");
  for (const auto& [key, edit] : saved_) {
    const auto engine = launcher_.engines.engine(key.first);
    if (engine && !engine->retuned && !edit.value.empty() && !engine->unsure.contains(key.second) &&
        value_of(engine->settings, key.second) != edit.value)
      wrong(fmt::format("{} runs with {}={} in the end, and not {}", key.first, key.second,
                        value_of(engine->settings, key.second), edit.value));
  }
}

void ApplyModel::end_closing() {
  note("close");
  notice_arrivals();
  launcher_.close();
  commit_waiting();
  for (const Request& request : launcher_.engines.held())
    if (one_in(2)) finish(request, Fate::answered);
  const bool closed = until([this] {
    notice_arrivals();
    if (one_in(20)) launcher_.engines.end_all();
    return launcher_.quits > 0 && launcher_.jobs() == 0;
  });
  if (!closed) wrong("the window never closes");
  if (launcher_.flow().busy()) wrong("busy after the end");
  if (!launcher_.profiles().empty()) wrong("profiles are left: " + base::join(launcher_.profiles(), " "));
  check_settings();
  if (!file_behind_ && options::read_profile(launcher_.session_file()) != launcher_.session().profile())
    wrong("the settings are not saved at the end");
}

void ApplyModel::end_without_flow() {
  note("the flow ends");
  launcher_.end_flow();
  launcher_.supervisor().stop_receivers();
  launcher_.engines.end_all();
  const bool over = until([this] {
    launcher_.engines.end_all();
    return launcher_.jobs() <= 0 && !launcher_.supervisor().receiving();
  });
  if (!over) wrong("the receivers do not stop");
  if (launcher_.calls_after_end > 0) wrong("the flow calls after its end");
}

}  // namespace gui::testing_apply
