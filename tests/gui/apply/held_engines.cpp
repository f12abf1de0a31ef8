#include "gui/apply/held_engines.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"
#include "options/command_line.h"

namespace gui::testing_apply {
namespace {

constexpr std::string_view set_words = "RADIO SET ", setting_words = "RADIO SETTING ",
                           check_words = "RADIO RETUNE CHECK ", apply_words = "RADIO RETUNE APPLY ";

receiver::Settings pairs_of(std::string_view list) {
  receiver::Settings pairs;
  for (const std::string_view pair : base::split(list, ',')) {
    const auto equals = pair.find('=');
    pairs[std::string(pair.substr(0, equals))] = std::string(pair.substr(equals + 1));
  }
  return pairs;
}

/// The hardware has whole numbers only, where the launcher has fractions.
void round_off(receiver::Settings& pairs) {
  for (const char* key : {"ppm", "rx888-gain"})
    if (const auto found = pairs.find(key); found != pairs.end())
      found->second = fmt::format("{:.0f}", base::parse_double(found->second).value_or(0));
}

std::vector<std::string> channels_of(std::string_view retune) {
  std::vector<std::string> channels;
  for (const std::string_view word : base::split(retune, ' '))
    if (word.find(':') != std::string_view::npos && !word.starts_with("KNOWN=")) channels.emplace_back(word);
  std::sort(channels.begin(), channels.end());
  return channels;
}

bool is_retune(const std::string& text) {
  return text.starts_with(check_words) || text.starts_with(apply_words);
}

}  // namespace

std::string HeldEngines::request(const std::string& path, const std::string& text) {
  std::unique_lock guard(lock_);
  auto held = std::make_shared<Held>();
  held->request.id = ++last_id_;
  held->request.text = text;
  held->request.hardware = text.starts_with(set_words);
  if (held->request.hardware) held->request.pairs = pairs_of(text.substr(set_words.size()));
  if (text.starts_with(setting_words)) held->request.pairs = pairs_of(text.substr(setting_words.size()));
  const auto found = engines_.find(path);
  if (found != engines_.end()) held->request.name = found->second->name;
  if (found == engines_.end() || found->second->hidden) {
    held->request.unreachable = true;
    arrivals_.push_back(held->request);
    throw std::runtime_error("Audio receiver control is unavailable");
  }
  held->engine = found->second;
  judge_arrival(held->request, *held->engine);
  arrivals_.push_back(held->request);
  held_.push_back(held);
  ended_.wait(guard, [&] { return held->ended; });
  if (held->failure) throw std::runtime_error(*held->failure);
  return held->reply;
}

void HeldEngines::judge_arrival(const Request& request, const Engine& engine) {
  for (const auto& other : held_)
    if (other->engine.get() == &engine)
      faults_.push_back(fmt::format("two requests out: '{}' while '{}' is", request.text, other->request.text));
  const bool known = std::all_of(request.pairs.begin(), request.pairs.end(), [&](const auto& pair) {
    const auto told = engine.told.find(pair.first);
    return told != engine.told.end() && told->second == pair.second && !engine.view.unsure.contains(pair.first);
  });
  if (!request.pairs.empty() && known) faults_.push_back("sent although it was confirmed: " + request.text);
  if (is_retune(request.text) && request.text.substr(check_words.size()) == engine.told_retune)
    faults_.push_back("retuned to where it is: " + request.text);
}

void HeldEngines::started(const std::string& name, const std::string& path, const options::Profile& profile) {
  const auto options = options::check_profile(profile);
  EngineView view{profile, {}, {}, {}};
  for (const auto& channel : options.reception.channels)
    view.channels.push_back(fmt::format("{}:{:.17g}", launcher::digital_mode_text(channel.mode), channel.frequency));
  std::sort(view.channels.begin(), view.channels.end());
  const std::lock_guard guard(lock_);
  engines_[path] =
      std::make_shared<Engine>(Engine{name, sim::RadioDesk(options, {}), std::move(view), profile, {}, {}});
}

void HeldEngines::gone(const std::string& name) {
  const std::lock_guard guard(lock_);
  std::erase_if(engines_, [&](const auto& entry) { return entry.second->name == name; });
  for (const auto& held : held_)
    if (held->request.name == name) {
      held->failure = "Audio control disconnected";
      held->ended = true;
    }
  std::erase_if(held_, [](const auto& held) { return held->ended; });
  ended_.notify_all();
}

void HeldEngines::end_all() {
  std::set<std::string> names;
  for (const Request& request : held())
    names.insert(request.name);
  for (const std::string& name : names)
    gone(name);
}

void HeldEngines::refuse(const std::string& name, const std::set<std::string>& keys) {
  const std::lock_guard guard(lock_);
  for (const auto& [path, engine] : engines_)
    if (engine->name == name) engine->refused = keys;
}

void HeldEngines::hide(const std::string& name, bool hidden) {
  const std::lock_guard guard(lock_);
  for (const auto& [path, engine] : engines_)
    if (engine->name == name) engine->hidden = hidden;
}

void HeldEngines::make_unsure(const std::string& name) {
  const std::lock_guard guard(lock_);
  for (const auto& [path, engine] : engines_) {
    if (engine->name != name) continue;
    for (const auto& [key, value] : engine->view.settings)
      engine->view.unsure.insert(key);
    engine->view.retune_unsure = true;
    engine->told_retune.clear();
  }
}

std::vector<Request> HeldEngines::held() const {
  const std::lock_guard guard(lock_);
  std::vector<Request> requests;
  for (const auto& held : held_)
    requests.push_back(held->request);
  return requests;
}

std::vector<Request> HeldEngines::take_arrivals() {
  const std::lock_guard guard(lock_);
  return std::exchange(arrivals_, {});
}

HeldEngines::Held* HeldEngines::find(unsigned id) {
  const auto found =
      std::find_if(held_.begin(), held_.end(), [id](const auto& held) { return held->request.id == id; });
  return found == held_.end() ? nullptr : found->get();
}

std::string HeldEngines::reply_of(Engine& engine, const Request& request) {
  for (const std::string& key : engine.refused)
    if (request.pairs.contains(key) || (key == "retune" && is_retune(request.text)))
      return "ERR The hardware refused " + key;
  std::string text = request.text;
  if (request.hardware) {
    receiver::Settings pairs = request.pairs;
    round_off(pairs);
    text = std::string(set_words) + receiver::format_pairs(pairs);
  }
  return engine.desk.answer(text, 0);
}

void HeldEngines::perform(Held& held) {
  if (std::exchange(held.request.taken, true)) return;
  Engine& engine = *held.engine;
  held.reply = reply_of(engine, held.request);
  if (!held.reply.starts_with("OK")) return;
  receiver::Settings taken = held.request.pairs;
  if (held.request.hardware) round_off(taken);
  for (const auto& [key, value] : taken) {
    engine.view.settings[key] = value;
    engine.view.unsure.insert(key);
    if (key == "center-frequency") engine.told_retune.clear();
  }
  if (!held.request.text.starts_with(apply_words)) return;
  engine.view.channels = channels_of(std::string_view(held.request.text).substr(apply_words.size()));
  engine.view.retuned = engine.view.retune_unsure = true;
}

void HeldEngines::take(unsigned id) {
  const std::lock_guard guard(lock_);
  if (Held* held = find(id)) perform(*held);
}

Ending HeldEngines::finish(unsigned id, Fate fate) {
  const std::lock_guard guard(lock_);
  Held* const held = find(id);
  if (held == nullptr) return {};
  if (fate == Fate::answered || fate == Fate::lost) perform(*held);
  if (fate == Fate::rubbish) held->reply = "\x01\xff rubbish, and not a word of sense";
  if (fate == Fate::lost || fate == Fate::timed_out) held->failure = "Audio request timed out";
  if (fate == Fate::closed) held->failure = "Audio control disconnected";
  Ending ending;
  if (fate == Fate::answered && held->reply.starts_with("OK")) {
    Engine& engine = *held->engine;
    ending.accepted = true;
    ending.echo = held->request.pairs;
    if (held->request.hardware) round_off(ending.echo);
    for (const auto& [key, value] : ending.echo) {
      engine.told[key] = value;
      engine.view.unsure.erase(key);
    }
    if (held->request.text.starts_with(apply_words)) {
      engine.told_retune = held->request.text.substr(apply_words.size());
      engine.view.retune_unsure = false;
    }
    ++accepted_;
  }
  held->ended = true;
  ended_.notify_all();
  std::erase_if(held_, [](const auto& each) { return each->ended; });
  return ending;
}

std::optional<EngineView> HeldEngines::engine(const std::string& name) const {
  const std::lock_guard guard(lock_);
  constexpr std::string_view status_head = "OK receiving ";
  for (const auto& [path, engine] : engines_)
    if (engine->name == name) {
      EngineView view = engine->view;
      view.capture = engine->desk.answer("STATUS", 0).substr(status_head.size());
      return view;
    }
  return std::nullopt;
}

std::vector<std::string> HeldEngines::take_faults() {
  const std::lock_guard guard(lock_);
  return std::exchange(faults_, {});
}

unsigned HeldEngines::accepted() const {
  const std::lock_guard guard(lock_);
  return accepted_;
}

}  // namespace gui::testing_apply
