#include "options/channels/specification.h"

#include <fmt/format.h>

#include "base/numbers.h"
#include "base/text.h"

namespace options {

std::vector<SpecificationField> split_specification(std::string_view text, const SpecificationWords& words) {
  if (text.empty() || text.size() > longest_specification || text.find_first_of("\r\n") != std::string_view::npos)
    throw std::runtime_error(std::string(words.invalid));
  std::vector<SpecificationField> fields;
  for (const std::string_view piece : base::split(text, ',')) {
    const auto equals = piece.find('=');
    if (equals == 0 || equals == std::string_view::npos) throw std::runtime_error(std::string(words.fields));
    fields.push_back({piece.substr(0, equals), piece.substr(equals + 1)});
  }
  std::sort(fields.begin(), fields.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
  if (std::adjacent_find(fields.begin(), fields.end(), [](const auto& a, const auto& b) { return a.key == b.key; }) !=
      fields.end())
    throw std::runtime_error(std::string(words.fields));
  return fields;
}

bool has_field(const std::vector<SpecificationField>& fields, std::string_view key) {
  return std::any_of(fields.begin(), fields.end(), [key](const auto& field) { return field.key == key; });
}

double read_number(std::string_view text, const SpecificationWords& words) {
  if (base::without_scale(text).empty()) throw std::runtime_error(std::string(words.missing_number));
  const auto number = base::parse_scaled(text);
  if (!number) throw std::runtime_error(std::string(words.invalid_number));
  return *number;
}

std::optional<bool> parse_switch(std::string_view text) {
  if (text == "on" || text == "true" || text == "1") return true;
  if (text == "off" || text == "false" || text == "0") return false;
  return std::nullopt;
}

bool is_channel_id(std::string_view text) {
  return !text.empty() && text.size() <= 32 && std::all_of(text.begin(), text.end(), [](char c) {
    return base::is_letter(c) || base::is_digit(c) || c == '_' || c == '-';
  });
}

std::string number_text(double value) {
  return fmt::format("{:.17g}", value);
}

}  // namespace options
