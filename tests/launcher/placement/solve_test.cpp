#include "launcher/placement/solve.h"

#include <bit>

#include <gtest/gtest.h>

#include "generated_station.h"
#include "launcher/placement/candidates.h"
#include "launcher/placement/planner.h"
#include "launcher/placement/selection.h"

namespace launcher {
namespace {

std::string described(const options::Station& station) {
  std::string text;
  for (const auto& [key, value] : options::render_station(station))
    text += fmt::format("{} = {}\n", key, value);
  return text;
}

/// The groups of a generated station; none where its selection is refused as such.
std::optional<GroupTable> table_of(const options::Station& station) {
  try {
    return GroupTable(selected_groups(station.common));
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

TEST(Slot, AnswersAsAFullExpansionDoes) {
  StationGenerator generator(11);
  int fits = 0, misfits = 0, refusals = 0;
  for (int turn = 0; turn < 150; ++turn) {
    const options::Station station = generator.station(5, 2);
    const auto table = table_of(station);
    if (!table) continue;
    for (const auto& receiver : station.receivers) {
      Slot slot(station.common, receiver);
      for (Mask mask = 1; mask <= table->all(); ++mask) {
        FitStatus expected = FitStatus::fits;
        try {
          (void)expand(station.common, receiver, table->groups(), mask);
          ++fits;
        } catch (const CaptureFitError&) {
          expected = FitStatus::out_of_capture;
          ++misfits;
        } catch (const std::exception&) {
          expected = FitStatus::refused;
          ++refusals;
        }
        ASSERT_EQ(slot.fit(*table, mask), expected)
            << described(station) << receiver.serial << " " << mask << " " << slot.reason(*table, mask);
      }
    }
  }
  EXPECT_GT(fits, 500);
  EXPECT_GT(misfits, 500);
  EXPECT_GT(refusals, 30);
}

/// The search as it reads when nothing is clever: every way in the order that decides, a later one only if it is
/// strictly better.
class PlainSearch {
 public:
  PlainSearch(const Candidates& candidates, Mask all)
      : candidates_(candidates), all_(all), best_(candidates.slots.size() + 1), assignment_(candidates.slots.size()) {
    visit(0, 0);
  }
  [[nodiscard]] const std::vector<Mask>& result() const { return result_; }

 private:
  void visit(Mask covered, std::size_t count) {
    if (count >= best_) return;
    if (covered == all_) {
      result_ = assignment_;
      best_ = count;
      return;
    }
    const Mask lowest = Mask(1) << std::countr_one(covered);
    for (std::size_t slot = 0; slot < assignment_.size(); ++slot) {
      if (assignment_[slot] != 0) continue;
      for (const Mask set : candidates_.slots[slot]) {
        if ((set & lowest) == 0 || (set & covered) != 0) continue;
        assignment_[slot] = set;
        visit(covered | set, count + 1);
        assignment_[slot] = 0;
      }
    }
  }

  const Candidates& candidates_;
  Mask all_;
  std::size_t best_;
  std::vector<Mask> assignment_, result_;
};

void compare_with_plain_search(unsigned seed, int stations, std::size_t most_bands, std::size_t most_receivers) {
  StationGenerator generator(seed);
  int placed = 0, impossible = 0;
  for (int turn = 0; turn < stations; ++turn) {
    const options::Station station = generator.station(most_bands, most_receivers);
    const auto table = table_of(station);
    if (!table) continue;
    Slots slots;
    for (const auto& receiver : station.receivers)
      slots.push_back(std::make_shared<Slot>(station.common, receiver));
    const auto found = solve(slots, *table, station.assignments);
    const Candidates candidates = find_candidates(slots, *table, station.assignments);
    ASSERT_EQ(found, PlainSearch(candidates, table->all()).result()) << described(station);
    ++(found.empty() ? impossible : placed);
  }
  EXPECT_GT(placed, stations / 10);
  EXPECT_GT(impossible, stations / 10);
}

TEST(Solve, FindsTheFirstOfTheFewest) {
  compare_with_plain_search(1, 2500, 8, 4);
}

TEST(Solve, FindsItAmongRunsToo) {
  compare_with_plain_search(2, 150, 13, 5);
}

TEST(Solve, AnySetOfTwelveIsTriedAndOnlyRunsOfMore) {
  options::Station station;
  station.common = {{"mode", "decoder"}, {"modes", "FT8"}};
  station.receivers = {{"ONE", "RSP2", {}, true, true}, {"TWO", "RSP2", {}, true, true}};
  const auto placed = [&](const char* bands, const Pins& pins) {
    station.common["bands"] = bands;
    Slots slots;
    for (const auto& receiver : station.receivers)
      slots.push_back(std::make_shared<Slot>(station.common, receiver));
    std::string text;
    const GroupTable table(selected_groups(station.common));
    for (const Mask mask : solve(slots, table, pins)) {
      for (std::size_t group = 0; group < table.size(); ++group)
        if ((mask >> group & 1) != 0) text += table.groups()[group].band + " ";
      text += "| ";
    }
    return text;
  };
  // The lowest receiver takes the largest set that holds the lowest band.
  EXPECT_EQ(placed("20,40,80,160", {}), "160 80 40 | 20 | ");
  EXPECT_EQ(placed("20,40,80,160", {{"160", "TWO"}}), "20 | 160 80 40 | ");
  EXPECT_EQ(placed("20,40", {{"40", "ONE"}, {"20", "TWO"}}), "40 | 20 | ");
  EXPECT_EQ(placed("20,40", {{"40", "NOBODY"}}), "40 20 | | ");
  EXPECT_EQ(placed("160,20,6", {}), "");
}

}  // namespace
}  // namespace launcher
