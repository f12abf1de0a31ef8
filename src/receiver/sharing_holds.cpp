#include "receiver/sharing_holds.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <map>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/numbers.h"
#include "base/text.h"

namespace receiver {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view service_name = "corvane";
constexpr std::string_view usb_nodes = "/dev/bus/usb/";

std::string content(const fs::path& path) {
  try {
    return base::read_file(path, 1UL << 16);
  } catch (const std::exception&) {
    return {};
  }
}

// The names of each USB device by its node: "/dev/bus/usb/002/005".
std::map<std::string, std::vector<std::string>> names_by_node(const std::string& usb_devices) {
  std::map<std::string, std::vector<std::string>> names;
  std::error_code error;
  for (fs::directory_iterator entry(usb_devices, error), end; !error && entry != end; entry.increment(error)) {
    const std::string position = entry->path().filename().string();
    const auto bus = base::parse_unsigned(base::trim(content(entry->path() / "busnum")));
    const auto device = base::parse_unsigned(base::trim(content(entry->path() / "devnum")));
    if (!bus || !device) continue;
    auto& list = names[fmt::format("{}{:03}/{:03}", usb_nodes, *bus, *device)];
    list = {"usb-" + position, "rtl-usb-" + position};
    if (const std::string serial(base::trim(content(entry->path() / "serial"))); !serial.empty())
      list.push_back(serial);
  }
  return names;
}

bool is_of_the_service(std::string_view program) {
  const auto slash = program.rfind('/');
  if (slash != std::string_view::npos) program.remove_prefix(slash + 1);
  return program == service_name ||
         (program.starts_with(service_name) && program.substr(service_name.size())[0] == '-');
}

// Its command line says "--serial X" or "--serial=X".
void add_named(std::set<std::string>& held, const std::vector<std::string_view>& words) {
  constexpr std::string_view option = "--serial";
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i] == option && i + 1 < words.size() && !words[i + 1].empty())
      held.emplace(words[i + 1]);
    else if (words[i].starts_with(option) && words[i].size() > option.size() + 1 && words[i][option.size()] == '=')
      held.emplace(words[i].substr(option.size() + 1));
  }
}

void add_opened(std::set<std::string>& held, const fs::path& process,
                const std::map<std::string, std::vector<std::string>>& nodes) {
  std::error_code error;
  for (fs::directory_iterator entry(process / "fd", error), end; !error && entry != end; entry.increment(error)) {
    std::error_code gone;
    const auto node = nodes.find(fs::read_symlink(entry->path(), gone).string());
    if (node != nodes.end()) held.insert(node->second.begin(), node->second.end());
  }
}

}  // namespace

std::set<std::string> receivers_held_by_sharing(const OutsidePrograms& programs) {
  std::set<std::string> held;
  const auto nodes = names_by_node(programs.usb_devices);
  std::error_code error;
  for (fs::directory_iterator entry(programs.processes, error), end; !error && entry != end; entry.increment(error)) {
    if (!base::parse_unsigned(entry->path().filename().string())) continue;
    const std::string command = content(entry->path() / "cmdline");
    const auto words = base::split(command, '\0');
    if (!is_of_the_service(words.front())) continue;
    add_named(held, words);
    add_opened(held, entry->path(), nodes);
  }
  return held;
}

}  // namespace receiver
