// The counters behind the three Live tabs: what every channel has decoded since the start of reception.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "launcher/receiver_launch.h"
#include "results/activity_cards.h"
#include "results/channel_key.h"
#include "results/spot_summary.h"

namespace results {

/// Lets string-keyed hash containers be asked with a view.
struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

/// What one channel came to since the counters were last reset.
struct ChannelRecord {
  struct Cycles {
    std::uint64_t spots = 0;
    std::uint64_t decodes = 0;
  };

  std::uint64_t spots = 0;
  std::uint64_t decodes = 0;                                           ///< cycles, those without a spot included
  std::unordered_set<std::string, TextHash, std::equal_to<>> senders;  ///< upper-case callsigns
  std::map<double, Cycles> recent;  ///< by capture time, seconds; five minutes of them
  Cycles window;                    ///< the sum of `recent` up to the time of the last refresh
  bool has_lists = false;           ///< some summary carried a callsign list
  bool partial = false;             ///< some summary carried none
};

/// The four numbers of a channel row, as shown.
struct RowTexts {
  std::string spots;
  std::string decodes;
  std::string callsigns;  ///< "3", "≥3" when some cycle came without a list, "—" when all did
  std::string average;    ///< spots per decode over five minutes, "7.50", "—" without a decode
};

/// Counters, known channels and who decodes them. Main thread only. Memory grows with channels and callsigns, not with
/// lines.
class ActivityModel {
 public:
  /// A new start of reception: every counter, row and attribution goes, the plan's channels get their rows.
  void begin_session(const std::vector<launcher::ReceiverLaunch>& plan);
  /// A retune or another live change of the plan: nothing is reset. Channels that left the plan lose their rows but
  /// keep their records; rows that no plan asked for stay.
  void change_plan(const std::vector<launcher::ReceiverLaunch>& plan);

  /// Counts a summary under its joined channel key. `capture_time` is absent for a bad date. True when the channel was
  /// never seen in this session and has got a row: by a receiver of the plan, or by a line without a label.
  bool count(const SpotSummary& summary, std::string_view key, std::optional<double> capture_time,
             std::string_view label);

  /// Brings the five-minute figures to the present time (seconds); the texts below follow the last refresh.
  void refresh(double now);
  /// "{total} spots  /  {rate} spots/hr  /  PSKR24: {k}"
  [[nodiscard]] std::string totals_text() const;
  /// A channel's row by its joined key; all empty counters for one that has no record.
  [[nodiscard]] RowTexts row_texts(std::string_view key) const;
  /// "{spots} spots · {decodes} decodes" over the rows of a card.
  [[nodiscard]] std::string sum_text(const ActivityCard& card) const;

  /// The cards of a dashboard, in order.
  [[nodiscard]] std::vector<ActivityCard> cards(Family family) const;

  /// Asks for the right to read the total of PSK reports; false while a reading is under way.
  bool begin_psk_total();
  /// Ends that reading; an empty total means that it failed.
  void finish_psk_total(std::optional<std::int64_t> total);

  [[nodiscard]] std::uint64_t total_spots() const { return total_spots_; }
  [[nodiscard]] std::uint64_t total_decodes() const { return total_decodes_; }
  /// Null for a channel that is in no plan and was never heard.
  [[nodiscard]] const ChannelRecord* record(std::string_view key) const;

 private:
  using Records = std::unordered_map<std::string, ChannelRecord, TextHash, std::equal_to<>>;

  [[nodiscard]] bool is_of_plan(std::string_view label) const;
  void add_senders(ChannelRecord& record, std::string_view list);

  std::vector<ReceiverChannels> receivers_;
  std::vector<ChannelKey> known_;
  Attribution attribution_;
  Records records_;
  std::uint64_t total_spots_ = 0;
  std::uint64_t total_decodes_ = 0;
  std::uint64_t five_minute_spots_ = 0;
  std::optional<std::int64_t> psk_total_;
  bool psk_in_flight_ = false;
  std::string scratch_;
};

}  // namespace results
