#include "options/session.h"

#include <algorithm>
#include <exception>
#include <filesystem>

#include <fmt/format.h>

#include "base/file_write.h"

namespace options {
namespace {

namespace fs = std::filesystem;

constexpr const char* session_name = "session.conf";
constexpr const char* fallback_name = "gui.conf";
constexpr const char* receivers_name = "receivers.conf";

bool is_missing(const std::string& path) {
  std::error_code error;
  return fs::status(path, error).type() == fs::file_type::not_found;
}

// What the launcher holds is always a station, so that a fingerprint or a stored section has one form only.
Profile station_form(const Profile& profile) {
  return render_station(parse_station(profile));
}

std::string fingerprint_of(const Profile& profile) {
  try {
    return render_profile(profile);
  } catch (const std::exception&) {
    return "?";
  }
}

bool copy_aside(const std::string& path) {
  try {
    base::replace_file(path + ".unreadable", base::read_file(path));
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

// The words of the dialog about a file that could not be loaded, after a copy of it was put aside.
std::string note_of(const std::string& path, const std::string& reason) {
  return fmt::format(
      "Saved settings could not be loaded: {}.\n\nThey were probably saved by a newer Tarnwick. The file is kept as "
      "{}; "
      "this version starts with its defaults.",
      reason, copy_aside(path) ? path + ".unreadable" : path);
}

}  // namespace

Session::Session(SessionPlace place, SessionHooks hooks)
    : place_(std::move(place)),
      hooks_(std::move(hooks)),
      profile_(station_form(default_profile(place_.state_directory))),
      config_path_(config_file(fallback_name)),
      journal_(place_.state_directory + "/settings.log", place_.clock) {
  store_fingerprint();
}

Profile Session::default_profile(const std::string& state_directory) {
  return {{"mode", "decoder"},
          {"modes", "FT8"},
          {"bands", "20"},
          {"audio-gain", "10"},
          {"agc", "on"},
          {"gain-reduction", "50"},
          {"lna-state", "0"},
          {"ppm", "0"},
          {"rf-notch", "off"},
          {"mw-notch", "off"},
          {"stats", "true"},
          {"daemon", "false"},
          {"pskreporter", "false"},
          {"wsprnet", "false"},
          {"history-days", "7"},
          {"history-db", state_directory + "/history.sqlite3"},
          {"all-txt", state_directory + "/ALL.TXT"}};
}

Station Session::station() const {
  Station station = parse_station(profile_);
  for (ReceiverProfile& receiver : station.receivers)
    receiver.available = available_.count(receiver.serial) > 0;
  return station;
}

std::string Session::value(const std::string& key, const std::string& fallback) const {
  const auto found = profile_.find(key);
  return found == profile_.end() ? fallback : found->second;
}

void Session::edit(const std::string& key, const std::string& value) {
  Profile edited = profile_;
  edited.insert_or_assign(key, value);
  change(edited);
}

void Session::erase(const std::string& key) {
  Profile edited = profile_;
  edited.erase(key);
  change(edited);
}

void Session::remove_receiver(const std::string& serial) {
  Station station = this->station();
  const auto removed = std::find_if(station.receivers.begin(), station.receivers.end(),
                                    [&](const ReceiverProfile& receiver) { return receiver.serial == serial; });
  if (removed == station.receivers.end()) return;
  update_receivers();  // what was set since the last save is kept too
  journal_.add(removed->label() + ": removed from the session by the user; its settings are kept");
  station.receivers.erase(removed);
  std::erase_if(station.assignments, [&](const auto& pin) { return pin.second == serial; });
  change(render_station(station));
}

void Session::set_profile(const Profile& profile) {
  apply(profile);
  hooks_.changed();
}

void Session::take_inventory(const Station& station) {
  const bool differed = differs();
  available_.clear();
  for (const ReceiverProfile& receiver : station.receivers)
    if (receiver.available) available_.insert(receiver.serial);
  apply(render_station(station));
  if (!differed) store_fingerprint();
  hooks_.changed();
}

void Session::apply(const Profile& profile) {
  profile_ = station_form(profile);
  fingerprint_.reset();
}

void Session::change(const Profile& profile) {
  if (profile == profile_) return;
  apply(profile);
  request_autosave();
  hooks_.changed();
}

void Session::request_autosave() {
  autosave_timer_ = base::Timer::once(place_.autosave_delay, [this] { autosave(); });
}

void Session::autosave() {
  if (hooks_.closing()) return;
  if (hooks_.busy()) return request_autosave();
  try {
    save();
  } catch (const std::exception& error) {
    hooks_.report(fmt::format("Could not autosave settings: {}", error.what()));
  }
}

void Session::save() {
  write_config(config_file(session_name), profile_);
  autosave_timer_.cancel();
  update_receivers();
  hooks_.saved();
}

void Session::save_opened() {
  if (config_path_ != config_file(session_name) && config_path_ != config_file(fallback_name))
    write_config(config_path_, profile_);
}

void Session::update_receivers() {
  const auto lines = receivers_.update(profile_);
  for (const auto& line : lines)
    journal_.add(line);
  receivers_unsaved_ = receivers_unsaved_ || !lines.empty();
  if (!receivers_unsaved_) return;
  try {
    write_config(config_file(receivers_name), receivers_.profile());
    receivers_unsaved_ = false;
  } catch (const std::exception& error) {
    hooks_.report(fmt::format("Could not save receiver settings: {}", error.what()));
  }
}

void Session::load_receivers() {
  const std::string path = config_file(receivers_name);
  if (is_missing(path)) return;
  try {
    receivers_.assign(station_form(read_profile(path)));
  } catch (const std::exception& error) {
    hooks_.report(fmt::format("Saved receiver settings could not be read: {}", error.what()));
    copy_aside(path);  // the next save replaces the file, and with it receivers that are not in this session
  }
}

void Session::restore() {
  apply(default_profile(place_.state_directory));
  config_path_ = config_file(fallback_name);
  if (restore_from(session_name) || restore_from(fallback_name)) return;
  hooks_.changed();
}

bool Session::restore_from(const char* name) {
  const std::string path = config_file(name);
  if (is_missing(path)) return false;
  try {
    open(path);
  } catch (const std::exception& error) {
    hooks_.report(fmt::format("Saved {} could not be loaded: {}", name, error.what()));
    if (!unreadable_note_) unreadable_note_ = note_of(path, error.what());
    return false;
  }
  hooks_.report(fmt::format("Configuration restored: {}", path));
  return true;
}

void Session::open(const std::string& path) {
  apply(read_profile(path));
  config_path_ = fs::absolute(path);
  store_fingerprint();
  hooks_.changed();
}

std::optional<std::string> Session::take_unreadable_note() {
  return std::exchange(unreadable_note_, std::nullopt);
}

const std::string& Session::fingerprint() const {
  if (!fingerprint_) fingerprint_ = fingerprint_of(profile_);
  return *fingerprint_;
}

}  // namespace options
