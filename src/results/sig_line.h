// The lines of the known-frequency decoders:
//   SIG PSK31 261013_181530 14.070912 MHz: text track=7 ch=psk20 snr=14.2 text="cq cq de "
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace sig {

struct ParsedSigLine {
  std::string scope;   ///< "HAM" or "OTHER" for survey lines, empty for known channels
  std::string mode;    ///< "PSK31", "CW", "WEFAX-120/576", "SSTV-M1", ...
  std::string stamp;   ///< "261013_181530", the date unchecked
  double frequency{};  ///< MHz, as in the line
  std::string kind;    ///< "text", "spot", "wefax-start", "wefax-progress", "wefax-stop", "wefax-image", ...
  std::map<std::string, std::string, std::less<>> fields;  ///< the last of duplicates; any bytes, NUL included

  /// Null when the line has no such field.
  [[nodiscard]] const std::string* field(std::string_view key) const {
    const auto found = fields.find(key);
    return found == fields.end() ? nullptr : &found->second;
  }
};

/// Empty for a line that is no SIG line. Trailing blanks, line feeds and carriage returns are cut; words are separated
/// by blanks, tabs are part of a word. In a quoted value \n, \r, \t and \xHH are control and single bytes, and a
/// backslash before any other character gives that character.
std::optional<ParsedSigLine> parse_sig_line(std::string_view line);

}  // namespace sig
