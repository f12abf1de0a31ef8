// The launcher's own memory of a bad end: a line in crash.txt, told once at the next start.
#pragma once

#include <optional>
#include <string>

namespace host {

/// Installs the terminate handler: an unhandled exception of any thread appends its note to crash.txt in
/// `state_directory`, says it on standard error, and the process aborts. With an empty directory no file is written.
/// Call it first thing in main; the path is fixed here, so that a crash needs no memory.
void install_crash_notes(const std::string& state_directory) noexcept;

/// What the operator is told of the last run, once: moves the newest notes of crash.txt (at most 20) to
/// crash-previous.txt and removes crash.txt. Empty after a clean end.
std::optional<std::string> report_crash(const std::string& state_directory) noexcept;

}  // namespace host
