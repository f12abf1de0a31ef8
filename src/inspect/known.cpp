// `known`: the known-frequency channels that one capture carries.
#include <array>
#include <stdexcept>

#include <fmt/format.h>

#include "base/numbers.h"
#include "inspect/answer.h"
#include "inspect/profile_input.h"
#include "inspect/subcommand.h"
#include "launcher/catalogue/known_selection.h"

namespace inspect {
namespace {

namespace json = boost::json;

struct Capture {
  double centre{}, bandwidth{};
};

Capture read_capture(const Arguments& arguments) {
  const auto word = arguments.value("--capture");
  if (!word) throw UsageError("--capture CENTRE,BANDWIDTH is missing");
  const auto comma = std::min(word->find(','), word->size());
  const auto centre = base::parse_scaled(word->substr(0, comma));
  const auto bandwidth = base::parse_scaled(word->substr(std::min(comma + 1, word->size())));
  if (!centre || !bandwidth) throw UsageError(fmt::format("--capture is not CENTRE,BANDWIDTH: {}", *word));
  return {*centre, *bandwidth};
}

std::size_t read_limit(const Arguments& arguments) {
  const auto word = arguments.value("--limit");
  if (!word) return sig::most_known_channels;
  const auto limit = base::parse_unsigned(*word);
  if (!limit) throw UsageError(fmt::format("--limit is no number: {}", *word));
  return *limit;
}

std::optional<std::string_view> setting(const options::Profile& profile, const char* key) {
  const auto row = profile.find(key);
  return row == profile.end() ? std::nullopt : std::optional<std::string_view>(row->second);
}

sig::KnownFilters filters_of(const options::Profile& profile) {
  try {
    return sig::parse_known_filters(setting(profile, "known-modes"), setting(profile, "known-band-modes"),
                                    setting(profile, "fax-channels"));
  } catch (const std::runtime_error& error) {
    throw Refusal("settings", error.what());
  }
}

json::value channel_value(const options::AnalysisChannel& channel) {
  return {{"id", channel.id},
          {"frequency", json_number(channel.frequency)},
          {"modulation", options::modulation_text(channel.modulation)},
          {"bandwidth", json_number(channel.bandwidth)},
          {"spec", options::format_analysis_channel(channel)}};
}

void run(const Arguments& arguments) {
  const Capture capture = read_capture(arguments);
  const std::size_t limit = read_limit(arguments);
  const options::Profile profile = read_profile_operand(arguments, true);
  const sig::KnownFilters filters = filters_of(profile);
  json::array channels;
  if (setting(profile, "known-channels") == "true" && setting(profile, "spot") != "off")
    for (const auto& channel : sig::select_known_channels(filters, capture.centre, capture.bandwidth, limit))
      channels.push_back(channel_value(channel));
  print_answer({{"channels", std::move(channels)}});
}

constexpr std::array options_taken{Option{"--capture"}, Option{"--limit"}};

}  // namespace

extern const Subcommand known_subcommand{
    "known",
    "--capture CENTRE,BANDWIDTH [--limit N] FILE",
    "The known-frequency channels that a capture carries under a profile's filters, none when the profile leaves\n"
    "them off. Frequencies in Hz, or with k or M; N is 128 when left out.",
    options_taken,
    1,
    run};

}  // namespace inspect
