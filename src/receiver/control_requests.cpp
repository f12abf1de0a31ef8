#include "receiver/control_requests.h"

#include <stdexcept>

#include <fmt/format.h>

#include "launcher/setting_kinds.h"

namespace receiver {
namespace {

/// Blanks, line ends and the list's own signs would make another list of it.
bool travels(const std::string& value) {
  return !value.empty() && value.find_first_of("\n\r ,=") == std::string::npos;
}

std::string number(double value) {
  return fmt::format("{:.17g}", value);
}

}  // namespace

std::string radio_set_request(const Settings& settings) {
  return "RADIO SET " + format_pairs(settings);
}

Settings told_settings(const Settings& settings) {
  Settings told;
  for (const auto& [key, value] : settings)
    if (launcher::setting_kind(key, launcher::Family::sdrplay) == launcher::SettingKind::live && travels(value))
      told.emplace(key, value);
  return told;
}

std::string setting_request(const Settings& settings) {
  const Settings told = told_settings(settings);
  if (told.empty()) throw std::runtime_error("No setting to change");
  return "RADIO SETTING " + format_pairs(told);
}

std::string retune_request(RetuneStep step, double center, const std::vector<launcher::LaunchChannel>& channels,
                           const std::string& known) {
  std::string request =
      fmt::format("RADIO RETUNE {} {}", step == RetuneStep::check ? "CHECK" : "APPLY", number(center));
  for (const launcher::LaunchChannel& channel : channels)
    request += fmt::format(" {}:{}", channel.mode, number(channel.frequency));
  if (known.empty()) return request;
  if (known.find_first_of("\n\r ") != std::string::npos)
    throw std::runtime_error("Invalid known-band-modes for a retune");
  return request + " KNOWN=" + known;
}

std::string add_request(const std::string& specification) {
  return "ADD " + specification;
}

std::string set_request(const std::string& specification) {
  return "SET " + specification;
}

std::string remove_request(const std::string& id) {
  return "REMOVE " + id;
}

std::string spectrum_request(const std::string& id, double lower, double upper) {
  return fmt::format("SPECTRUM {} {} {} 512", id, number(lower), number(upper));
}

Settings send_radio_set(const Transport& transport, const std::string& path, const Settings& settings) {
  constexpr int timeout = 5000;
  constexpr std::string_view echo = "OK RADIO";
  const std::string reply = transport(path, radio_set_request(settings), timeout);
  require_ok(reply);
  if (!reply.starts_with(echo)) throw std::runtime_error("No live SDR settings supplied");
  std::string_view list = std::string_view(reply).substr(echo.size());
  while (!list.empty() && (list.front() == ' ' || list.front() == '\n'))
    list.remove_prefix(1);
  while (!list.empty() && (list.back() == '\n' || list.back() == '\r'))
    list.remove_suffix(1);
  Settings taken = parse_live_pairs(list);
  // What an engine tells beside it, such as the gain that its AGC has found, is no setting of the operator's.
  std::erase_if(taken, [&](const auto& pair) { return !settings.contains(pair.first); });
  return taken;
}

}  // namespace receiver
