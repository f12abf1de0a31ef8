// The words behind a subcommand, sorted into options and operands.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace inspect {

/// The command line was wrong or an input could not be read: one line on standard error, status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Option {
  std::string_view name;  ///< "--label"
  bool takes_value = true;
};

/// Options start with two dashes and take their value from the next word or behind "="; "--" ends them. Operands may
/// start with one dash, as negative numbers do. The views are into the words given.
class Arguments {
 public:
  /// Throws UsageError for an unknown option, a value too few or too many, or more than `most` operands.
  Arguments(std::span<const std::string_view> words, std::span<const Option> options, std::size_t most);

  [[nodiscard]] bool has(std::string_view name) const { return value(name).has_value(); }
  /// The last of repeated ones; an option without a value has an empty one.
  [[nodiscard]] std::optional<std::string_view> value(std::string_view name) const;
  [[nodiscard]] std::vector<std::string_view> values(std::string_view name) const;

  [[nodiscard]] std::size_t operand_count() const { return operands_.size(); }
  /// Throws UsageError with `what` is missing.
  [[nodiscard]] std::string_view operand(std::size_t index, std::string_view what) const;

 private:
  std::vector<std::pair<std::string_view, std::string_view>> options_;
  std::vector<std::string_view> operands_;
};

}  // namespace inspect
