#include "options/journal.h"

#include <exception>
#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "base/file_write.h"

namespace options {

void Journal::add(const std::string& text) const noexcept {
  try {
    base::make_private_directory(std::filesystem::path(path_).parent_path());
    std::ofstream(path_, std::ios::app | std::ios::binary)
        << fmt::format("{} {}\n", base::journal_time(clock_()), text);
  } catch (const std::exception&) {  // the settings matter more than the tale of their changes
  }
}

}  // namespace options
