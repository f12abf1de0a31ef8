#include "gui/modes/decoder_programs.h"

#include <filesystem>
#include <unistd.h>

#include <fmt/format.h>

#include "base/text.h"

namespace modes_gui {
namespace {

struct Program {
  const char* key;   ///< of the profile
  const char* name;  ///< on the search path
};
// In the order of the digital columns.
constexpr Program programs[digital_columns] = {
    {"decoder", "jt9"}, {"decoder", "jt9"}, {"js8-decoder", "js8-wav"}, {"wspr-decoder", "wsprd"}};

bool can_run(const std::string& file) {
  std::error_code error;
  return std::filesystem::is_regular_file(file, error) && ::access(file.c_str(), X_OK) == 0;
}

bool is_found(const std::string& program, const std::string& path) {
  if (program.find('/') != std::string::npos) return can_run(program);
  for (const auto directory : base::split(path, ':'))
    if (can_run(fmt::format("{}/{}", directory.empty() ? "." : directory, program))) return true;
  return false;
}

}  // namespace

std::array<std::string, column_count> missing_programs(const options::Profile& common, const std::string& path) {
  std::array<std::string, column_count> missing;
  for (std::size_t column = 0; column < digital_columns; ++column) {
    const auto own = common.find(programs[column].key);
    const std::string program = own != common.end() && !own->second.empty() ? own->second : programs[column].name;
    if (!is_found(program, path))
      missing[column] =
          fmt::format("{} needs the decoder program {}, which is not installed.", mode_columns[column].shown, program);
  }
  return missing;
}

}  // namespace modes_gui
