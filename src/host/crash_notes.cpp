#include "host/crash_notes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <fmt/format.h>

#include "base/file_write.h"
#include "base/text.h"

namespace host {
namespace {

constexpr size_t most_notes = 20;
constexpr size_t largest_file = 1UL << 20;

// What the handler works with stands ready in static memory: at a crash the heap may be damaged.
char note_path[4096];
char note[2048];

void compose_note(const char* start, const char* what) noexcept {
  char time_text[32] = "";
  const std::time_t now = std::time(nullptr);
  std::tm fields{};
  if (::gmtime_r(&now, &fields)) std::strftime(time_text, sizeof time_text, "%Y-%m-%d %H:%M:%SZ", &fields);
  std::snprintf(note, sizeof note - 1, "%s %s%s", time_text, start, what);
  char* end = note;
  for (; *end; ++end)
    if (static_cast<unsigned char>(*end) < ' ') *end = ' ';  // a note is one line
  end[0] = '\n';
  end[1] = '\0';
}

void write_note() noexcept {
  const std::string_view text = note;
  // One write in append mode, so that two launchers' notes do not mix.
  const auto write_to = [&](int descriptor) { return ::write(descriptor, text.data(), text.size()) > 0; };
  write_to(STDERR_FILENO);
  if (!note_path[0]) return;
  const int descriptor = ::open(note_path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600);
  if (descriptor < 0) return;
  write_to(descriptor);
  ::close(descriptor);
}

[[noreturn]] void end_with_note() noexcept {
  constexpr const char* unknown = "crash: unhandled exception (not a std::exception)";
  try {
    if (std::current_exception()) throw;
    compose_note(unknown, "");
  } catch (const std::exception& error) {
    compose_note("crash: unhandled exception: ", error.what());
  } catch (...) {
    compose_note(unknown, "");
  }
  write_note();
  std::abort();
}

std::vector<std::string> newest_notes(const std::string& text) {
  std::vector<std::string> notes;
  for (const auto line : base::split(text, '\n'))
    if (!base::trim(line).empty()) notes.push_back(base::valid_utf8(base::trim(line)));
  if (notes.size() > most_notes) notes.erase(notes.begin(), notes.end() - most_notes);
  return notes;
}

void keep_as_previous(const std::string& path, const std::vector<std::string>& notes) noexcept {
  try {
    base::replace_file(path, base::join(notes, "\n") + "\n");
  } catch (const std::exception&) {  // it has been told; keeping it is an extra
  }
}

}  // namespace

void install_crash_notes(const std::string& state_directory) noexcept {
  ::tzset();  // gmtime_r reads the zone at its first use, which needs memory
  const int length =
      state_directory.empty() ? 0 : std::snprintf(note_path, sizeof note_path, "%s/crash.txt", state_directory.c_str());
  if (length <= 0 || static_cast<size_t>(length) >= sizeof note_path) note_path[0] = '\0';
  std::set_terminate(end_with_note);
}

std::optional<std::string> report_crash(const std::string& state_directory) noexcept {
  try {
    const std::string path = state_directory + "/crash.txt";
    const auto notes = newest_notes(base::read_file(path, largest_file));
    if (!notes.empty()) keep_as_previous(state_directory + "/crash-previous.txt", notes);
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    if (notes.empty()) return std::nullopt;
    return fmt::format("The last run ended badly: {}{}", notes.back(),
                       notes.size() == 1 ? " (please send this with a Diagnostic mode session)" : "");
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace host
