#include "options/profile.h"

#include <cerrno>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/text.h"
#include "options/command_line.h"
#include "options/option_table.h"
#include "options/station.h"

namespace options {
namespace {

constexpr const char* size_refusal = "Configuration file exceeds size limit";
constexpr const char* line_refusal = "Expected option = value";

const Option* profile_option(std::string_view key) {
  const Option* option = find_option(key);
  return option != nullptr && option->in_profile ? option : nullptr;
}

bool is_profile_key(std::string_view key, bool allow_multi) {
  if (profile_option(key) != nullptr || key.starts_with("audio.") || key.starts_with("analysis.")) return true;
  return allow_multi && (key == "gui-format" || key.starts_with("receiver.") || key.starts_with("band."));
}

/// A value ends at its first closing mark; there is no escape inside.
std::string_view unquoted(std::string_view value) {
  if (!value.starts_with('\'') && !value.starts_with('"')) return value;
  const auto close = value.find(value.front(), 1);
  if (close == std::string_view::npos) throw std::runtime_error("Unterminated quoted value");
  if (close + 1 != value.size()) throw std::runtime_error("Unexpected text after quoted value");
  return value.substr(1, close - 1);
}

std::string_view flag_value(std::string_view value) {
  const std::string word = base::lower(value);
  for (const std::string_view yes : {"true", "on", "yes", "1"})
    if (word == yes) return "true";
  for (const std::string_view no : {"false", "off", "no", "0"})
    if (word == no) return "false";
  throw std::runtime_error("Expected true/false, on/off, yes/no or 1/0");
}

struct Entry {
  std::string_view key, value;
};

/// Reads one line that is neither empty nor a comment.
Entry parse_line(std::string_view line, bool allow_multi) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos || line.find('\0') != std::string_view::npos)
    throw std::runtime_error(line_refusal);
  const std::string_view key = base::trim(line.substr(0, equals));
  if (!is_profile_key(key, allow_multi))
    throw std::runtime_error(fmt::format("Unknown or CLI-only configuration option: {}", key));
  const std::string_view value = unquoted(base::trim(line.substr(equals + 1)));
  const Option* option = profile_option(key);
  return {key, option != nullptr && option->takes == Takes::flag ? flag_value(value) : value};
}

/// The lines of a text, with the size of what has been taken so far.
class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool done() const { return rest_.empty(); }
  [[nodiscard]] std::size_t number() const { return number_; }

  /// Throws when the line, or all lines together, are too long.
  std::string_view next() {
    const auto end = std::min(rest_.find('\n'), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    ++number_;
    total_ += line.size() + 1;
    if (line.size() > profile_line_limit || total_ > profile_size_limit) throw std::runtime_error(size_refusal);
    return line;
  }

 private:
  std::string_view rest_;
  std::size_t number_ = 0, total_ = 0;
};

void read_line(Profile& profile, std::string_view line, bool allow_multi) {
  line = base::trim(line);
  if (line.empty() || line.front() == '#' || line.front() == ';') return;
  const auto [key, value] = parse_line(line, allow_multi);
  if (!profile.emplace(key, value).second)
    throw std::runtime_error(fmt::format("Duplicate configuration option: {}", key));
}

std::string quoted(std::string_view value) {
  if (value.find_first_of("\r\n") != std::string_view::npos)
    throw std::runtime_error("Configuration values cannot contain line breaks");
  const bool single = value.find('\'') != std::string_view::npos;
  if (single && value.find('"') != std::string_view::npos)
    throw std::runtime_error("A configuration value cannot contain both kinds of quotation mark");
  return fmt::format("{0}{1}{0}", single ? '"' : '\'', value);
}

std::string rendered_line(const std::string& key, const std::string& value, bool multi) {
  std::string line = fmt::format("{} = {}", key, quoted(value));
  if (line.size() > profile_line_limit) throw std::runtime_error(size_refusal);
  const Entry entry = parse_line(line, multi);
  if (entry.key != key || entry.value != value) throw std::runtime_error(line_refusal);
  return line;
}

std::string read_text(const std::string& path) {
  try {
    // More than the limit is never looked at: it is refused at the line that crosses it.
    return base::read_file(path, profile_size_limit + 1);
  } catch (const base::OpenError&) {
    throw std::runtime_error(fmt::format("Cannot open configuration file: {}", path));
  } catch (const std::runtime_error&) {
    throw std::runtime_error(fmt::format("Failed reading configuration file: {}", path));
  }
}

}  // namespace

Profile read_profile(const std::string& path) {
  return parse_config(path, true);
}

Profile parse_config(const std::string& path, bool allow_multi) {
  return parse_config_text(read_text(path), path, allow_multi);
}

Profile parse_config_text(std::string_view text, const std::string& path, bool allow_multi) {
  Profile profile;
  Lines lines(text);
  while (!lines.done()) {
    try {
      read_line(profile, lines.next(), allow_multi);
    } catch (const std::runtime_error& error) {
      throw std::runtime_error(fmt::format("{} line {}: {}", path, lines.number(), error.what()));
    }
  }
  return profile;
}

bool is_multi_receiver(const Profile& profile) {
  return profile.contains("gui-format");
}

std::string render_profile(const Profile& profile) {
  const bool multi = is_multi_receiver(profile);
  if (multi)
    (void)parse_station(profile);
  else
    (void)check_profile(profile);
  std::string text = "# Tarnwick launcher profile. Paths are absolute.\n";
  text += multi ? "# Open with: tarnwick-gui --config PROFILE.conf\n" : "# Run with: tarnwick --config PROFILE.conf\n";
  text += "# GUI and systemd own their processes; CLI daemon mode is disabled here.\n\n";
  for (const auto& [key, value] : profile)
    (text += rendered_line(key, value, multi)) += '\n';
  if (text.size() > profile_size_limit) throw std::runtime_error(size_refusal);
  return text;
}

void write_config(const std::string& path, const Profile& profile) {
  base::replace_file(path, render_profile(profile));
}

}  // namespace options
