// The grammar that audio and analysis channels share: one line of comma-separated key=value fields without quoting.
// A channel kind brings a table of its fields and its words; this file knows neither. Everything throws
// std::runtime_error with the final words. Any thread.
#pragma once

#include <algorithm>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace options {

/// Longest specification, read or written.
inline constexpr std::size_t longest_specification = 4096;

/// What a channel kind says when its text breaks the grammar.
struct SpecificationWords {
  std::string_view invalid;         ///< empty, too long or with a line break
  std::string_view fields;          ///< a field is no key=value pair, or repeats
  std::string_view unknown_field;   ///< followed by the key
  std::string_view missing_number;  ///< nothing but a suffix
  std::string_view invalid_number;
};

struct SpecificationField {
  std::string_view key, value;
};

/// One row of a channel kind's table of fields.
template <typename Channel>
struct FieldReader {
  std::string_view key;
  void (*read)(Channel& channel, std::string_view value);
  bool may_be_empty = false;
};

/// The fields sorted by key, each once. Values may be empty; the views point into `text`.
std::vector<SpecificationField> split_specification(std::string_view text, const SpecificationWords& words);

/// Fills `channel` from `text`, each field by its reader in the order of the keys. Returns the fields.
template <typename Channel, std::size_t N>
std::vector<SpecificationField> read_specification(std::string_view text, const SpecificationWords& words,
                                                   const FieldReader<Channel> (&readers)[N], Channel& channel) {
  const auto reader_of = [&readers](std::string_view key) {
    return std::find_if(std::begin(readers), std::end(readers),
                        [key](const FieldReader<Channel>& reader) { return reader.key == key; });
  };
  std::vector<SpecificationField> fields = split_specification(text, words);
  for (const auto& field : fields) {
    const auto* const reader = reader_of(field.key);
    if (field.value.empty() && (reader == std::end(readers) || !reader->may_be_empty))
      throw std::runtime_error(std::string(words.fields));
  }
  for (const auto& field : fields) {
    const auto* const reader = reader_of(field.key);
    if (reader == std::end(readers))
      throw std::runtime_error(std::string(words.unknown_field) + std::string(field.key));
    reader->read(channel, field.value);
  }
  return fields;
}

bool has_field(const std::vector<SpecificationField>& fields, std::string_view key);

/// A decimal number with an optional suffix k, K, m or M.
double read_number(std::string_view text, const SpecificationWords& words);
/// on, true and 1, or off, false and 0, exact in case.
std::optional<bool> parse_switch(std::string_view text);
/// 1 to 32 letters, digits, underscores or hyphens.
bool is_channel_id(std::string_view text);
/// The shortest way to write a number that reads back equal is not stable between libraries; 17 digits are.
std::string number_text(double value);

}  // namespace options
