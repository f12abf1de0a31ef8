#include "results/channel_key.h"

#include <gtest/gtest.h>

namespace {

TEST(ChannelKeyTest, HasSixDecimalsOfMegahertz) {
  const std::pair<double, const char*> cases[] = {
      {14074000, "14.074000"}, {14070912.4, "14.070912"}, {14070912.6, "14.070913"}, {0, "0.000000"},
      {1, "0.000001"},         {136000, "0.136000"},      {432174000, "432.174000"}, {5e14, "500000000.000000"},
      {-7e6, "-7.000000"},
  };
  for (const auto& [hz, text] : cases) {
    std::string joined = "left over";
    results::assign_channel_key(joined, "JS8-TURBO", hz);
    EXPECT_EQ(joined, std::string("JS8-TURBO:") + text);
    EXPECT_EQ(results::ChannelKey::from_text(joined), results::ChannelKey("JS8-TURBO", hz));
  }
}

}  // namespace
