#include "inspect/profile_input.h"

#include <stdexcept>
#include <string>

#include "inspect/input.h"

namespace inspect {
namespace {

/// More than a profile may hold is not read: it is refused at the line that crosses the limit.
std::string read_bounded(Input& input) {
  std::string text;
  std::string block;
  while (text.size() <= options::profile_size_limit && input.read_block(block))
    text += block;
  return text;
}

}  // namespace

options::Profile read_profile_operand(const Arguments& arguments, bool allow_multi, std::size_t index) {
  const std::string path(arguments.operand(index, "FILE"));
  Input input(path);
  const std::string text = read_bounded(input);
  try {
    return options::parse_config_text(text, path, allow_multi);
  } catch (const std::runtime_error& error) {
    throw Refusal("file", error.what());
  }
}

}  // namespace inspect
