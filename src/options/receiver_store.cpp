#include "options/receiver_store.h"

#include <string_view>

#include <fmt/format.h>

#include "options/station.h"

namespace options {
namespace {

using Section = ReceiverStore::Section;

constexpr std::string_view prefix = "receiver.";

std::map<std::string, Section> sections_of(const Profile& profile) {
  std::map<std::string, Section> sections;
  for (auto entry = profile.lower_bound(std::string(prefix));
       entry != profile.end() && entry->first.starts_with(prefix); ++entry) {
    const std::string_view rest = std::string_view(entry->first).substr(prefix.size());
    const auto dot = rest.find('.');
    if (dot == std::string_view::npos) continue;
    sections[std::string(rest.substr(0, dot))].emplace(rest.substr(dot + 1), entry->second);
  }
  return sections;
}

std::string label_of(const std::string& serial, const Section& section) {
  ReceiverProfile receiver;
  receiver.serial = serial;
  if (const auto model = section.find("model"); model != section.end()) receiver.model = model->second;
  return receiver.label();
}

std::string first_saved(const std::string& label, const Section& section) {
  std::string list;
  for (const auto& [key, value] : section)
    list += fmt::format("{}{}='{}'", list.empty() ? "" : ", ", key, value);
  return fmt::format("{}: first saved with {}", label, list);
}

void add_changes(std::vector<std::string>& lines, const std::string& label, const Section& stored, const Section& now) {
  auto keys = stored;  // every key of either, in order
  keys.insert(now.begin(), now.end());
  const auto shown = [](const Section& section, const std::string& key) {
    const auto found = section.find(key);
    return found == section.end() ? "(none)" : fmt::format("'{}'", found->second);
  };
  for (const auto& [key, ignored] : keys)
    if (const auto before = shown(stored, key), after = shown(now, key); before != after)
      lines.push_back(fmt::format("{}: {}: {} -> {}", label, key, before, after));
}

}  // namespace

void ReceiverStore::assign(const Profile& profile) {
  sections_ = sections_of(profile);
}

std::vector<std::string> ReceiverStore::update(const Profile& profile) {
  std::vector<std::string> lines;
  for (auto& [serial, section] : sections_of(profile)) {
    const std::string label = label_of(serial, section);
    if (const auto stored = sections_.find(serial); stored == sections_.end())
      lines.push_back(first_saved(label, section));
    else
      add_changes(lines, label, stored->second, section);
    sections_[serial] = std::move(section);
  }
  return lines;
}

const Section* ReceiverStore::find(const std::string& serial) const {
  const auto found = sections_.find(serial);
  return found == sections_.end() ? nullptr : &found->second;
}

Profile ReceiverStore::profile() const {
  Profile profile{{"gui-format", std::string(station_format)}};
  for (const auto& [serial, section] : sections_)
    for (const auto& [key, value] : section)
      profile.emplace(fmt::format("{}{}.{}", prefix, serial, key), value);
  return profile;
}

}  // namespace options
