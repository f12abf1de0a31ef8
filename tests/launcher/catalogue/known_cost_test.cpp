#include "launcher/catalogue/known_cost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/temporary_directory.h"

namespace known_cost {
namespace {

TEST(KnownCost, FollowsTheBandForRttyAndMeteorScatterOnly) {
  const struct {
    const char* kind;
    const char* band;
    double cores;
  } cases[] = {{"rtty", "20", 0.08595}, {"rtty", "30", 0.05085}, {"rtty", "2", 0.045}, {"rtty", "", 0.07},
               {"msk144", "6", 0.06},   {"msk144", "20", 0},     {"msk144", "", 0.06}, {"olivia", "70cm", 0.08},
               {"sstv", "20", 0},       {"nonsense", "20", 0}};
  for (const auto& c : cases)
    EXPECT_NEAR(cost(c.kind, c.band), c.cores, 1e-9) << c.kind << c.band;
}

TEST(KnownCost, TheLineNamesWhatCostsAndWarnsAboveHalf) {
  const auto filters = sig::parse_known_filters("cw,psk31,rtty,olivia,sstv", std::nullopt, std::nullopt);
  const auto quiet = estimate(filters, {"40", "20"}, 8);
  ASSERT_TRUE(quiet);
  EXPECT_EQ(quiet->line,
            "CPU on the 2 ticked bands, before any signals: CW ~0.1, PSK31 ~0.1, RTTY ~0.2, Olivia ~0.2 cores. Ticked: "
            "about 0.5 of this PC's 8 cores.");
  EXPECT_FALSE(quiet->warning);
  const auto loud = estimate(filters, {"40", "20", "80", "15", "10"}, 2);
  ASSERT_TRUE(loud);
  EXPECT_TRUE(loud->warning);
  EXPECT_THAT(loud->line, ::testing::EndsWith(" cores. That leaves little for FT8 and the other decoders: untick RTTY "
                                              "or Olivia."));
  const auto half = sig::parse_known_filters("jtty,cw,msk144", std::nullopt, std::nullopt);
  EXPECT_FALSE(estimate(half, {"160", "80", "60", "40", "30", "20", "17", "15", "12", "10"}, 1)->warning)
      << "exactly half is no warning";
  EXPECT_FALSE(estimate(sig::parse_known_filters("sstv", std::nullopt, std::nullopt), {"20"}, 1));
  const auto mixed = sig::parse_known_filters(std::nullopt, "20:jtty,40:", std::nullopt);
  EXPECT_THAT(estimate(mixed, {"40", "20"}, 4)->line, ::testing::HasSubstr("signals: JTTY ~0.0 cores."));
}

TEST(KnownCost, CountsCoresByTheirSiblings) {
  const test::TemporaryDirectory directory;
  EXPECT_EQ(count_physical_cores(directory.path(), 6), 6) << "nothing to read";
  EXPECT_EQ(count_physical_cores(directory.path(), 0), 1);
  const char* siblings[] = {"0,2", "1,3", "0,2", "1,3"};
  for (int cpu = 0; cpu < 4; ++cpu)
    directory.write("cpu" + std::to_string(cpu) + "/topology/thread_siblings_list", std::string(siblings[cpu]) + "\n");
  EXPECT_EQ(count_physical_cores(directory.path(), 4), 2);
}

}  // namespace
}  // namespace known_cost
