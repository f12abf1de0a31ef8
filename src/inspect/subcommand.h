// One question that can be put to the models. A subcommand is one source file with one constant, listed in
// subcommands.cpp.
#pragma once

#include <cstddef>
#include <span>
#include <stdexcept>
#include <string_view>

#include <boost/json.hpp>

#include "inspect/arguments.h"

namespace inspect {

/// A model refused: {"error": {"text", "kind"}} on standard output, status 1.
class Refusal : public std::runtime_error {
 public:
  /// `kind` is "plan", "capture-fit", "settings", "file" or "input".
  Refusal(const char* kind, const char* text) : std::runtime_error(text), kind_(kind) {}
  [[nodiscard]] const char* kind() const { return kind_; }

  boost::json::object details;  ///< what stands in the error object behind text and kind
  boost::json::object beside;   ///< what stands in the answer beside the error object

 private:
  const char* kind_;
};

struct Subcommand {
  std::string_view name;
  std::string_view synopsis;     ///< "[--label LABEL] [FILE]"
  std::string_view description;  ///< one sentence or a few lines, for --help
  std::span<const Option> options;
  std::size_t most_operands;
  /// Prints the answer. Throws Refusal or UsageError, then having printed nothing.
  void (*run)(const Arguments& arguments);
};

/// In the order of the usage text.
std::span<const Subcommand* const> subcommands();

}  // namespace inspect
