#include "sim/replay.h"

#include <algorithm>
#include <cmath>

#include "base/callsign.h"
#include "base/numbers.h"
#include "base/text.h"
#include "results/stamp.h"

namespace sim {
namespace {

/// Seconds that hold a whole number of cycles of every mode, and an even one where stations take turns.
double slot_of(const std::vector<Channel>& channels) {
  const bool wspr =
      std::any_of(channels.begin(), channels.end(), [](const Channel& c) { return c.mode == Mode::wspr; });
  return wspr ? 120 : 30;
}

/// The words before the message.
struct Columns {
  std::string_view stamp, dial, direction, mode, snr, dt, audio, message;
};

std::string_view take_word(std::string_view& rest) {
  const auto begin = rest.find_first_not_of(' ');
  if (begin == std::string_view::npos) return {};
  const auto end = std::min(rest.find(' ', begin), rest.size());
  const auto word = rest.substr(begin, end - begin);
  rest.remove_prefix(end);
  return word;
}

Columns columns_of(std::string_view line) {
  Columns columns;
  for (auto* column :
       {&columns.stamp, &columns.dial, &columns.direction, &columns.mode, &columns.snr, &columns.dt, &columns.audio})
    *column = take_word(line);
  columns.message = base::trim(line);
  return columns;
}

std::string_view marked_word(std::string_view message, std::string_view mark) {
  const auto at = message.rfind(mark);
  if (at == std::string_view::npos) return {};
  message.remove_prefix(at + mark.size());
  return message.substr(0, message.find(' '));
}

std::string_view slotted_sender(std::string_view message) {
  if (const auto second = message.find("; "); second != std::string_view::npos) message.remove_prefix(second + 2);
  const auto words = base::words(message);
  if (words.size() < 2) return {};
  const bool to_all = words[0] == "CQ" || words[0] == "QRZ" || words[0] == "DE" || words[0] == "CQDX";
  const bool directed = to_all && words.size() > 2 && !base::is_callsign(words[1]);
  return words[directed ? 2 : 1];
}

}  // namespace

std::string_view without_marks(std::string_view message) {
  const auto is_mark = [](std::string_view word) {
    return word == "?" || (word.size() == 2 && word[0] == 'a' && word[1] >= '1' && word[1] <= '7');
  };
  for (;;) {
    const auto blank = message.rfind(' ');
    if (blank == std::string_view::npos || !is_mark(message.substr(blank + 1))) return message;
    message = base::trim(message.substr(0, blank));
  }
}

std::optional<LoggedDecode> parse_logged(std::string_view line) {
  const Columns columns = columns_of(line);
  const auto time = line.starts_with(columns.stamp) ? results::stamp_seconds(columns.stamp) : std::nullopt;
  const auto dial = base::parse_double(columns.dial);
  const auto mode = launcher::parse_digital_mode(columns.mode);
  const auto snr = base::parse_int(columns.snr.starts_with('+') ? columns.snr.substr(1) : columns.snr);
  const auto dt = base::parse_double(columns.dt);
  const auto audio = base::parse_int(columns.audio);
  const bool whole = time && dial && *dial >= 0 && columns.direction == "Rx" && mode && snr && dt && audio;
  const bool sane = whole && std::abs(*snr) < 100 && *audio >= 0 && *audio < 10000;
  if (!sane || columns.message.empty()) return {};
  const auto message = without_marks(columns.message);
  return LoggedDecode{
      *time,
      *dial * 1e6,
      *mode,
      {static_cast<int>(*snr), *dt, static_cast<int>(*audio), std::string(message), sender_of(*mode, message)}};
}

std::string sender_of(Mode mode, std::string_view message) {
  const std::string folded = base::upper(message);
  std::string_view sender;
  if (mode == Mode::wspr) {
    std::string_view rest = folded;
    sender = take_word(rest);
  } else if (mode == Mode::ft8 || mode == Mode::ft4) {
    sender = slotted_sender(folded);
  } else {
    sender = marked_word(folded, " SENDER=");
  }
  return std::string(base::is_callsign(sender) ? sender : std::string_view());
}

Replay::Replay(std::string_view log, const std::vector<Channel>& channels, double start) : channels_(channels) {
  std::vector<LoggedDecode> kept;
  for (const auto line : base::split(log, '\n')) {
    auto logged = parse_logged(line);
    if (logged && channel_of(*logged) < channels_.size()) kept.push_back(std::move(*logged));
  }
  if (kept.empty()) return;
  const double slot_seconds = slot_of(channels_);
  const auto earlier = [](const auto& a, const auto& b) { return a.time < b.time; };
  const auto [first, last] = std::minmax_element(kept.begin(), kept.end(), earlier);
  const double origin = std::floor(first->time / slot_seconds) * slot_seconds;
  length_ = (std::floor((last->time - origin) / slot_seconds) + 1) * slot_seconds;
  begin_ = std::floor(start / slot_seconds) * slot_seconds;
  for (LoggedDecode& logged : kept) {
    const std::size_t channel = channel_of(logged);
    // A stamp of half-second cycles is cut to a whole second or rounded up, never a cycle away.
    const double cycle = mode_timing(channels_[channel].mode).cycle;
    const auto number = static_cast<std::int64_t>(std::floor((logged.time - origin + 0.6) / cycle));
    decodes_[{channel, number}].push_back(std::move(logged.decode));
  }
}

std::size_t Replay::channel_of(const LoggedDecode& logged) const {
  const auto fits = [&](const Channel& channel) {
    return channel.mode == logged.mode && (logged.dial == 0 || std::abs(channel.frequency - logged.dial) <= 500);
  };
  return static_cast<std::size_t>(std::find_if(channels_.begin(), channels_.end(), fits) - channels_.begin());
}

std::vector<Decode> Replay::cycle(const Channel& channel, double start) const {
  const auto place = std::find(channels_.begin(), channels_.end(), channel);
  if (empty() || place == channels_.end()) return {};
  const double since = std::fmod(start - begin_, length_);
  const double into_log = since < 0 ? since + length_ : since;
  const auto number = static_cast<std::int64_t>(std::llround(into_log / mode_timing(channel.mode).cycle));
  const auto found = decodes_.find({static_cast<std::size_t>(place - channels_.begin()), number});
  return found == decodes_.end() ? std::vector<Decode>() : found->second;
}

}  // namespace sim
