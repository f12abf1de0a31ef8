// The last answers of the planner. Any thread.
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string>

#include "launcher/plan_error.h"
#include "options/station.h"

namespace launcher {

/// The profile in canonical form and each receiver's availability, a line each: equal stations give equal texts. Throws
/// when the station cannot be written.
std::string memory_key(const options::Station& station);

/// Remembers answers, and the plan errors that stand in their place, for a minute each.
template <typename Result>
class Memory {
 public:
  using Clock = std::chrono::steady_clock;
  using Now = std::function<Clock::time_point()>;

  explicit Memory(
      std::size_t capacity, Now now = [] { return Clock::now(); })
      : capacity_(capacity), now_(std::move(now)) {}

  /// The remembered answer, or else what `compute` says. Other failures than plan errors are passed on and forgotten.
  template <typename Compute>
  Result get(const options::Station& station, const Compute& compute) {
    std::string key;
    try {
      key = memory_key(station);
    } catch (const std::exception&) {
      return compute(station);
    }
    if (const auto entry = find(key)) return answer(*entry);
    try {
      Result result = compute(station);
      keep({std::move(key), result, std::nullopt, now_()});
      return result;
    } catch (const PlanError& error) {
      keep({std::move(key), std::nullopt, error, now_()});
      throw;
    }
  }

 private:
  static constexpr std::chrono::seconds lifetime{60};

  struct Entry {
    std::string key;
    std::optional<Result> result;
    std::optional<PlanError> error;
    Clock::time_point stored;
  };

  static Result answer(const Entry& entry) {
    if (entry.error) throw PlanError(*entry.error);
    return *entry.result;
  }

  std::optional<Entry> find(const std::string& key) {
    const std::lock_guard guard(lock_);
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
      if (entry->key != key) continue;
      if (now_() - entry->stored > lifetime) {
        entries_.erase(entry);
        return std::nullopt;
      }
      entries_.splice(entries_.begin(), entries_, entry);
      return entries_.front();
    }
    return std::nullopt;
  }

  void keep(Entry entry) {
    const std::lock_guard guard(lock_);
    entries_.push_front(std::move(entry));
    if (entries_.size() > capacity_) entries_.pop_back();
  }

  const std::size_t capacity_;
  const Now now_;
  std::mutex lock_;
  std::list<Entry> entries_;
};

}  // namespace launcher
