// Where a line is shown and in which colour, decided from its bytes alone.
#pragma once

#include <string>
#include <string_view>

namespace results {

/// The buffers of the Logs tab. `program` is "Program / errors", the others are decode logs.
enum class Pane { ft8, js8, wspr, signals, program };
/// Text tags, named as in the buffers' tag tables.
enum class Tag { normal, good, warning, error };

std::string_view pane_name(Pane pane);  ///< "FT8", "JS8", "WSPR", "Signals", "program"
std::string_view tag_name(Tag tag);     ///< "normal", "good", "warning", "error"

struct LineClass {
  Pane pane{};
  Tag tag{};
  bool summary = false;  ///< a spot summary by its looks; only such a line may count
  bool hidden = false;   ///< an empty cycle: neither shown nor logged
};

LineClass classify_line(std::string_view line);

/// Appends what a pane shows of a line: "[{label}] " where there is a label, then the line as valid UTF-8 with a
/// summary's callsign list cut off. No clock, no line feed.
void append_display_text(std::string& out, std::string_view line, std::string_view label);

/// True for lines that tell of stations heard or of listeners: they are never shared with diagnostics.
bool is_result_line(std::string_view line);

}  // namespace results
