#include "receiver/control_replies.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <stdexcept>

#include "base/numbers.h"

namespace receiver {
namespace {

[[noreturn]] void fail(const char* words) {
  throw std::runtime_error(words);
}

constexpr double lowest_level = -160, highest_level = 20;

/// Takes the next line from the front; nullopt when there is none.
std::optional<std::string_view> next_line(std::string_view& text) {
  if (text.empty()) return std::nullopt;
  const auto end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

/// Takes the next word from the front; empty at the end.
std::string_view next_word(std::string_view& text) {
  constexpr std::string_view blanks = " \t\r\n\v\f";
  const auto begin = text.find_first_not_of(blanks);
  text.remove_prefix(begin == std::string_view::npos ? text.size() : begin);
  const auto end = std::min(text.find_first_of(blanks), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

std::optional<double> finite_number(std::string_view text) {
  const auto number = base::parse_double(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

/// "key=value,key=value" behind a prefix. Looked up where it stands, since there are few.
class Fields {
 public:
  explicit Fields(std::string_view list) : list_(list) {}

  [[nodiscard]] std::optional<std::string_view> value(std::string_view key) const {
    std::string_view rest = list_;
    while (!rest.empty()) {
      const std::string_view field = take(rest);
      if (field.size() > key.size() && field.starts_with(key) && field[key.size()] == '=')
        return field.substr(key.size() + 1);
    }
    return std::nullopt;
  }
  /// Whether every field is a key and a value.
  [[nodiscard]] bool well_formed() const {
    std::string_view rest = list_;
    while (!rest.empty()) {
      const std::string_view field = take(rest);
      const auto equals = field.find('=');
      if (equals == 0 || equals == std::string_view::npos) return false;
    }
    return !list_.empty() && list_.back() != ',';
  }

 private:
  static std::string_view take(std::string_view& rest) {
    const auto end = std::min(rest.find(','), rest.size());
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
  }

  std::string_view list_;
};

Fields fields_behind(std::string_view line, std::string_view prefix, const char* otherwise) {
  if (!line.starts_with(prefix)) fail(otherwise);
  return Fields(line.substr(prefix.size()));
}

std::string state_of(const Fields& fields, std::span<const std::string_view> known, const char* otherwise) {
  const std::string_view state = fields.value("state").value_or("");
  if (std::find(known.begin(), known.end(), state) == known.end()) fail(otherwise);
  return std::string(state);
}

void read_levels(MeterReading& reading, std::string_view line) {
  static constexpr std::array<std::string_view, 5> states{"ready", "waiting", "stale", "invalid", "unavailable"};
  const Fields fields = fields_behind(line, "OK LEVELS ", "Invalid IQ levels response");
  if (!fields.well_formed()) fail("Malformed IQ levels response");
  if (!fields.value("state")) fail("Incomplete IQ levels response");
  reading.level_state = state_of(fields, states, "Unknown IQ meter state");
  const bool required = reading.level_state == "ready";
  const auto level = [&](std::string_view key, double& into) {
    const auto text = fields.value(key);
    if (!text || text->empty()) {
      if (required) fail("Incomplete IQ levels response");
      return;
    }
    const auto number = finite_number(*text);
    if (!number) fail("Invalid IQ level value");
    into = *number;
  };
  level("peak", reading.peak);
  level("rms", reading.rms);
  level("hold", reading.hold);
  level("age", reading.age);
  if (const auto max = fields.value("max"); max && !max->empty()) level("max", reading.max.emplace());
  const auto samples = fields.value("samples");
  if (!samples && required) fail("Incomplete IQ levels response");
  if (!samples) return;
  const auto count = base::parse_unsigned(*samples);
  if (!count) fail("Invalid IQ sample count");
  reading.samples = *count;
}

void read_overload(MeterReading& reading, std::string_view line) {
  static constexpr std::array<std::string_view, 4> states{"unknown", "clear", "detected", "unavailable"};
  const Fields fields = fields_behind(line, "OK OVERLOAD ", "Receiver did not provide RF overload status");
  reading.overload_state = state_of(fields, states, "Invalid RF overload state");
  const auto events = fields.value("events");
  if (!events) fail("Missing RF overload count");
  const auto count = base::parse_unsigned(*events);
  if (!count) fail("Invalid RF overload count");
  reading.overload_events = *count;
}

constexpr std::array<std::string_view, 3> gain_states{"ready", "waiting", "unavailable"};

void read_if_gain(MeterReading& reading, std::string_view line) {
  const Fields fields = fields_behind(line, "OK IFGAIN ", "Receiver did not provide IF gain status");
  reading.if_state = state_of(fields, gain_states, "Invalid IF gain state");
  const auto reduction = fields.value("reduction");
  if (!reduction) fail("Missing IF gain reduction");
  const auto number = base::parse_int(*reduction);
  if (!number || *number < 0 || *number > 1000) fail("Invalid IF gain reduction");
  reading.if_reduction = static_cast<int>(*number);
}

void read_strongest(MeterReading& reading, std::string_view rest) {
  const auto frequency = finite_number(next_word(rest));
  const auto level = finite_number(next_word(rest));
  const bool good = frequency && level && next_word(rest).empty() && *frequency >= 0 && *frequency <= 4e9 &&
                    *level >= lowest_level && *level <= highest_level;
  if (!good) fail("Invalid strongest-signal values");
  reading.strongest = StrongestSignal{*frequency, *level};
}

void read_tuner(MeterReading& reading, std::string_view line) {
  if (line == "OK TUNER unavailable") return;
  const Fields fields = fields_behind(line, "OK TUNER ", "Receiver did not provide tuner gain status");
  if (line.substr(std::string_view("OK TUNER ").size()).starts_with("unavailable"))
    fail("Tuner gain line says unavailable");
  reading.tuner_state = state_of(fields, gain_states, "Invalid tuner gain state");
  const auto gain = fields.value("gain");
  const auto number = gain ? finite_number(*gain) : std::nullopt;
  if (!number) fail("Missing tuner gain");
  reading.tuner_gain = *number;
}

}  // namespace

MeterReading parse_meter(std::string_view reply) {
  MeterReading reading;
  std::array<std::string_view, 3> mandatory;
  for (std::string_view& line : mandatory) {
    const auto next = next_line(reply);
    if (!next) fail("Incomplete receiver meter snapshot");
    line = *next;
  }
  read_levels(reading, mandatory[0]);
  read_overload(reading, mandatory[1]);
  read_if_gain(reading, mandatory[2]);
  while (const auto line = next_line(reply)) {
    constexpr std::string_view strongest = "OK STRONGEST ";
    if (line->empty()) continue;
    if (line->starts_with("OK TUNER"))
      read_tuner(reading, *line);
    else if (line->starts_with(strongest))
      read_strongest(reading, line->substr(strongest.size()));
    else
      fail("Invalid strongest-signal meter line");
  }
  return reading;
}

Spectrum parse_spectrum(std::string_view reply) {
  constexpr std::size_t fewest_bins = 16, most_bins = 1024;
  Spectrum spectrum;
  const char* invalid = "Receiver did not supply a valid waterfall spectrum";
  if (next_word(reply) != "OK") fail(invalid);
  const std::string_view kind = next_word(reply);
  spectrum.waiting = kind == "WAIT";
  if (spectrum.waiting)
    invalid = "Invalid pending waterfall spectrum";
  else if (kind != "SPECTRUM")
    fail(invalid);
  if (!spectrum.waiting) {
    const auto sequence = base::parse_unsigned(next_word(reply));
    if (!sequence) fail(invalid);
    spectrum.sequence = *sequence;
  }
  const auto lower = finite_number(next_word(reply)), upper = finite_number(next_word(reply));
  const auto bins = base::parse_unsigned(next_word(reply));
  if (!lower || !upper || !(*lower < *upper) || !bins || *bins < fewest_bins || *bins > most_bins) fail(invalid);
  spectrum.lower = *lower;
  spectrum.upper = *upper;
  spectrum.bins = *bins;
  for (std::size_t bin = 0; bin < *bins && !spectrum.waiting; ++bin) {
    const auto power = finite_number(next_word(reply));
    if (!power || *power < lowest_level || *power > highest_level) fail("Invalid waterfall power data");
    spectrum.powers.push_back(static_cast<float>(*power));
  }
  if (!next_word(reply).empty()) fail(spectrum.waiting ? invalid : "Unexpected waterfall spectrum data");
  return spectrum;
}

std::optional<CaptureStatus> parse_status(std::string_view reply) {
  std::optional<double> center, span;
  if (next_word(reply) != "OK") return std::nullopt;
  for (std::string_view word = next_word(reply); !word.empty(); word = next_word(reply)) {
    if (word.starts_with("capture=")) center = finite_number(word.substr(8));
    if (word.starts_with("span=")) span = finite_number(word.substr(5));
  }
  if (!center || !span) return std::nullopt;
  return CaptureStatus{*center, *span};
}

}  // namespace receiver
