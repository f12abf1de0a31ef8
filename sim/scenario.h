// What the simulated station is made of and what goes wrong in it: one small key file, described in README.md.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace sim {

/// A burst of lines beside the normal traffic.
struct Flood {
  double after = 0;         ///< seconds from the start
  std::uint64_t lines = 0;  ///< none at 0
  double rate = 0;          ///< lines per second; 0 is as fast as they are read
  bool summaries = false;   ///< spot summaries of the receiver's channels instead of free text
};

/// What goes wrong. Times are true seconds from the engine's start; an absent time is never.
struct Faults {
  std::optional<double> exit_after;
  int exit_status = 1;
  int exit_signal = 0;  ///< ends by this signal instead of a status
  bool ignore_term = false;
  Flood flood;
  std::optional<double> long_line_after;
  std::size_t long_line_bytes = 1U << 20;
  std::optional<double> invalid_utf8_after;
  bool no_line_feed = false;  ///< the last words have no line feed
  double hold_pipe = 0;       ///< seconds for which a grandchild keeps the pipe open after the end
};

/// How a receiver stands in the device listing.
enum class Presence { ready, busy, needs_firmware, not_responding };

/// What goes wrong on the control socket.
struct ControlFaults {
  std::vector<std::string> refuse;        ///< settings that the hardware never takes; "retune" refuses those
  double late = 0;                        ///< seconds before each answer
  bool hang = false;                      ///< requests are taken and never answered
  bool close_at_once = false;             ///< connections are closed without an answer
  bool rubbish = false;                   ///< answers make no sense
  bool long_replies = false;              ///< answers have the greatest length that a packet may have
  std::optional<double> disappear_after;  ///< seconds until the socket has gone
  std::string journal;  ///< a file that gets each request and its outcome, but for the meters; empty for none
};

struct Receiver {
  std::string model;
  std::string serial;
  std::string backend = "sdrplay";  ///< "sdrplay", "rx888" or "rtl-sdr"
  Presence presence = Presence::ready;
  double activity = 0.5;
  Faults faults = {};
  ControlFaults control = {};
};

enum class ListingFault { none, hang, die, rubbish, exit, usb_dead };

struct Scenario {
  std::vector<Receiver> receivers;
  Receiver stranger;  ///< what any receiver is like that is not listed: its activity and faults
  std::uint64_t seed = 1;
  double time_scale = 1;
  double rewind = 0;  ///< seconds
  bool start_burst = false;
  std::string replay;      ///< a decode log; empty for invented traffic
  std::string recordings;  ///< a folder of recordings
  double discontinuities_per_hour = 0.1;
  double overloads_per_hour = 0.3;
  ListingFault listing_fault = ListingFault::none;
  int listing_status = 1;
  double listing_delay = 0.3;  ///< seconds

  /// The receiver that a profile's `serial` and `backend` mean: the one with that serial; without a serial the first of
  /// that backend. A serial that is not listed is a stranger of that name.
  [[nodiscard]] Receiver receiver_for(const std::string& serial, const std::string& backend) const;
};

/// Reads a scenario; an empty path gives the normal station. Throws std::runtime_error("{path}: {reason}") for a file
/// that cannot be read, an unknown group, key or word.
Scenario load_scenario(const std::string& path);

}  // namespace sim
